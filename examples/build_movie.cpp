// Builds a movie from nothing: a header, two settings, and a second of frames in one colour.
//
//     build_movie OUT.swf

#include <iostream>

#include "vxswf.h"

namespace {

constexpr unsigned short kFramesPerSecond = 24;

/// A new tag at the end of the movie, which owns it from then on.
template <typename Tag>
Tag* Append(VXFlintFile& movie, VXSwfTagFactory::enuTagType type) {
    VXSwfTag* tag = VXSwfTagFactory::CreateTagOfType(type, 0, 0);
    movie.IncludeTag(tag, -1);
    return dynamic_cast<Tag*>(tag);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: build_movie OUT.swf\n";
        return 2;
    }
    VXFlintFile movie;
    movie.SetFlintVersion(9);
    movie.SetCompression(1);
    movie.SetWidth(320);
    movie.SetHeight(240);
    movie.SetFrameRate(kFramesPerSecond);
    movie.SetFrameCount(kFramesPerSecond);  // the header's own number: nobody counts the frames for it

    auto* attributes = Append<VXSwfFileAttributesTag>(movie, VXSwfTagFactory::TAG_FILEATTRIBUTES);
    attributes->SetNetworkAccess(0);
    attributes->SetHasAS3(1);
    auto* background = Append<VXSwfSetBackgroundColorTag>(movie, VXSwfTagFactory::TAG_SETBACKGROUNDCOLOR);
    background->SetRGBColor(VXFlintRGB(0x20, 0x60, 0xA0, 0, 0));
    movie.IncludeShowFrameTags(kFramesPerSecond, -1);

    CVXStreamReadWrite out(argv[1], CVXStreamReadWrite::kCreateOrEmpty);
    out.SetMode(IVXStream::kWrite);
    if (const VXErrorCodeEnum result = movie.DumpToStream(&out); result != kVXSuccess) {
        std::cerr << argv[1] << " cannot be written: " << result << '\n';
        return 1;
    }
    out.Flush();
    return out.GetStreamState() == kVXStreamFailed ? 1 : 0;
}

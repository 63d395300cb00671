// Builds a movie from nothing: a header, two settings, a shape on the stage, and a second of frames.
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

    // What is shown is defined first, under an ID of its own, and then placed. Version 3 has colours with
    // alpha.
    auto* card = Append<VXSwfDefineShapeTag>(movie, VXSwfTagFactory::TAG_DEFINESHAPE3);
    card->SetCharacterId(1);
    card->CreateRoundedRectangle(0, 0, 160, 120, VXFlintRGB(0xF4, 0xF1, 0xE8, 1, 255), 16);
    movie.PlaceObject(card, -1, VXString("card"), 80.0, 60.0, 0, {});  // at the next free depth
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

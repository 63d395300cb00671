// Movies as they came: a copy of every byte, one text changed, one movie put into another.
//
//     whole MOVIE.swf TEXTS.swf OUT.swf
#include "expect.h"

namespace {

bool CopyWhole(IVXStream& in, IVXStream& out) {
    VXWholeMovie movie;
    return movie.LoadFromStream(&in) == kVXSuccess && movie.DumpToStream(&out) == kVXSuccess;
}

bool CombineWhole(IVXStream& into, IVXStream& from, IVXStream& out) {
    VXWholeMovie movie;
    return movie.LoadFromStream(&into) == kVXSuccess && VXMovieCombiner(movie).Combine(&from) == kVXSuccess &&
           movie.DumpToStream(&out) == kVXSuccess;
}

/// Gives all text fields another text and touches nothing else. Answers how many there were.
int SetTexts(VXWholeMovie& movie, const VXString& text) {
    int count = 0;
    for (auto place = movie.begin(); place != movie.end(); ++place) {
        if ((*place)->GetTagType() != VXSwfTagFactory::TAG_DEFINEEDITTEXT) continue;
        if (movie.Parse(place) != kVXSuccess) {
            std::cerr << movie.GetErrorText() << '\n';
            continue;
        }
        dynamic_cast<VXSwfDefineEditTextTag&>(**place).SetText(text);
        ++count;
    }
    return count;
}

bool CombineIntoPlace(VXWholeMovie& movie, IVXStream& from) {
    VXMovieCombiner combiner(movie);  // serves any number of sources
    VXMovieCombiner::Options options;
    options.Name = "guest";
    options.Matrix.TranslateX = 20.0;
    options.LocksRoot = true;  // for older scripts that say _root
    if (combiner.Combine(&from, options) != kVXSuccess) {
        std::cerr << combiner.GetErrorText() << '\n';
        return false;
    }
    if (combiner.HasRaisedVersion()) std::cerr << "the version is now " << +movie.GetFlintVersion() << '\n';
    return true;
}

bool Repack(VXWholeMovie& movie, IVXStream& out) {
    movie.SetPacking(VXWholeMovie::HasLzma() ? VXWholeMovie::Packing::kLzma
                                             : VXWholeMovie::Packing::kDeflate);
    movie.SetPackingLevel(9);
    return movie.DumpToStream(&out) == kVXSuccess;
}

CVXStreamReadWrite Open(const char* path) { return {path, CVXStreamReadWrite::kOpenExisting}; }

/// What a stream in memory holds, to be read.
CVXStreamReadWrite Again(const CVXStreamReadWrite& stream) {
    return {stream.GetMemory(), stream.GetMemorySize()};
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc == 4, "two movies and a place for the result are given");
    CVXStreamReadWrite copy;
    CVXStreamReadWrite in = Open(argv[1]);
    Expect(CopyWhole(in, copy), "a movie is copied");
    CVXStreamReadWrite both;
    CVXStreamReadWrite copied = Again(copy);
    CVXStreamReadWrite texts = Open(argv[2]);
    Expect(CombineWhole(copied, texts, both), "a movie takes another in");

    VXWholeMovie movie;
    CVXStreamReadWrite combined = Again(both);
    Expect(movie.LoadFromStream(&combined) == kVXSuccess && movie.GetErrorText().empty(), "the movie loads");
    Expect(SetTexts(movie, "changed") > 0, "texts are changed");
    CVXStreamReadWrite guest = Open(argv[1]);
    Expect(CombineIntoPlace(movie, guest), "a third movie is taken in");
    CVXStreamReadWrite out(argv[3], CVXStreamReadWrite::kCreateOrEmpty);
    Expect(Repack(movie, out), "the movie can be written");
    out.Close();

    VXWholeMovie loaded;
    CVXStreamReadWrite written = Open(argv[3]);
    Expect(loaded.LoadFromStream(&written) == kVXSuccess, "the movie loads");
    Expect(loaded.GetNumTags() == movie.GetNumTags(), "all of it is there");
    return 0;
}

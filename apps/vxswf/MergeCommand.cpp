#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Commands.h"
#include "Files.h"
#include "vxswf.h"

namespace {

constexpr double kFarthest = 107374182.0;  // pixels, what 32 bits of twips hold
constexpr unsigned int kTopDepth = 65534;  // the number above it asks the library to choose

struct Position {
    double x = 0.0;
    double y = 0.0;
};

/// What is merged, and how its sprite is placed.
struct MergeSource {
    std::string file;
    std::string name;
    Position position;
};

struct MergeOptions {
    bool isParsed = false;
    bool locksRoot = false;
    IfShort ifShort = IfShort::kFail;
    unsigned short frame = 1;
    unsigned int depth = 0;  // 0 for above all others
    std::string name;
    std::string at = "0,0";
    std::string destination;
    std::vector<std::string> sources;  // and OUT behind them until the command line is read
    std::string out;
};

/// False when the text is not two numbers of pixels with a comma between them.
bool ReadPosition(const std::string& text, Position& position) {
    const auto read = [](const std::string& number, double& pixels) {
        return CLI::detail::lexical_cast(number, pixels) && std::abs(pixels) <= kFarthest;
    };
    const std::size_t comma = text.find(',');
    return comma != std::string::npos && read(text.substr(0, comma), position.x) &&
           read(text.substr(comma + 1), position.y);
}

std::string CheckPosition(const std::string& text) {
    Position position;
    return ReadPosition(text, position) ? "" : text + " is no position in pixels";
}

/// Reads `FILE`, `FILE:NAME`, `FILE:@X,Y` or `FILE:NAME@X,Y`; what it leaves out is as for all. A file that
/// has the whole text as its name goes first.
MergeSource ReadSource(const std::string& text, const MergeOptions& options) {
    MergeSource source{text, options.name, {}};
    ReadPosition(options.at, source.position);
    std::error_code error;
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos || std::filesystem::exists(text, error)) return source;
    source.file = text.substr(0, colon);
    std::string name = text.substr(colon + 1);
    const std::size_t at = name.rfind('@');
    if (at != std::string::npos && ReadPosition(name.substr(at + 1), source.position)) name.resize(at);
    if (!name.empty()) source.name = name;
    return source;
}

/// The depth of a placement, parsed or not; 0 for every other tag.
unsigned short DepthOf(VXSwfTag& tag) {
    const unsigned int type = tag.GetTagType();
    if (type == VXSwfTagFactory::TAG_REMOVEOBJECT || type == VXSwfTagFactory::TAG_REMOVEOBJECT2) return 0;
    const unsigned int offset = VXCharacterIds::GetDepthOffset(type);
    if (offset == VXCharacterIds::kNoDepth) return 0;
    VXBitStream body = tag.GetDataStream();
    unsigned short depth = 0;
    if (body.SetPosition(offset) != 0)
        VXIgnore(body.ReadWord(depth));  // a body without a depth places nothing
    return depth;
}

/// The depths of all placements, in every frame.
std::set<unsigned int> UsedDepths(const VXFlintFile& movie) {
    std::set<unsigned int> depths;
    for (VXSwfTag* tag : movie) {
        if (const unsigned short depth = tag != nullptr ? DepthOf(*tag) : 0; depth != 0) depths.insert(depth);
    }
    return depths;
}

/// Whether a sprite can go into the frame at the depth. What speaks against it has been reported.
ExitCode CheckPlace(const MergeOptions& options, unsigned int numFrames, const std::set<unsigned int>& used,
                    unsigned int depth) {
    if (numFrames < options.frame)
        return ReportUnusable(options.destination, "has no frame " + std::to_string(options.frame));
    if (depth > kTopDepth) return ReportUnusable(options.destination, "has no depth left above its own");
    if (used.contains(depth))
        return ReportUnusable(options.destination, "has something at depth " + std::to_string(depth));
    return kDone;
}

ExitCode MergeParsed(const MergeOptions& options) {
    VXFlintFile movie;
    if (const ExitCode code = LoadMovie(options.destination, false, options.ifShort, movie); code != kDone)
        return code;
    const std::set<unsigned int> used = UsedDepths(movie);
    const unsigned int highest = used.empty() ? 0 : *used.rbegin();
    unsigned int depth = options.depth != 0 ? options.depth : highest + 1;
    VXBucketSWFIDGenerator generator(movie);
    std::map<VXString, VXSwfExportAssetsTag*> exports;
    for (const std::string& text : options.sources) {
        const MergeSource merged = ReadSource(text, options);
        if (const ExitCode code = CheckPlace(options, movie.GetNumShowFrameTags(), used, depth);
            code != kDone) {
            return code;
        }
        VXFlintFile source;
        if (const ExitCode code = LoadMovie(merged.file, false, options.ifShort, source); code != kDone)
            return code;
        short hasFreeCharacter = 0;
        VXSwfDefineSpriteTag* sprite = movie.IncludeTagSetAsSprite(&source, options.frame, &generator,
                                                                   &exports, 1, &hasFreeCharacter, 0, 1);
        if (sprite == nullptr ||
            movie.PlaceObject(sprite, options.frame, VXString(merged.name.c_str()), merged.position.x,
                              merged.position.y, static_cast<unsigned short>(depth), {}) == nullptr) {
            return ReportFailure(merged.file, "cannot be merged");
        }
        ++depth;
    }
    return SaveMovie(movie, options.out);
}

/// The source as plain bytes, with `bytes` at their start.
ExitCode LoadSource(const std::string& file, IfShort ifShort, VXBitStream& bytes) {
    VXWholeMovie source;
    if (const ExitCode code = LoadWholeMovie(file, ifShort, source); code != kDone) return code;
    source.SetPacking(VXWholeMovie::Packing::kNone);
    if (source.DumpToStream(bytes) != kVXSuccess) return ReportFailure(file, source.GetErrorText());
    bytes.SetPosition(0);
    return kDone;
}

ExitCode Merge(const MergeOptions& options) {
    if (options.isParsed) return MergeParsed(options);
    VXWholeMovie movie;
    if (const ExitCode code = LoadWholeMovie(options.destination, options.ifShort, movie); code != kDone)
        return code;
    // Where a movie ends without a ShowFrame tag, what stands there gets one.
    const unsigned int numFrames = std::max(movie.GetNumShowFrameTags(), 1u);
    const std::set<unsigned int> used = UsedDepths(movie);
    VXMovieCombiner combiner(movie);
    VXMovieCombiner::Options place;
    place.Frame = options.frame;
    place.LocksRoot = options.locksRoot;
    place.TakesCutSource = options.ifShort == IfShort::kNote;
    unsigned int depth = options.depth;
    for (const std::string& text : options.sources) {
        const MergeSource merged = ReadSource(text, options);
        if (const ExitCode code = CheckPlace(options, numFrames, used, depth); code != kDone) return code;
        VXBitStream source;
        if (const ExitCode code = LoadSource(merged.file, options.ifShort, source); code != kDone)
            return code;
        place.Name = VXString(merged.name.c_str());
        place.Matrix.TranslateX = merged.position.x;
        place.Matrix.TranslateY = merged.position.y;
        place.Depth = static_cast<unsigned short>(depth);
        if (combiner.Combine(source, place) != kVXSuccess)
            return ReportFailure(merged.file, combiner.GetErrorText());
        if (!combiner.GetRemarks().empty()) ReportNote(merged.file, combiner.GetRemarks());
        if (combiner.HasRaisedVersion()) {
            ReportNote(merged.file, "makes the result a movie of version " +
                                        std::to_string(static_cast<unsigned int>(movie.GetFlintVersion())));
        }
        if (depth != 0) ++depth;
    }
    return SaveMovie(movie, options.out);
}

}  // namespace

void AddMergeCommand(CLI::App& app, ExitCode& exitCode) {
    const auto options = std::make_shared<MergeOptions>();
    CLI::App* command = app.add_subcommand("merge", "Places movies in another one, each as a sprite");
    command->add_option("--frame", options->frame, "The frame of DEST that gets them, from 1")
        ->check(CLI::Range(1, 65535))
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--name", options->name, "Their instance name")->type_name("NAME");
    command->add_option("--at", options->at, "Their position in pixels")
        ->type_name("X,Y")
        ->check(CheckPosition);
    command->add_option("--depth", options->depth, "The depth of the first, from 1; each next lies one above")
        ->check(CLI::Range(1, 65534))
        ->type_name("N");
    CLI::Option* lockRoot =
        command->add_flag("--lock-root", options->locksRoot, "Scripts of a source see it as their _root");
    AddParsed(*command, options->isParsed)->excludes(lockRoot);
    AddKeepGoing(*command, options->ifShort);
    command->add_option("DEST", options->destination, "The movie; - for standard input")->required();
    // One list, since a list in front of another argument would leave nothing for that.
    command
        ->add_option("SOURCE... OUT", options->sources,
                     "What is merged into it, in this order, FILE or FILE:NAME@X,Y for a name or position of "
                     "its own; and the result, which may be DEST")
        ->required()
        ->expected(-2);  // at least two
    command->footer(
        "Examples:\n"
        "  vxswf merge stage.swf logo.swf out.swf\n"
        "  vxswf merge --frame 2 --name logo --at 40,20 stage.swf logo.swf stage.swf\n"
        "  vxswf merge stage.swf left.swf:l@0,0 right.swf:r@320,0 out.swf");
    command->callback([options, &exitCode] {
        options->out = options->sources.back();
        options->sources.pop_back();
        exitCode = Merge(*options);
    });
}

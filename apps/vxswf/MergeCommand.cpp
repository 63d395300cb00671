#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "Files.h"
#include "vxswf.h"

namespace {

constexpr double kFarthest = 107374182.0;  // pixels, what 32 bits of twips hold
constexpr unsigned int kTopDepth = 65534;  // the number above it asks the library to choose

struct MergeOptions {
    bool isRaw = false;
    unsigned short frame = 1;
    std::string name;
    std::string at = "0,0";
    std::string destination;
    std::vector<std::string> sources;  // and OUT behind them until the command line is read
    std::string out;
};

/// The depth of a placement as it was loaded, parsed or raw; 0 for every other tag.
unsigned short DepthOf(VXSwfTag& tag) {
    unsigned int offset = 0;
    switch (tag.GetTagType()) {
        case VXSwfTagFactory::TAG_PLACEOBJECT2:
            offset = 1;
            break;
        case VXSwfTagFactory::TAG_PLACEOBJECT:
        case VXSwfTagFactory::TAG_PLACEOBJECT3:
            offset = 2;
            break;
        default:
            return 0;
    }
    VXBitStream body = tag.GetDataStream();
    unsigned short depth = 0;
    if (body.SetPosition(offset) != 0)
        VXIgnore(body.ReadWord(depth));  // a body without a depth places nothing
    return depth;
}

unsigned int HighestDepth(const VXFlintFile& movie) {
    unsigned int highest = 0;
    for (VXSwfTag* tag : movie) {
        if (tag != nullptr) highest = std::max<unsigned int>(highest, DepthOf(*tag));
    }
    return highest;
}

struct Position {
    double x = 0.0;
    double y = 0.0;
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

ExitCode Merge(const MergeOptions& options) {
    Position position;
    ReadPosition(options.at, position);
    VXFlintFile movie;
    if (const ExitCode code = LoadMovie(options.destination, options.isRaw, movie); code != kDone)
        return code;
    if (movie.GetNumShowFrameTags() < options.frame) {
        return ReportUnusable(options.destination, "has no frame " + std::to_string(options.frame));
    }
    unsigned int depth = HighestDepth(movie);
    VXBucketSWFIDGenerator generator(movie);
    std::map<VXString, VXSwfExportAssetsTag*> exports;
    for (const std::string& file : options.sources) {
        if (++depth > kTopDepth)
            return ReportUnusable(options.destination, "has no depth left above its own");
        VXFlintFile source;
        if (const ExitCode code = LoadMovie(file, options.isRaw, source); code != kDone) return code;
        short hasFreeCharacter = 0;
        VXSwfDefineSpriteTag* sprite = movie.IncludeTagSetAsSprite(&source, options.frame, &generator,
                                                                   &exports, 1, &hasFreeCharacter, 0, 1);
        if (sprite == nullptr ||
            movie.PlaceObject(sprite, options.frame, VXString(options.name.c_str()), position.x, position.y,
                              static_cast<unsigned short>(depth), {}) == nullptr) {
            return ReportFailure(file, "cannot be merged");
        }
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
    command->add_flag("--raw", options->isRaw, "Parse placements, sprites and file attributes alone");
    command->add_option("DEST", options->destination, "The movie; - for standard input")->required();
    // One list, since a list in front of another argument would leave nothing for that.
    command
        ->add_option("SOURCE... OUT", options->sources,
                     "What is merged into it, in this order; and the result, which may be DEST")
        ->required()
        ->expected(-2);  // at least two
    command->footer(
        "Examples:\n"
        "  vxswf merge stage.swf logo.swf out.swf\n"
        "  vxswf merge --frame 2 --name logo --at 40,20 stage.swf logo.swf stage.swf");
    command->callback([options, &exitCode] {
        options->out = options->sources.back();
        options->sources.pop_back();
        exitCode = Merge(*options);
    });
}

#include <algorithm>
#include <cerrno>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "Files.h"
#include "InfoTree.h"
#include "TagFields.h"
#include "vxswf.h"

namespace {

struct InfoOptions {
    bool isRaw = false;
    bool isJson = false;
    bool isTree = false;
    std::vector<std::string> files;
};

/// What a listing tells of one tag.
struct TagLine {
    explicit TagLine(VXSwfTag& tag)
        : header(tag.IsLongTag() != 0 ? "long" : "short"), length(tag.VXSwfTag::GetTagLen()) {
        VXString info;
        tag.GetTextInfo(info);
        text = info.GetUTF8String();
    }

    const char* header;
    unsigned int length;  // of the whole body; the virtual call leaves out the ID of a definition
    std::string text;
};

/// Frames, characters and bytes of a movie by kind.
class Summary {
public:
    void Count(const VXSwfTagSet& tags) {
        for (VXSwfTag* tag : tags) {
            if (tag == nullptr) continue;
            const LoadedTag framed(*tag);
            if (framed->GetCharacterId() != 0) ++m_NumCharacters;
            std::size_t size = tag->VXSwfTag::GetTagLen() + (tag->IsLongTag() != 0 ? 6u : 2u);
            if (const auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(tag)) {
                const std::size_t before = m_NumBytes;
                Count(*sprite);
                size -= std::min(size, m_NumBytes - before);
            }
            m_NumBytes += size;
            m_Bytes[KindOfTagType(framed->type)] += size;
        }
    }
    Json ToJson(const VXFlintFile& movie) const {
        return {{"frames", movie.GetNumShowFrameTags()}, {"characters", m_NumCharacters}, {"bytes", m_Bytes}};
    }
    std::string ToText(const VXFlintFile& movie) const {
        std::string text = std::to_string(movie.GetNumShowFrameTags()) + " frames, " +
                           std::to_string(m_NumCharacters) + " characters, " + std::to_string(m_NumBytes) +
                           " bytes of tags";
        const char* between = ": ";
        for (const auto& [kind, size] : m_Bytes) {
            text += between + kind + ' ' + std::to_string(size);
            between = ", ";
        }
        return text;
    }

private:
    std::size_t m_NumCharacters = 0;
    std::size_t m_NumBytes = 0;
    std::map<std::string, std::size_t> m_Bytes;
};

const char* SignatureOf(const VXFlintFile& movie) { return movie.GetCompression() != 0 ? "CWS" : "FWS"; }

void ListTags(const VXSwfTagSet& tags, int level) {
    unsigned int index = 0;
    for (VXSwfTag* tag : tags) {
        if (tag == nullptr) continue;
        const TagLine line(*tag);
        std::cout << std::setw(4 * level) << "" << std::setw(6) << index++ << ' ' << std::left << std::setw(5)
                  << line.header << std::right << ' ' << std::setw(10) << line.length << "  "
                  << Printable(line.text) << '\n';
        if (const auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(tag)) ListTags(*sprite, level + 1);
    }
}

void List(const std::string& file, const VXFlintFile& movie, bool isTree) {
    const VXFlintRectangle& frame = movie.GetFrameRect();
    std::cout << Printable(file) << ": " << SignatureOf(movie) << ", version "
              << static_cast<unsigned int>(movie.GetFlintVersion()) << ", length " << movie.GetFileLength()
              << ", frame (" << frame.XMin << ", " << frame.YMin << ") to (" << frame.XMax << ", "
              << frame.YMax << ") pixels, rate " << movie.GetFrameRate() << ", frames "
              << movie.GetFrameCount() << '\n';
    if (isTree) {
        ListAsTree(movie, std::cout);
    } else {
        ListTags(movie, 0);
    }
    Summary summary;
    summary.Count(movie);
    std::cout << Printable(file) << ": " << summary.ToText(movie) << '\n';
}

/// The object's text up to its closing brace, in ASCII. Bytes that are not UTF-8 become U+FFFD.
std::string OpenObject(const Json& object) {
    std::string text = object.dump(-1, ' ', true, Json::error_handler_t::replace);
    text.pop_back();
    return text;
}

// One tag at a time, so that the listing of a large movie takes no memory of its own.
void ListTagsAsJson(const VXSwfTagSet& tags) {
    unsigned int index = 0;
    unsigned int frame = 1;
    std::cout << ",\"tags\":[";
    for (VXSwfTag* tag : tags) {
        if (tag == nullptr) continue;
        const TagLine line(*tag);
        Json object = {{"index", index},        {"type", static_cast<unsigned int>(tag->GetTagType())},
                       {"header", line.header}, {"length", line.length},
                       {"text", line.text},     {"frame", frame}};
        object.update(DescribeTag(*LoadedTag(*tag)));
        std::cout << (index == 0 ? "" : ",") << OpenObject(object);
        if (const auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(tag)) ListTagsAsJson(*sprite);
        std::cout << '}';
        ++index;
        if (tag->GetTagType() == VXSwfTagFactory::TAG_SHOWFRAME) ++frame;
    }
    std::cout << ']';
}

void ListAsJson(const std::string& file, const VXFlintFile& movie) {
    const VXFlintRectangle& frame = movie.GetFrameRect();
    Summary summary;
    summary.Count(movie);
    std::cout << OpenObject(
        {{"file", file},
         {"signature", SignatureOf(movie)},
         {"version", movie.GetFlintVersion()},
         {"length", movie.GetFileLength()},
         {"frame", {{"xMin", frame.XMin}, {"xMax", frame.XMax}, {"yMin", frame.YMin}, {"yMax", frame.YMax}}},
         {"frameRate", movie.GetFrameRate()},
         {"frameCount", movie.GetFrameCount()},
         {"summary", summary.ToJson(movie)}});
    ListTagsAsJson(movie);
    std::cout << "}\n";
}

ExitCode Info(const InfoOptions& options) {
    std::ios::sync_with_stdio(false);
    std::cout << std::setprecision(12);  // every number of twips in pixels
    ExitCode worst = kDone;
    for (const std::string& file : options.files) {
        VXFlintFile movie;
        const ExitCode code = LoadMovie(file, options.isRaw, IfShort::kNote, movie);
        worst = std::max(worst, code);
        if (code != kDone) continue;
        errno = 0;
        if (options.isJson) {
            ListAsJson(file, movie);
        } else {
            List(file, movie, options.isTree);
        }
        // EPIPE is no error for a listing.
        if (!std::cout.flush()) return errno == EPIPE ? worst : ReportUnusable(kStandardStream);
    }
    return worst;
}

}  // namespace

void AddInfoCommand(CLI::App& app, ExitCode& exitCode) {
    const auto options = std::make_shared<InfoOptions>();
    CLI::App* command = app.add_subcommand("info", "Lists the header and the tags of movies");
    command->add_flag("--raw", options->isRaw, "Parse placements, sprites and file attributes alone");
    CLI::Option* json = command->add_flag("--json", options->isJson,
                                          "Write one JSON object a movie, each on a line of its own");
    command
        ->add_flag("--tree", options->isTree,
                   "Show timelines and characters, each once with where it is used")
        ->excludes(json);
    command->add_option("FILE", options->files, "Movies; - for standard input")->required();
    command->footer(
        "The fields of the JSON objects are told in vxswf(1).\n\n"
        "Examples:\n"
        "  vxswf info movie.swf\n"
        "  vxswf info --tree movie.swf | less\n"
        "  vxswf info --json *.swf | jq -r '[.file, .frameCount] | @tsv'");
    command->callback([options, &exitCode] { exitCode = Info(*options); });
}

#include <algorithm>
#include <filesystem>
#include <memory>

#include "Commands.h"
#include "Extraction.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kKinds[] = {"binary", "fonts", "pictures", "scripts", "sounds", "texts"};
constexpr int kDeepest = 64;  // sprites in sprites, which no authoring tool makes

struct ExtractOptions {
    std::vector<std::string> only;
    std::vector<std::string> files;  // and DIR behind them until the command line is read
    std::string directory;
};

/// Takes in what has to be known before: fonts, exported names and the tables of pictures.
void Survey(TagFrames tags, Extraction& extraction, int level) {
    while (const std::optional<FramedTag> tag = tags.Next()) {
        ReadFont(*tag, extraction.fonts);
        if (tag->type == 8 && extraction.jpegTables.empty()) extraction.jpegTables = tag->body;
        if (tag->type == 56 || tag->type == 76) {
            for (auto& [id, name] : ReadExports(tag->body)) extraction.exports.emplace(id, std::move(name));
        }
        if (tag->type == 39 && level < kDeepest) Survey(GetTagsOfSprite(*tag), extraction, level + 1);
    }
}

void ExtractTags(TagFrames tags, const std::string& timeline, Extraction& extraction, int level) {
    StreamedSound stream(timeline);
    unsigned int frame = 1;
    while (extraction.GoesOn()) {
        const std::optional<FramedTag> tag = tags.Next();
        if (!tag) break;
        if (tag->type == 1) ++frame;
        if (extraction.Wants("pictures")) ExtractPicture(*tag, extraction);
        if (extraction.Wants("sounds")) {
            ExtractSound(*tag, extraction);
            stream.Take(*tag, extraction);
        }
        if (extraction.Wants("texts")) ExtractText(*tag, extraction);
        if (extraction.Wants("scripts"))
            ExtractScripts(*tag, timeline + "-frame-" + std::to_string(frame), extraction);
        if (extraction.Wants("binary") && tag->type == 87) {
            ByteReader in(tag->body);
            const unsigned short id = in.U16();
            in.U32();  // reserved
            extraction.Save("binary", extraction.StemOf(id), ".bin", {{"id", id}}, {in.GetRest()});
        }
        if (tag->type == 39 && level < kDeepest) {
            ExtractTags(GetTagsOfSprite(*tag), "sprite-" + std::to_string(tag->GetCharacterId()), extraction,
                        level + 1);
        }
    }
    if (extraction.GoesOn()) stream.Finish(extraction);
}

ExitCode ExtractTo(const ExtractOptions& options, const std::string& file, const std::string& directory) {
    std::vector<unsigned char> bytes;
    if (const ExitCode code = ReadMovie(file, bytes); code != kDone) return code;
    const std::size_t size = bytes.size();
    MovieBytes movie;
    if (const std::string error = movie.Open(std::move(bytes)); !error.empty())
        return ReportFailure(file, error);
    if (const std::string shortness = movie.DescribeShortness(); !shortness.empty())
        ReportNote(file, shortness);
    Extraction extraction(file, directory, size);
    if (!extraction.Begin({options.only.begin(), options.only.end()})) return extraction.GetCode();
    extraction.version = movie.GetVersion();
    Survey(movie.GetTags(), extraction, 0);
    if (extraction.Wants("fonts")) ExtractFonts(extraction);
    ExtractTags(movie.GetTags(), "main", extraction, 0);
    extraction.WriteIndex({{"movie", fs::path(file).filename().string()}, {"version", movie.GetVersion()}});
    return extraction.GetCode();
}

ExitCode Extract(const ExtractOptions& options) {
    if (options.files.size() == 1) return ExtractTo(options, options.files.front(), options.directory);
    return ForEachName(options.files, [&](const std::string& file, const std::string& name) {
        return ExtractTo(options, file, (fs::path(options.directory) / name).string());
    });
}

}  // namespace

void AddExtractCommand(CLI::App& app, ExitCode& exitCode) {
    const auto options = std::make_shared<ExtractOptions>();
    CLI::App* command = app.add_subcommand("extract", "Takes out what movies hold, with an index to look at");
    command
        ->add_option("--only", options->only, "What of it: binary, fonts, pictures, scripts, sounds, texts")
        ->type_name("KINDS")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(kKinds), std::end(kKinds))));
    // One list, since a list in front of another argument would leave nothing for that.
    command
        ->add_option("MOVIE... DIR", options->files,
                     "Movies, - for standard input, and the directory, which is made; several movies get one "
                     "each in it, of their own names")
        ->required()
        ->expected(-2);  // at least two
    command->footer(
        "Examples:\n"
        "  vxswf extract movie.swf parts/ && xdg-open parts/index.html\n"
        "  vxswf extract --only pictures,sounds *.swf parts/");
    command->callback([options, &exitCode] {
        options->directory = options->files.back();
        options->files.pop_back();
        exitCode = Extract(*options);
    });
}

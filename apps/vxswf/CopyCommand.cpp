#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "Files.h"
#include "vxswf.h"

namespace {

namespace fs = std::filesystem;

struct CopyOptions {
    IfShort ifShort = IfShort::kFail;
    bool isCompressed = false;
    bool isPlain = false;
    bool isLzma = false;
    bool isParsed = false;
    int level = 9;
    std::vector<std::string> files;  // and OUT behind them until the command line is read
    std::string out;
};

ExitCode CopyParsedTo(const CopyOptions& options, const std::string& file, const std::string& out) {
    VXFlintFile movie;
    if (const ExitCode code = LoadMovie(file, false, options.ifShort, movie); code != kDone) return code;
    if (options.isCompressed) movie.SetCompression(1);
    if (options.isPlain) movie.SetCompression(0);
    return SaveMovie(movie, out);
}

ExitCode CopyTo(const CopyOptions& options, const std::string& file, const std::string& out) {
    if (options.isParsed) return CopyParsedTo(options, file, out);
    VXWholeMovie movie;
    if (const ExitCode code = LoadWholeMovie(file, options.ifShort, movie); code != kDone) return code;
    if (options.isCompressed) movie.SetPacking(VXWholeMovie::Packing::kDeflate);
    if (options.isPlain) movie.SetPacking(VXWholeMovie::Packing::kNone);
    if (options.isLzma) movie.SetPacking(VXWholeMovie::Packing::kLzma);
    movie.SetPackingLevel(options.level);
    return SaveMovie(movie, out);
}

ExitCode Copy(const CopyOptions& options) {
    std::error_code error;
    if (options.out == kStandardStream || !fs::is_directory(options.out, error)) {
        if (options.files.size() > 1) return ReportUnusable(options.out, "is no directory");
        return CopyTo(options, options.files.front(), options.out);
    }
    return ForEachName(options.files, [&](const std::string& file, const std::string& name) {
        return CopyTo(options, file, (fs::path(options.out) / name).string());
    });
}

}  // namespace

void AddCopyCommand(CLI::App& app, ExitCode& exitCode) {
    const auto options = std::make_shared<CopyOptions>();
    CLI::App* command = app.add_subcommand("copy", "Writes movies again, byte for byte where they are plain");
    CLI::Option* compress =
        command->add_flag("--compress", options->isCompressed, "Write movies compressed with deflate");
    CLI::Option* plain =
        command->add_flag("--plain", options->isPlain, "Write plain movies")->excludes(compress);
    CLI::Option* lzma = command->add_flag("--lzma", options->isLzma, "Write movies compressed with LZMA")
                            ->excludes(compress)
                            ->excludes(plain);
    CLI::Option* level = command->add_option("--level", options->level, "How hard to compress")
                             ->check(CLI::Range(0, 9))
                             ->type_name("N")
                             ->capture_default_str();
    AddParsed(*command, options->isParsed)->excludes(lzma)->excludes(level);
    AddKeepGoing(*command, options->ifShort);
    // One list, since a list in front of another argument would leave nothing for that.
    command
        ->add_option(
            "IN... OUT", options->files,
            "The movie, - for standard input, and its copy, which may be the same file, - for standard "
            "output; or any number of movies and a directory for their copies")
        ->required()
        ->expected(-2);  // at least two
    command->footer(
        "Examples:\n"
        "  vxswf copy --compress movie.swf small.swf\n"
        "  vxswf copy --plain *.swf plain/\n"
        "  zcat movie.swf.gz | vxswf copy --plain - - | xxd | less");
    command->callback([options, &exitCode] {
        options->out = options->files.back();
        options->files.pop_back();
        exitCode = Copy(*options);
    });
}

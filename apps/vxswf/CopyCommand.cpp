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
    bool isRaw = false;
    IfShort ifShort = IfShort::kFail;
    bool isCompressed = false;
    bool isPlain = false;
    std::vector<std::string> files;  // and OUT behind them until the command line is read
    std::string out;
};

ExitCode CopyTo(const CopyOptions& options, const std::string& file, const std::string& out) {
    VXFlintFile movie;
    if (const ExitCode code = LoadMovie(file, options.isRaw, options.ifShort, movie); code != kDone)
        return code;
    if (options.isCompressed) movie.SetCompression(1);
    if (options.isPlain) movie.SetCompression(0);
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
    CLI::App* command = app.add_subcommand("copy", "Loads movies and writes them again");
    command->add_flag("--raw", options->isRaw,
                      "Carry every tag as it is but placements, sprites and file attributes");
    CLI::Option* compress = command->add_flag("--compress", options->isCompressed, "Write compressed movies");
    command->add_flag("--plain", options->isPlain, "Write plain movies")->excludes(compress);
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

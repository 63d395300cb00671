#include <memory>
#include <string>

#include "Commands.h"
#include "Files.h"
#include "vxswf.h"

namespace {

struct CopyOptions {
    bool isRaw = false;
    bool isCompressed = false;
    bool isPlain = false;
    std::string in;
    std::string out;
};

ExitCode Copy(const CopyOptions& options) {
    VXFlintFile movie;
    if (const ExitCode code = LoadMovie(options.in, options.isRaw, movie); code != kDone) return code;
    if (options.isCompressed) movie.SetCompression(1);
    if (options.isPlain) movie.SetCompression(0);
    return SaveMovie(movie, options.out);
}

}  // namespace

void AddCopyCommand(CLI::App& app, ExitCode& exitCode) {
    const auto options = std::make_shared<CopyOptions>();
    CLI::App* command = app.add_subcommand("copy", "Loads a movie and writes it again");
    command->add_flag("--raw", options->isRaw,
                      "Carry every tag as it is but placements, sprites and file attributes");
    CLI::Option* compress =
        command->add_flag("--compress", options->isCompressed, "Write a compressed movie");
    command->add_flag("--plain", options->isPlain, "Write a plain movie")->excludes(compress);
    command->add_option("IN", options->in, "The movie; - for standard input")->required();
    command->add_option("OUT", options->out, "Its copy, which may be IN; - for standard output")->required();
    command->callback([options, &exitCode] { exitCode = Copy(*options); });
}

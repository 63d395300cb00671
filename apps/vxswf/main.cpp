#include <csignal>
#include <iostream>
#include <new>
#include <string>

#include "Commands.h"
#include "Report.h"

int main(int argc, char** argv) {
    // A file that grows too large is a write that fails, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    KeepLibraryMessages();

    CLI::App app("Lists, rewrites, merges and builds SWF movies.", "vxswf");
    app.require_subcommand(1);
    app.set_version_flag("--version", VXSWF_VERSION);
    app.footer("Exit code: 0 done, 1 the library reported a failure, 2 wrong usage or an unusable file.");
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("vxswf: ") + error.what() + "; --help tells more\n";
    });
    ExitCode exitCode = kDone;
    AddCopyCommand(app, exitCode);
    AddDemoCommand(app, exitCode);
    AddInfoCommand(app, exitCode);
    AddMergeCommand(app, exitCode);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kUnusable;
    } catch (const std::bad_alloc&) {
        std::cerr << "vxswf: out of memory\n";
        return kFailed;
    }
    return exitCode;
}

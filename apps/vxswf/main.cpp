#include <iostream>
#include <memory>
#include <new>
#include <string>

#include "Commands.h"
#include "Report.h"
#include "System.h"
#include "platform/VXAssert.h"

namespace {

/// A list that ends with an argument of its own meaning has its dots in its name, and what stands alone needs
/// no type.
class Formatter : public CLI::Formatter {
public:
    std::string make_option_usage(const CLI::Option* option) const override {
        const std::string usage = CLI::Formatter::make_option_usage(option);
        return usage.ends_with(" OUT...") ? usage.substr(0, usage.size() - 3) : usage;
    }
    std::string make_option_opts(const CLI::Option* option) const override {
        return option->nonpositional() ? CLI::Formatter::make_option_opts(option) : "";
    }
};

}  // namespace

int main(int argc, char** argv) {
    PrepareProcess();
    VXSetAssertHandler([](const char*) {});  // what fails is told in the command's own words

    CLI::App app("Lists, rewrites, merges and builds SWF movies.", "vxswf");
    app.formatter(std::make_shared<Formatter>());
    app.require_subcommand(1);
    app.set_version_flag("--version", "vxswf " VXSWF_VERSION);
    app.footer(
        "vxswf COMMAND --help tells of one command, with examples.\n"
        "Exit code: 0 done, 1 the library reported a failure, 2 wrong usage or an unusable file.");
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "vxswf: " + Printable(error.what()) + "; --help tells more\n";
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

#include <algorithm>
#include <iostream>
#include <memory>
#include <new>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "Report.h"
#include "System.h"
#include "kit/VXVersion.h"
#include "platform/VXAssert.h"

namespace {

/// A list that ends with an argument of its own meaning has its dots in its name, and what stands alone needs
/// no type.
class Formatter : public CLI::Formatter {
public:
    std::string make_option_usage(const CLI::Option* option) const override {
        const std::string usage = CLI::Formatter::make_option_usage(option);
        return usage.ends_with(" OUT...") || usage.ends_with(" DIR...") ? usage.substr(0, usage.size() - 3)
                                                                        : usage;
    }
    std::string make_option_opts(const CLI::Option* option) const override {
        return option->nonpositional() ? CLI::Formatter::make_option_opts(option) : "";
    }
};

/// How many letters have to be added, taken away or replaced to get from one word to another.
std::size_t Distance(const std::string& from, const std::string& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] != to[j] ? 1 : 0);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// A message about a first argument that should be a command; empty when it may be one.
std::string RefuseCommand(const CLI::App& app, const std::string& word) {
    const auto commands = app.get_subcommands({});
    if (word.starts_with('-') || word.size() > 64) return "";
    const auto nearest = std::min_element(commands.begin(), commands.end(), [&](auto* a, auto* b) {
        return Distance(word, a->get_name()) < Distance(word, b->get_name());
    });
    if ((*nearest)->get_name() == word) return "";
    return Printable(word) + " is no command, the nearest is " + (*nearest)->get_name();
}

}  // namespace

int main(int argc, char** argv) {
    PrepareProcess();
    VXSetAssertHandler([](const char*) {});  // what fails is told in the command's own words

    CLI::App app("Lists, rewrites, merges, unpacks and builds SWF movies.", "vxswf");
    app.formatter(std::make_shared<Formatter>());
    app.require_subcommand(1);
    app.set_version_flag("--version", std::string("vxswf ") + VXGetVersionText());
    app.footer(
        "vxswf COMMAND --help tells of one command, with examples.\n"
        "Exit code: 0 done, 1 the library reported a failure, 2 wrong usage or an unusable file.");
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "vxswf: " + Printable(error.what()) + "; --help tells more\n";
    });
    ExitCode exitCode = kDone;
    AddCopyCommand(app, exitCode);
    AddDemoCommand(app, exitCode);
    AddExtractCommand(app, exitCode);
    AddInfoCommand(app, exitCode);
    AddMergeCommand(app, exitCode);
    if (const std::string refusal = argc > 1 ? RefuseCommand(app, argv[1]) : ""; !refusal.empty()) {
        std::cerr << "vxswf: " + refusal + "; --help tells more\n";
        return kUnusable;
    }
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

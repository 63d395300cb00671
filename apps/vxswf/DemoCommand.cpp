#include <memory>
#include <string>

#include "Commands.h"
#include "DemoStage.h"
#include "Files.h"

namespace {

struct DemoOptions {
    std::string fontName = "DejaVu Sans";
    std::string out;
};

/// Keeps the type engine up while a movie with glyphs is built and written.
class StartedComponent {
public:
    StartedComponent() { GetSwfParserComponent()->Startup(); }
    ~StartedComponent() { GetSwfParserComponent()->Shutdown(); }
    StartedComponent(const StartedComponent&) = delete;
    StartedComponent& operator=(const StartedComponent&) = delete;
};

}  // namespace

void AddDemoCommand(CLI::App& app, ExitCode& exitCode) {
    const auto options = std::make_shared<DemoOptions>();
    CLI::App* command = app.add_subcommand("demo", "Builds a movie that shows what the library can make");
    command->add_option("--font", options->fontName, "The font of its text")->capture_default_str();
    command->add_option("OUT", options->out, "The movie; - for standard output")->required();
    command->callback([options, &exitCode] {
        const StartedComponent component;
        DemoStage stage;
        AddDemoShapes(stage);
        AddDemoMedia(stage);
        AddDemoText(stage, VXString(options->fontName.c_str()));
        exitCode = SaveMovie(stage.GetMovie(), options->out);
    });
}

#include <memory>
#include <string>

#include "Commands.h"
#include "DemoStage.h"
#include "Files.h"

void AddDemoCommand(CLI::App& app, ExitCode& exitCode) {
    const auto out = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("demo", "Builds a movie that shows what the library can make");
    command->add_option("OUT", *out, "The movie; - for standard output")->required();
    command->callback([out, &exitCode] {
        DemoStage stage;
        AddDemoShapes(stage);
        AddDemoMedia(stage);
        exitCode = SaveMovie(stage.GetMovie(), *out);
    });
}

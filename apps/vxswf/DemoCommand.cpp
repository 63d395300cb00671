#include <iterator>
#include <memory>
#include <string>

#include "Commands.h"
#include "DemoPages.h"
#include "Files.h"

namespace {

struct DemoOptions {
    DemoFiles files;
    std::string out;
};

constexpr struct {
    const char* title;
    void (*add)(DemoStage&);
} kPages[] = {
    {"Shapes", AddDemoShapes},         {"Fills", AddDemoFills},
    {"Strokes", AddDemoStrokes},       {"Text", AddDemoText},
    {"Pictures", AddDemoPictures},     {"Buttons and sounds", AddDemoButtons},
    {"Placements", AddDemoPlacements}, {"Scripts", AddDemoScripts},
    {"Another movie", AddDemoMerge},
};

ExitCode Demo(const DemoOptions& options) {
    const VXTypeEngineSession engine;
    DemoAssets assets;
    if (const ExitCode code = LoadDemoAssets(options.files, assets); code != kDone) return code;
    DemoStage stage(assets, static_cast<unsigned int>(std::size(kPages)));
    for (const auto& [title, add] : kPages) {
        stage.BeginPage(title);
        add(stage);
        stage.EndPage();
    }
    stage.Finish();
    return SaveMovie(stage.GetBuilder().GetMovie(), options.out);
}

}  // namespace

void AddDemoCommand(CLI::App& app, ExitCode& exitCode) {
    const auto options = std::make_shared<DemoOptions>();
    CLI::App* command = app.add_subcommand("demo", "Builds a movie that shows all that the library makes");
    command->add_option("--font", options->files.font, "The font of its text, by a name that fc-list shows")
        ->type_name("NAME")
        ->capture_default_str();
    command->add_option("--jpeg", options->files.jpeg, "A JPEG in place of the built-in photo")
        ->type_name("FILE");
    command->add_option("--png", options->files.png, "A PNG in place of the built-in picture")
        ->type_name("FILE");
    command->add_option("--mp3", options->files.mp3, "An MP3 in place of the built-in sound")
        ->type_name("FILE");
    command->add_option("OUT", options->out, "The movie; - for standard output")->required();
    command->footer(
        "Examples:\n"
        "  vxswf demo demo.swf\n"
        "  vxswf demo --font 'DejaVu Serif' --png picture.png --mp3 sound.mp3 demo.swf");
    command->callback([options, &exitCode] { exitCode = Demo(*options); });
}

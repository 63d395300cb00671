#include "Commands.h"

#include <algorithm>
#include <filesystem>
#include <set>

void AddKeepGoing(CLI::App& command, IfShort& ifShort) {
    command.add_flag_callback(
        "--keep-going", [&ifShort] { ifShort = IfShort::kNote; },
        "Take what there is of a movie that is shorter than its header states");
}

CLI::Option* AddParsed(CLI::App& command, bool& isParsed) {
    return command.add_flag("--parsed", isParsed,
                            "Go through the classes of the tags, which lose some things");
}

ExitCode ForEachName(const std::vector<std::string>& files,
                     const std::function<ExitCode(const std::string& file, const std::string& name)>& work) {
    ExitCode worst = kDone;
    std::set<std::string> names;
    for (const std::string& file : files) {
        const std::string name = std::filesystem::path(file).filename().string();
        ExitCode code = kUnusable;
        if (file == kStandardStream || name.empty()) {
            code = ReportUnusable(file, "has no name for its result");
        } else if (!names.insert(name).second) {
            code = ReportUnusable(file, "has the name of another one in front of it");
        } else {
            code = work(file, name);
        }
        worst = std::max(worst, code);
    }
    return worst;
}

#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "Files.h"
#include "Report.h"

// The options of commands that write what they have loaded.

void AddKeepGoing(CLI::App& command, IfShort& ifShort);
CLI::Option* AddParsed(CLI::App& command, bool& isParsed);

/// Calls `work` with each of several files and the name that it has in a directory of results. Answers the
/// greatest code; a file that fails does not keep the others from being worked on.
ExitCode ForEachName(const std::vector<std::string>& files,
                     const std::function<ExitCode(const std::string& file, const std::string& name)>& work);

// Each command stands in a source of its own. These add it to the program; a run of it leaves its result in
// `exitCode`.

void AddCopyCommand(CLI::App& app, ExitCode& exitCode);
void AddDemoCommand(CLI::App& app, ExitCode& exitCode);
void AddExtractCommand(CLI::App& app, ExitCode& exitCode);
void AddInfoCommand(CLI::App& app, ExitCode& exitCode);
void AddMergeCommand(CLI::App& app, ExitCode& exitCode);

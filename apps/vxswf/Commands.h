#pragma once

#include <CLI/CLI.hpp>

#include "Report.h"

// Each command stands in a source of its own. These add it to the program; a run of it leaves its result in
// `exitCode`.

void AddCopyCommand(CLI::App& app, ExitCode& exitCode);
void AddDemoCommand(CLI::App& app, ExitCode& exitCode);
void AddInfoCommand(CLI::App& app, ExitCode& exitCode);
void AddMergeCommand(CLI::App& app, ExitCode& exitCode);

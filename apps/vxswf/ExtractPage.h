#pragma once

#include <cstdio>
#include <nlohmann/json.hpp>

/// Writes a page that shows what the index of an extraction names: pictures, sounds to be played, the rest as
/// links and rows.
void WritePage(const nlohmann::ordered_json& index, std::FILE* file);

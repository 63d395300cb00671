#pragma once

#include <cstddef>
#include <string>

#include "ByteReader.h"

/// Bytes of a listing, about: hostile actions become hundreds of times longer as text.
inline constexpr std::size_t kLongestListing = std::size_t{1} << 26;

/// A text with a line for each action: its name and operands, the bodies of functions and the like further
/// in, jumps to labels. A line that is the target of a jump has its label in front.
std::string ListActions(ByteSpan actions);

/// `text` in quotes on one line.
std::string Quoted(const std::string& text);

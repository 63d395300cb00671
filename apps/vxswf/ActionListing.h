#pragma once

#include <string>

#include "ByteReader.h"

/// A text with a line for each action: its name and operands, the bodies of functions and the like further
/// in, jumps to labels. A line that is the target of a jump has its label in front.
std::string ListActions(ByteSpan actions);

/// `text` in quotes on one line.
std::string Quoted(const std::string& text);

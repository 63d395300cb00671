#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What is replaced in scripts of a version before 3, where they stand as bytes.
struct VXScriptEdit {
    std::string from;  // UTF-8, not empty
    std::string to;
    unsigned char version;  // of the movie

    unsigned int hits = 0;
    std::string errorText{};  // of the last call; empty when it went well

    /// Replaces in the texts of a script: pushed ones, constants, addresses, targets, labels, names of functions
    /// and their arguments. Distances of jumps and sizes of functions and blocks follow. Answers whether `bytes`
    /// was changed; with an error text it was not.
    bool EditScript(std::string& bytes);
    /// The same in the body of a tag that is carried as bytes: scripts, buttons, placements, sprites.
    bool EditBody(unsigned int type, std::string& bytes);
    /// The same in the events of a placement of a movie of `eventVersion`, which begin at `start`.
    bool EditEvents(std::string& bytes, std::size_t start, unsigned char eventVersion);

private:
    bool EditBody(unsigned int type, std::string& bytes, unsigned int level);
    bool EditButton2(std::string& bytes);
    bool EditButton(std::string& bytes);
    bool EditPlacement(unsigned int type, std::string& bytes);
    bool EditSprite(std::string& bytes, unsigned int level);
    bool EditTail(std::string& bytes, std::size_t start);
    bool Fail(std::string text);
    bool Contains(std::string_view bytes) const { return bytes.find(from) != std::string_view::npos; }
};

#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "MovieBytes.h"

// What several commands read out of the bodies of tags. What a body lacks is zero or empty.

/// Of a tag of type 39.
TagFrames GetTagsOfSprite(const FramedTag& tag);

/// A tag of type 4, 26, 70 or 94.
struct Placement {
    unsigned short depth = 0;
    std::optional<unsigned short> character;
    std::optional<unsigned short> ratio;
    std::optional<unsigned short> clipDepth;
    std::string name;
    std::string className;
    bool moves = false;  ///< changes what stands at the depth
    ByteSpan clipActions;
};
bool IsPlacement(unsigned int type);
Placement ReadPlacement(const FramedTag& tag);

/// A piece of a button or of the handlers of a placement.
struct Handler {
    std::string events;  ///< "press, release" and the like
    ByteSpan actions;
};
std::vector<Handler> ReadClipHandlers(ByteSpan clipActions, unsigned int version);
/// Of a tag of type 7 or 34.
std::vector<Handler> ReadButtonHandlers(const FramedTag& tag);

/// The names that a tag of type 56 or 76 gives to characters.
std::vector<std::pair<unsigned short, std::string>> ReadExports(ByteSpan body);

/// A tag of type 37.
struct EditText {
    Rectangle bounds;
    std::optional<unsigned short> font;
    std::string fontClass;
    std::string variable;
    std::string text;
    bool isHtml = false;
};
EditText ReadEditText(ByteSpan body);

/// What the tags of a movie tell of a font, together.
struct Font {
    std::string name;
    std::string fullName;
    std::string copyright;
    bool isBold = false;
    bool isItalic = false;
    unsigned int numGlyphs = 0;
    std::vector<unsigned short> codes;  ///< of the glyphs, as far as they are told
};
using Fonts = std::map<unsigned short, Font>;
/// Takes in what a tag of type 10, 13, 48, 62, 75, 88 or 91 has, and nothing of any other.
void ReadFont(const FramedTag& tag, Fonts& fonts);
/// The text of a tag of type 11 or 33, a line for each record that has its own height; characters without a
/// code become U+FFFD.
std::string ReadStaticText(const FramedTag& tag, const Fonts& fonts);

/// Appends `code` in UTF-8.
void AppendUtf8(std::string& text, unsigned short code);

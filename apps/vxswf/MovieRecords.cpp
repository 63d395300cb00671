#include "MovieRecords.h"

#include <iterator>

namespace {

void SkipMatrix(ByteReader& in) {
    in.Align();
    for (int pair = 0; pair < 2; ++pair) {  // of scales and of rotations
        if (in.Bits(1) == 0) continue;
        const unsigned int width = in.Bits(5);
        in.Bits(width);
        in.Bits(width);
    }
    const unsigned int width = in.Bits(5);
    in.Bits(width);
    in.Bits(width);
}

void SkipCxform(ByteReader& in, bool hasAlpha) {
    in.Align();
    const unsigned int hasAdd = in.Bits(1);
    const unsigned int hasMultiply = in.Bits(1);
    const unsigned int width = in.Bits(4);
    for (unsigned int i = (hasAlpha ? 4 : 3) * (hasAdd + hasMultiply); i > 0; --i) in.Bits(width);
}

void SkipFilters(ByteReader& in) {
    constexpr std::size_t kSizes[] = {23, 9, 15, 27, 0, 0, 80, 0};
    for (unsigned int left = in.U8(); left > 0 && !in.HasFailed(); --left) {
        const unsigned int type = in.U8();
        switch (type) {
            case 4:
            case 7:  // gradients
                in.Take(std::size_t{5} * in.U8() + 19);
                break;
            case 5: {  // a convolution
                const std::size_t width = in.U8();
                in.Take(4 * width * in.U8() + 13);
                break;
            }
            default:
                if (type >= std::size(kSizes)) return;
                in.Take(kSizes[type]);
        }
    }
}

std::string JoinNames(std::uint32_t flags, const char* const* names, std::size_t count) {
    std::string joined;
    for (std::size_t i = 0; i < count; ++i) {
        if ((flags >> i & 1) == 0) continue;
        if (!joined.empty()) joined += ", ";
        joined += names[i];
    }
    return joined;
}

void AddEvent(std::string& events, const std::string& event) {
    if (!events.empty()) events += ", ";
    events += event;
}

std::string DescribeKey(unsigned int key) {
    if (key > 32 && key < 127) return std::string("key ") + static_cast<char>(key);
    return "key " + std::to_string(key);
}

/// Steps over the characters of a button, up to the zero behind them.
void SkipButtonRecords(ByteReader& in, bool isSecond) {
    while (!in.IsAtEnd()) {
        const unsigned int flags = in.U8();
        if (flags == 0) return;
        in.Take(4);  // character and depth
        SkipMatrix(in);
        if (!isSecond) continue;
        SkipCxform(in, true);
        if ((flags & 0x10) != 0) SkipFilters(in);
        if ((flags & 0x20) != 0) in.U8();
    }
}

std::string TextOf(ByteSpan bytes) { return {bytes.begin(), std::find(bytes.begin(), bytes.end(), 0)}; }

/// Codes of two bytes or of one, as many as there are.
void ReadCodes(ByteReader& in, bool isWide, std::size_t most, Font& font) {
    font.codes.clear();
    while (font.codes.size() < most && in.GetRemaining() >= (isWide ? 2u : 1u))
        font.codes.push_back(isWide ? in.U16() : in.U8());
}

void ReadFontInfo(const FramedTag& tag, Fonts& fonts) {
    ByteReader in(tag.body);
    Font& font = fonts[in.U16()];
    font.name = TextOf(in.Take(in.U8()));
    const unsigned int flags = in.U8();
    font.isItalic = (flags & 4) != 0;
    font.isBold = (flags & 2) != 0;
    if (tag.type == 62) in.U8();  // language
    ReadCodes(in, tag.type == 62 || (flags & 1) != 0, in.GetRemaining(), font);
}

void ReadGlyphFont(const FramedTag& tag, Fonts& fonts) {
    ByteReader in(tag.body);
    Font& font = fonts[in.U16()];
    const unsigned int flags = in.U8();
    font.isItalic = (flags & 2) != 0;
    font.isBold = (flags & 1) != 0;
    in.U8();  // language
    font.name = TextOf(in.Take(in.U8()));
    font.numGlyphs = in.U16();
    const bool isWide = (flags & 8) != 0;
    const ByteSpan offsets = in.GetRest();
    in.Take(std::size_t{font.numGlyphs} * (isWide ? 4 : 2));
    const std::size_t codes = isWide ? in.U32() : in.U16();
    if (in.HasFailed() || codes > offsets.size()) return;  // a font of the system has no glyphs of its own
    ByteReader table(offsets.subspan(codes));
    ReadCodes(table, tag.type == 75 || (flags & 4) != 0, font.numGlyphs, font);
}

}  // namespace

TagFrames GetTagsOfSprite(const FramedTag& tag) {
    constexpr std::size_t kHead = 4;  // ID and number of frames
    const std::size_t skipped = std::min(kHead, tag.body.size());
    return {tag.body.subspan(skipped), tag.bodyOffset + skipped};
}

bool IsPlacement(unsigned int type) { return type == 4 || type == 26 || type == 70 || type == 94; }

Placement ReadPlacement(const FramedTag& tag) {
    Placement placement;
    ByteReader in(tag.body);
    if (tag.type == 4) {
        placement.character = in.U16();
        placement.depth = in.U16();
        return placement;
    }
    const unsigned int flags = in.U8();
    const unsigned int more = tag.type == 26 ? 0 : in.U8();
    placement.moves = (flags & 0x01) != 0;
    placement.depth = in.U16();
    const bool hasCharacter = (flags & 0x02) != 0;
    if ((more & 0x08) != 0 || ((more & 0x10) != 0 && hasCharacter)) placement.className = in.Text();
    if (hasCharacter) placement.character = in.U16();
    if ((flags & 0x04) != 0) SkipMatrix(in);
    if ((flags & 0x08) != 0) SkipCxform(in, true);
    if ((flags & 0x10) != 0) placement.ratio = in.U16();
    if ((flags & 0x20) != 0) placement.name = in.Text();
    if ((flags & 0x40) != 0) placement.clipDepth = in.U16();
    if ((more & 0x01) != 0) SkipFilters(in);
    if ((more & 0x02) != 0) in.U8();   // blend mode
    if ((more & 0x04) != 0) in.U8();   // whether it is kept as a bitmap
    if ((more & 0x20) != 0) in.U8();   // whether it is visible
    if ((more & 0x40) != 0) in.U32();  // colour behind it
    if ((flags & 0x80) != 0 && !in.HasFailed()) placement.clipActions = in.GetRest();
    return placement;
}

std::vector<Handler> ReadClipHandlers(ByteSpan clipActions, unsigned int version) {
    static constexpr const char* kEvents[] = {
        "load",    "enterFrame", "unload",     "mouseMove", "mouseDown", "mouseUp",        "keyDown",
        "keyUp",   "data",       "initialize", "press",     "release",   "releaseOutside", "rollOver",
        "rollOut", "dragOver",   "dragOut",    "keyPress",  "construct"};
    constexpr std::uint32_t kKeyPress = 1u << 17;
    std::vector<Handler> handlers;
    ByteReader in(clipActions);
    const bool isWide = version > 5;
    in.Take(isWide ? 6 : 4);  // a reserved word and all events together
    while (!in.IsAtEnd()) {
        const std::uint32_t flags = isWide ? in.U32() : in.U16();
        if (flags == 0) break;
        ByteSpan actions = in.Take(in.U32());
        Handler handler{JoinNames(flags, kEvents, std::size(kEvents)), {}};
        if ((flags & kKeyPress) != 0 && !actions.empty()) {
            AddEvent(handler.events, DescribeKey(actions[0]));
            actions = actions.subspan(1);
        }
        handler.actions = actions;
        handlers.push_back(std::move(handler));
    }
    return handlers;
}

std::vector<Handler> ReadButtonHandlers(const FramedTag& tag) {
    static constexpr const char* kConditions[] = {"rollOver",       "rollOut",      "press",
                                                  "release",        "dragOut",      "dragOver",
                                                  "releaseOutside", "menuDragOver", "menuDragOut"};
    std::vector<Handler> handlers;
    ByteReader in(tag.body);
    in.U16();
    if (tag.type == 7) {
        SkipButtonRecords(in, false);
        if (!in.IsAtEnd()) handlers.push_back({"release", in.GetRest()});
        return handlers;
    }
    in.U8();
    if (in.U16() == 0) return handlers;
    // Some writers state an offset that is too low, so the records are walked instead.
    SkipButtonRecords(in, true);
    ByteSpan rest = in.GetRest();
    while (rest.size() > 4) {
        ByteReader condition(rest);
        const std::size_t size = condition.U16();
        const unsigned int flags = condition.U16();
        Handler handler{JoinNames(flags, kConditions, std::size(kConditions)), condition.GetRest()};
        if (flags >> 9 != 0) AddEvent(handler.events, DescribeKey(flags >> 9));
        if (size >= 4 && size <= rest.size()) handler.actions = rest.subspan(4, size - 4);
        handlers.push_back(std::move(handler));
        if (size < 4 || size > rest.size()) break;
        rest = rest.subspan(size);
    }
    return handlers;
}

std::vector<std::pair<unsigned short, std::string>> ReadExports(ByteSpan body) {
    std::vector<std::pair<unsigned short, std::string>> exports;
    ByteReader in(body);
    for (unsigned int left = in.U16(); left > 0 && !in.IsAtEnd(); --left) {
        const unsigned short id = in.U16();
        exports.emplace_back(id, in.Text());
    }
    return exports;
}

EditText ReadEditText(ByteSpan body) {
    EditText text;
    ByteReader in(body);
    in.U16();
    text.bounds = ReadRectangle(in);
    const unsigned int flags = in.U8();
    const unsigned int more = in.U8();
    text.isHtml = (more & 0x02) != 0;
    if ((flags & 0x01) != 0) text.font = in.U16();
    if ((more & 0x80) != 0) text.fontClass = in.Text();
    if ((flags & 0x01) != 0 || (more & 0x80) != 0) in.U16();  // height
    if ((flags & 0x04) != 0) in.U32();                        // colour
    if ((flags & 0x02) != 0) in.U16();                        // greatest length
    if ((more & 0x20) != 0) in.Take(9);                       // layout
    text.variable = in.Text();
    if ((flags & 0x80) != 0) text.text = in.Text();
    return text;
}

void ReadFont(const FramedTag& tag, Fonts& fonts) {
    ByteReader in(tag.body);
    switch (tag.type) {
        case 10: {
            Font& font = fonts[in.U16()];
            font.numGlyphs = in.U16() / 2u;  // the first offset lies behind the table of them
            break;
        }
        case 13:
        case 62:
            ReadFontInfo(tag, fonts);
            break;
        case 48:
        case 75:
            ReadGlyphFont(tag, fonts);
            break;
        case 88: {
            Font& font = fonts[in.U16()];
            font.fullName = in.Text();
            font.copyright = in.Text();
            break;
        }
        case 91: {
            Font& font = fonts[in.U16()];
            const unsigned int flags = in.U8();
            font.isItalic = (flags & 2) != 0;
            font.isBold = (flags & 1) != 0;
            font.name = in.Text();
            break;
        }
        default:
            break;
    }
}

std::string ReadStaticText(const FramedTag& tag, const Fonts& fonts) {
    std::string text;
    ByteReader in(tag.body);
    in.U16();
    ReadRectangle(in);
    SkipMatrix(in);
    const unsigned int glyphBits = in.U8();
    const unsigned int advanceBits = in.U8();
    const Font* font = nullptr;
    constexpr std::size_t kLongest = 1 << 20;  // glyphs of no bits take no bytes
    while (!in.IsAtEnd() && glyphBits <= 32 && advanceBits <= 32 && text.size() < kLongest) {
        const unsigned int flags = in.U8();
        if (flags == 0) break;
        if ((flags & 0x08) != 0) {
            const auto found = fonts.find(in.U16());
            font = found == fonts.end() ? nullptr : &found->second;
        }
        if ((flags & 0x04) != 0) in.Take(tag.type == 33 ? 4 : 3);  // colour
        if ((flags & 0x01) != 0) in.U16();                         // x
        if ((flags & 0x02) != 0) {
            in.U16();  // y
            if (!text.empty()) text += '\n';
        }
        if ((flags & 0x08) != 0) in.U16();  // height
        for (unsigned int left = in.U8(); left > 0 && !in.HasFailed(); --left) {
            const std::size_t glyph = in.Bits(glyphBits);
            in.Bits(advanceBits);
            if (in.HasFailed()) break;
            AppendUtf8(text, font != nullptr && glyph < font->codes.size()
                                 ? font->codes[glyph]
                                 : static_cast<unsigned short>(0xFFFD));
        }
    }
    return text;
}

void AppendUtf8(std::string& text, unsigned short code) {
    if (code >= 0xD800 && code < 0xE000) code = 0xFFFD;
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | code >> 6);
        text += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | code >> 12);
        text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (code & 0x3F));
    }
}

#include "platform/VXFontUtils.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

/// Words of their own; "SC" is none of them, since fonts of small capitals carry it.
constexpr std::string_view kWords[] = {"chinese", "cjk", "hk", "japanese", "jp", "korean", "kr", "tc"};

/// Found anywhere in a name.
constexpr std::string_view kParts[] = {
    "applegothic",  "apple sd gothic", "baekmuk",
    "batang",       "biaukai",         "dengxian",
    "dfkai",        "dotum",           "droid sans fallback",
    "fangsong",     "gulim",           "gungsuh",
    "hanamin",      "heiti",           "hiragino",
    "ipa gothic",   "ipaexgothic",     "ipagothic",
    "ipapgothic",   "jhenghei",        "kaiti",
    "kochi gothic", "lantinghei",      "lihei",
    "lisong",       "malgun",          "meiryo",
    "mincho",       "ming std",        "mingliu",
    "ms gothic",    "ms pgothic",      "ms ui gothic",
    "myeongjo",     "myungjo",         "nanum",
    "noto sans sc", "noto serif sc",   "osaka",
    "pingfang",     "sazanami",        "simhei",
    "simsun",       "song std",        "songti",
    "source han",   "stsong",          "stxihei",
    "takao",        "uming",           "ukai",
    "vl gothic",    "vl pgothic",      "wenquanyi",
    "yahei",        "yu gothic",       "yugothic",
};

bool IsOfScript(char16_t unit) {
    return (unit >= 0x1100 && unit <= 0x11FF) ||  // Hangul by its letters
           (unit >= 0x2E80 && unit <= 0x9FFF) ||  // radicals, kana, Chinese characters
           (unit >= 0xAC00 && unit <= 0xD7A3) ||  // Hangul by syllables
           (unit >= 0xD840 && unit <= 0xD888) ||  // first halves of further Chinese characters
           (unit >= 0xF900 && unit <= 0xFAFF) ||  // compatibility forms of Chinese characters
           (unit >= 0xFF66 && unit <= 0xFFDC);    // kana and Hangul of half width
}

/// ASCII in lower case, every other unit as '?'.
std::string Simplify(const VXString& name) {
    std::string simple;
    simple.reserve(name.length());
    for (const char16_t unit : name) {
        const char letter = unit < 0x80 ? static_cast<char>(unit) : '?';
        simple.push_back(letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter);
    }
    return simple;
}

bool HoldsWord(std::string_view text, std::string_view word) {
    const auto isLetter = [&](std::size_t at) {
        return at < text.size() && text[at] >= 'a' && text[at] <= 'z';
    };
    for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
        if (!isLetter(at - 1) && !isLetter(at + word.size())) return true;
    }
    return false;
}

bool IsDoubleByte(const VXString& name) {
    if (!name.empty() && name[0] == u'@') return true;
    if (std::any_of(name.begin(), name.end(), IsOfScript)) return true;
    const std::string simple = Simplify(name);
    return std::any_of(std::begin(kWords), std::end(kWords),
                       [&](std::string_view word) { return HoldsWord(simple, word); }) ||
           std::any_of(std::begin(kParts), std::end(kParts),
                       [&](std::string_view part) { return simple.find(part) != simple.npos; });
}

}  // namespace

void VXFontUtils::GetFontInfo(const VXString& name, VXFontInfo* info) {
    if (info != nullptr) info->m_IsDoubleByte = IsDoubleByte(name) ? 1 : 0;
}

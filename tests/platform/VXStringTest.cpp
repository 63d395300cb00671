#include "support/Test.h"

namespace {

std::string RoundTrip(const std::string& bytes) {
    return VXString(bytes.data(), bytes.size()).GetUTF8String();
}

std::u16string Units(const std::string& bytes) {
    return std::u16string(VXString(bytes.data(), bytes.size()).GetUnits());
}

}  // namespace

static_assert(sizeof(VXString) == sizeof(void*));

TEST(VXString, DecodesValidUTF8AndNothingElse) {
    const struct {
        const char* what;
        std::string bytes;
        std::u16string units;
    } rows[] = {
        {"first and last of two bytes", "\xC2\x80\xDF\xBF", u"\u0080\u07FF"},
        {"first and last of three bytes", "\xE0\xA0\x80\xEF\xBF\xBF", u"\u0800\uFFFF"},
        {"beside the surrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"},
        {"first and last of four bytes", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
        {"an 8-bit name", "caf\xE9", {u'c', u'a', u'f', 0xDCE9}},
        {"overlong two bytes", "\xC1\xAF", {0xDCC1, 0xDCAF}},
        {"overlong four bytes", "\xF0\x8F\xBF\xBF", {0xDCF0, 0xDC8F, 0xDCBF, 0xDCBF}},
        {"encoded surrogate", "\xED\xA0\x80", {0xDCED, 0xDCA0, 0xDC80}},
        {"above U+10FFFF", "\xF4\x90\x80\x80", {0xDCF4, 0xDC90, 0xDC80, 0xDC80}},
        {"cut short by the end", "\xE2\x82", {0xDCE2, 0xDC82}},
        {"cut short by a character", "\xF0\x9F\xC3\xA9", {0xDCF0, 0xDC9F, u'\u00E9'}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Units(row.bytes), row.units) << row.what;
        EXPECT_EQ(RoundTrip(row.bytes), row.bytes) << row.what;
    }
}

TEST(VXString, EveryOneAndTwoByteTextComesBack) {
    std::set<std::u16string> seen;
    for (int a = 1; a < 256; ++a) {
        const std::string one(1, static_cast<char>(a));
        ASSERT_EQ(RoundTrip(one), one);
        seen.insert(Units(one));
        for (int b = 1; b < 256; ++b) {
            const std::string two = one + static_cast<char>(b);
            ASSERT_EQ(RoundTrip(two), two);
            seen.insert(Units(two));
        }
    }
    EXPECT_EQ(seen.size(), 255U + 255U * 255U) << "two texts became one string";
}

TEST(VXString, LoneSurrogatesAreThreeBytes) {
    const std::pair<std::u16string, const char*> rows[] = {
        {{0xD800}, "\xED\xA0\x80"},
        {{0xDBFF, u'x'}, "\xED\xAF\xBFx"},
        {{0xDC7F}, "\xED\xB1\xBF"},
        {{0xDD00}, "\xED\xB4\x80"},
        // Behind a high surrogate the same unit is half of a character, not a byte.
        {{0xD800, 0xDC80, 0xDC80}, "\xF0\x90\x82\x80\x80"},
    };
    for (const auto& [units, bytes] : rows) EXPECT_EQ(VXString(units).GetUTF8String(), bytes);
}

TEST(VXString, StopsAtTheFirstNul) {
    EXPECT_EQ(VXString("ab\0cd", 5).length(), 2U);
    EXPECT_TRUE(VXString("\0cd", 3).empty());
    EXPECT_TRUE(VXString(nullptr).empty());
    EXPECT_TRUE(VXString(nullptr, 7).empty());
    EXPECT_EQ(VXString("\xC3\xA9", 1).GetUTF8String(), "\xC3") << "bytes behind the size are not looked at";
}

TEST(VXString, AssignsAndAppendsFromItself) {
    VXString text("abcdefgh");
    for (int i = 0; i < 4; ++i) text += text;
    EXPECT_EQ(text.length(), 128U);
    EXPECT_EQ(text.substr(120), "abcdefgh");
    text.truncate(999);
    text.truncate(100);
    text.append(text.GetUnits().substr(98));  // fits without a new block
    EXPECT_EQ(text.substr(96), "abcdcd");
    VXString& same = text;
    text = same;
    text = std::move(same);
    EXPECT_EQ(text.length(), 102U);
    const VXString moved = std::move(text += "x");
    EXPECT_EQ(moved.length(), 103U);
    EXPECT_EQ(text.begin(), nullptr) << "empty in every way owns nothing";
    text = "abc";
    text.truncate(0);
    EXPECT_EQ(text.begin(), nullptr);
}

TEST(VXString, FindsAndOrdersByUnit) {
    EXPECT_EQ(VXString("banana").find("ana", 2), 3U);
    EXPECT_EQ(VXString("banana").find(u'n', 99), VXString::npos);
    EXPECT_TRUE(VXString("banana").substr(99, 1).empty());
    EXPECT_LT(VXString("\xF0\x90\x80\x80"), VXString("\xEE\x80\x80")) << "by unit, not by character";
}

#include "platform/VXFontUtils.h"

#include <gtest/gtest.h>

namespace {

short FlagOf(const VXString& name) {
    VXFontInfo info;
    info.m_IsDoubleByte = 7;
    VXFontUtils::GetFontInfo(name, &info);
    return info.m_IsDoubleByte;
}

}  // namespace

TEST(VXFontUtils, KnowsFontsOfDoubleByteEncodingsByName) {
    for (const char* name :
         {"@Arial", "@", "MS Gothic", "ms pmincho", "SimSun", "NSimSun", "PMingLiU", "BatangChe", "Gulim",
          "Noto Sans CJK SC", "Noto Serif JP Bold", "Noto Sans-KR", "\xE5\xAE\x8B\xE4\xBD\x93",
          "\xEB\xB0\x94\xED\x83\x95", "\xEF\xBC\xAD\xEF\xBC\xB3 \xE3\x82\xB4\xE3\x82\xB7"}) {
        EXPECT_NE(FlagOf(name), 0) << name;
    }
    for (const char* name : {"", "DejaVu Sans", "Arial@", "Century Gothic", "Franklin Gothic Medium",
                             "Tw Cen MT", "Alegreya SC", "JPEG", "Symbol",
                             "Gr\xC3\xB6\xC3\x9F"
                             "e",
                             "\xD0\x9F\xD0\xB5\xD1\x80"}) {
        EXPECT_EQ(FlagOf(name), 0) << name;
    }
    VXFontUtils::GetFontInfo("Arial", nullptr);
}

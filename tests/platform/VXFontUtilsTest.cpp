#include "support/Test.h"

TEST(VXFontUtils, KnowsFontsOfDoubleByteEncodingsByName) {
    const std::pair<short, std::vector<const char*>> rows[] = {
        {1,
         {"@Arial", "@", "MS Gothic", "ms pmincho", "NSimSun", "PMingLiU", "BatangChe", "Noto Sans CJK SC",
          "Noto Serif JP Bold", "Noto Sans-KR", "\xE5\xAE\x8B\xE4\xBD\x93", "\xEB\xB0\x94\xED\x83\x95",
          "\xEF\xBC\xAD\xEF\xBC\xB3 \xE3\x82\xB4\xE3\x82\xB7"}},
        {0,
         {"", "DejaVu Sans", "Arial@", "Century Gothic", "Franklin Gothic Medium", "Tw Cen MT", "Alegreya SC",
          "JPEG", "Gr\xC3\xB6", "\xD0\x9F\xD0\xB5\xD1\x80"}},
    };
    for (const auto& [flag, names] : rows) {
        for (const char* name : names) {
            VXFontInfo info;
            info.m_IsDoubleByte = 7;
            VXFontUtils::GetFontInfo(name, &info);
            EXPECT_EQ(info.m_IsDoubleByte != 0, flag != 0) << name;
        }
    }
    VXFontUtils::GetFontInfo("Arial", nullptr);
}

#pragma once

#include "platform/typeengine/VXFontList_p.h"
#include "support/Test.h"

/// A procedure of the engine, found as the library finds it.
#define VX_ENGINE(name) (reinterpret_cast<decltype(&::name)>(GetVXBndAddressProc()(#name)))

/// Starts the engine for each test, and finds nothing left of it afterwards.
class EngineFixture : public testing::Test {
protected:
    static constexpr TYMatrix kEm1024{1024, 0, 0, 1024, 0, 0};

    void SetUp() override { BNDInitialize(GetVXBndAddressProc()); }
    void TearDown() override {
        EXPECT_EQ(VX_ENGINE(TYTestLiveHandleCount)(), 0) << "handles that nobody gave back";
        BNDTerminate();
    }

    /// Every font of every family, in order.
    static void ForEachFont(const std::function<void(const BND_NT_NMT::CTYFontDict&)>& visit) {
        using namespace BND_NT_NMT;
        const CTYFamilyList list = TYFamilyListNewList(TYFontSetNew());
        for (int i = 0; i < TYFamilyListGetNumFams(list); ++i) {
            const CTYFamily family = TYFamilyListGetNthFamily(list, i);
            for (int k = 0; k < TYFamilyGetNumFonts(family); ++k) visit(TYFamilyGetNthFont(family, k));
        }
    }

    /// Empty when no font is called `name`.
    static BND_NT_NMT::CTYFontDict Font(const char* name) {
        BND_NT_NMT::CTYFontDict found;
        ForEachFont([&](const BND_NT_NMT::CTYFontDict& font) {
            if (TYFontDictGetFontName(font) == name) found = font;
        });
        return found;
    }

    /// Where the font called `name` is installed; empty when there is none.
    static std::string FileOf(const char* name) {
        const auto list = VXFontList::Load();
        for (const VXFontFamily& family : list->GetFamilies()) {
            for (const VXFontRecord& font : family.fonts) {
                if (font.name == name) return font.file;
            }
        }
        return {};
    }

    /// At 1024 units to the em.
    static BND_NT_NMT::CTYFontInstance Instance(const BND_NT_NMT::CTYFontDict& font) {
        using namespace BND_NT_NMT;
        return TYFontInstanceNewFontInstance(font, kEm1024, TYEncodingNewFromPreDefEncoding(13));
    }

    static float Width(const BND_NT_NMT::CTYFontInstance& instance, char16_t character) {
        using namespace BND_NT_NMT;
        return TYFontInstanceGetWidth(instance, TYFontInstanceGetGlyphID(instance, character));
    }

    static TYBox Box(const BND_NT_NMT::CTYFontInstance& instance, char16_t character) {
        using namespace BND_NT_NMT;
        return TYTextGetBoundingBox(TYNewTextFontInstanceCP(instance, character), {});
    }
};

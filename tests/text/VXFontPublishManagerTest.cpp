#include "text/VXFontPublishManager.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/TagSweep.h"
#include "text/FakeTypeEngine.h"
#include "text/VXFontTagRegistry_p.h"
#include "text/VXSwfDefineFont2Tag.h"

namespace {

using namespace BND_NT_NMT;
using FontPtr = std::unique_ptr<VXSwfDefineFont2Tag>;

class CountingIds : public IVXSwfIdGenerator {
public:
    unsigned short GetId(tVXSwfReservedIDEnum reserved) override {
        EXPECT_EQ(reserved, kVXSwfOrdinaryId);
        return ++last;
    }
    VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override {
        id = GetId(reserved);
        return kVXSuccess;
    }

    unsigned short last = 0;
};

class Holder : public IVXSwfTagHolder {
public:
    void IncludeTag(VXSwfTag* tag, int frame) override {
        EXPECT_EQ(frame, -1);
        tags.emplace_back(tag, &VXSwfTagFactory::DeleteTag);
    }

    std::vector<TagPtr> tags;
};

/// Tags that are shared and that a movie owns.
class VXFontPublishManagerTags : public testing::Test {
protected:
    ~VXFontPublishManagerTags() override { VXFontPublishManager::DoCleanUp(); }

    VXSwfDefineFont2Tag* Get(const char* name, short bold, short italic) {
        return VXFontPublishManager::GetDefineFontTag(name, bold, italic, &ids, &holder, true);
    }

    CountingIds ids;
    Holder holder;
};

TEST_F(VXFontPublishManagerTags, AreSharedAndBringTheirTextSettings) {
    VXSwfDefineFont2Tag* font = Get("Ab", 2, 0);
    EXPECT_EQ(Get("Ab", 2, 0), font);
    EXPECT_NE(Get("ab", 2, 0), font);
    EXPECT_EQ(ids.last, 2);
    ASSERT_EQ(holder.tags.size(), 4u);
    EXPECT_EQ(holder.tags[0].get(), font);
    EXPECT_EQ(font->GetCharacterId(), 1);
    EXPECT_EQ(font->IsBold(), 2);
    EXPECT_EQ(font->IsItalic(), 0);
    EXPECT_EQ(font->m_FontKind, VXSwfDefineFont2Tag::kGlyphFont);
    EXPECT_EQ(DumpOf(*holder.tags[1]), TagBytes(74, Hex("01 00  50  00 00 00 00  00 00 00 00  00")));
}

TEST_F(VXFontPublishManagerTags, ASecondStyleAnswersWithTheFirst) {
    VXSwfDefineFont2Tag* plain = Get("Ab", 0, 0);
    VXSwfDefineFont2Tag* bold = Get("Ab", 1, 0);
    EXPECT_NE(bold, plain);
    EXPECT_EQ(Get("Ab", 1, 0), plain);
    VXFontPublishManager::RemoveFontTag("Ab", 0, 1);
    EXPECT_EQ(Get("Ab", 1, 0), plain) << "a style that is not there leaves all as it is";
    VXFontPublishManager::RemoveFontTag("Ab", 0, 0);
    EXPECT_EQ(Get("Ab", 1, 0), bold);
}

TEST_F(VXFontPublishManagerTags, ADumpForgetsItsTagWithBoldAndItalicExchanged) {
    for (const short bold : {short{0}, short{1}}) {
        for (const short italic : {short{0}, short{1}}) {
            VXSwfDefineFont2Tag* font = Get("Ab", bold, italic);
            DumpOf(*font);
            VXSwfDefineFont2Tag* next = Get("Ab", bold, italic);
            if (bold == italic) {
                EXPECT_NE(next, font);
            } else {
                EXPECT_EQ(next, font);
            }
            VXFontPublishManager::DoCleanUp();
        }
    }
}

TEST_F(VXFontPublishManagerTags, OnesThatAreGoneCountAsNeverMade) {
    VXSwfDefineFont2Tag* plain = Get("Ab", 0, 0);
    Get("Ab", 1, 0);
    holder.tags.clear();
    EXPECT_FALSE(VXFontTagRegistry::IsLive(plain));
    EXPECT_FALSE(VXFontTagRegistry::IsLive(nullptr));
    // One of these may lie where the first lay.
    std::vector<FontPtr> others;
    for (int i = 0; i < 8; ++i) {
        others.emplace_back(VXFontPublishManager::GetTemporaryDefineFontTag("Cd", 0, 0, nullptr));
    }
    VXSwfDefineFont2Tag* bold = Get("Ab", 1, 0);
    EXPECT_EQ(bold->GetFontName(), VXString("Ab"));
    EXPECT_EQ(Get("Ab", 1, 0), bold);
    holder.tags.clear();
    VXFontPublishManager::RemoveFontTag("Ab", 1, 0);
}

TEST_F(VXFontPublishManagerTags, TemporaryOnesAreNotShared) {
    const FontPtr font(VXFontPublishManager::GetTemporaryDefineFontTag("Ab", 0, 1, &ids));
    EXPECT_EQ(font->GetCharacterId(), 1);
    EXPECT_EQ(font->IsItalic(), 1);
    EXPECT_NE(Get("Ab", 0, 1), font.get());
}

TEST_F(VXFontPublishManagerTags, NullsAreNoIdAndNoInclusion) {
    const FontPtr font(VXFontPublishManager::GetDefineFontTag("Ab", 0, 0, nullptr, nullptr, true));
    EXPECT_EQ(font->GetCharacterId(), 0);
    const FontPtr other(VXFontPublishManager::GetDefineFontTag("Cd", 0, 0, &ids, &holder, false));
    EXPECT_EQ(other->GetCharacterId(), 1);
    EXPECT_TRUE(holder.tags.empty());
}

/// Which font of the system a name and a style find.
class VXFontPublishManagerFonts : public testing::Test {
protected:
    VXFontPublishManagerFonts() {
        engine.families = {
            {{"Fam Bold Italic", "Bold Italic", 3},
             {"Fam Bold", "Bold", 2},
             {"Fam", "Regular", 0},
             {"Fam It", "Italic", 1}},
            {{"Semi Bold", "Bold", 2}, {"Semi", "Regular", 0}},
            {{"Late", "Regular", 0}, {"Late Bold", "Bold", 2}},
            {{"Heavy", "Black", 2}},
            {{"Oblique", "Bold Oblique", 3}},
        };
    }

    std::string Find(const char* name, bool bold, bool italic) {
        CTYFontDict font;
        const bool isThere = VXFontPublishManager::GetFontDict({name, bold, italic, 0}, font);
        EXPECT_EQ(isThere, !font.IsEmpty());
        return FakeTypeEngine::NameOf(font);
    }

    FakeTypeEngine engine;
};

TEST_F(VXFontPublishManagerFonts, AreMembersOrImitations) {
    const struct {
        const char* name;
        const char* plain;
        const char* italic;
        const char* bold;
        const char* both;
    } rows[] = {
        {"Fam", "Fam", "Fam +1", "Fam Bold", "Fam Bold Italic"},
        {"Fam Bold", "Fam Bold", "Fam Bold +1", "Fam Bold", "Fam Bold Italic"},
        {"Semi", "Semi", "Semi +1", "Semi Bold", "Semi Bold +3"},
        {"Late", "Late", "Late +1", "Late Bold", "Late +3"},
        {"Heavy", "Heavy", "Heavy +1", "Heavy +2", "Heavy +3"},
        {"Oblique", "Oblique", "Oblique +1", "Oblique +2", "Oblique +3"},
        {"Nobody", "none", "none", "none", "none"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Find(row.name, false, false), row.plain) << row.name;
        EXPECT_EQ(Find(row.name, false, true), row.italic) << row.name;
        EXPECT_EQ(Find(row.name, true, false), row.bold) << row.name;
        EXPECT_EQ(Find(row.name, true, true), row.both) << row.name;
    }
}

TEST_F(VXFontPublishManagerFonts, AreLookedForOnce) {
    Find("Fam", true, false);
    Find("Fam", true, false);
    EXPECT_EQ(engine.walks, 1);
    CTYFontDict font;
    EXPECT_TRUE(VXFontPublishManager::GetFontDict({"Fam", true, false, 7}, font));
    EXPECT_EQ(engine.walks, 2) << "a variant is a key of its own";
    Find("Nobody", false, false);
    Find("Nobody", false, false);
    EXPECT_EQ(engine.walks, 4) << "what is not there is not remembered";
    VXFontPublishManager::DoCleanUp();
    Find("Fam", true, false);
    EXPECT_EQ(engine.walks, 5);
    const int calls = engine.calls;
    EXPECT_EQ(Find("", false, false), "none");
    EXPECT_EQ(engine.calls, calls);
}

TEST_F(VXFontPublishManagerFonts, CanBePutIntoTheCache) {
    CTYFontDict late;
    CTYFontDict heavy;
    ASSERT_TRUE(VXFontPublishManager::GetFontDict({"Late", false, false, 0}, late));
    ASSERT_TRUE(VXFontPublishManager::GetFontDict({"Heavy", false, false, 0}, heavy));
    const VXTYFontPropStruct key{"Own", true, false, 0};
    VXFontPublishManager::AddFontDict(key, CTYFontDict(), true);
    VXFontPublishManager::AddFontDict({"", false, false, 0}, late, true);
    EXPECT_EQ(Find("Own", true, false), "none");
    VXFontPublishManager::AddFontDict(key, late, false);
    VXFontPublishManager::AddFontDict(key, heavy, false);
    EXPECT_EQ(Find("Own", true, false), "Late");
    EXPECT_EQ(Find("Own", false, false), "none");
    VXFontPublishManager::AddFontDict(key, heavy, true);
    EXPECT_EQ(Find("Own", true, false), "Heavy");
}

TEST_F(VXFontPublishManagerFonts, MeasureAndDrawCharacters) {
    engine.widths = {{'a', 512.5f}};
    CTYFontInstance none;
    EXPECT_EQ(VXFontPublishManager::CharWidth('a', none), 0);
    CTYFontInstance instance = VXFontPublishManager::GetFontInstance("Fam", false, false);
    EXPECT_EQ(VXFontPublishManager::CharWidth('a', instance), 513);
    EXPECT_EQ(VXFontPublishManager::CharWidth('b', instance), 0);
    instance = VXFontPublishManager::GetFontInstance("Fam", false, false, 12.0f);
    EXPECT_EQ(VXFontPublishManager::CharWidth('a', instance), 6);
    EXPECT_TRUE(VXFontPublishManager::GetFontInstance("Nobody", false, false).IsEmpty());

    CTYFontDict font;
    ASSERT_TRUE(VXFontPublishManager::GetFontDict({"Fam", false, false, 0}, font));
    CGFMSharedBezierPath path = GFMNewSharedBezierPath(1024);
    VXString name;
    const int calls = engine.calls;
    EXPECT_FALSE(VXFontPublishManager::GetTextOutlines(0, 1.0f, 1.0f, path, font, name));
    EXPECT_EQ(engine.calls, calls);
    EXPECT_TRUE(VXFontPublishManager::GetTextOutlines('a', 1.0f, 1.0f, path, font, name));
    EXPECT_FALSE(VXFontPublishManager::GetTextOutlines('a', 1.0f, 1.0f, path, CTYFontDict(), name));
}

TEST(VXFontPublishManager, WithoutAnEngineThereAreNoFonts) {
    CTYFontDict font;
    EXPECT_FALSE(VXFontPublishManager::GetFontDict({"DejaVu Sans", false, false, 0}, font));
    CTYFontInstance instance = VXFontPublishManager::GetFontInstance("DejaVu Sans", false, false);
    EXPECT_TRUE(instance.IsEmpty());
    EXPECT_EQ(VXFontPublishManager::CharWidth('a', instance), 0);
}

}  // namespace

#include "support/Test.h"
#include "text/FakeTypeEngine.h"
#include "text/VXFontTagRegistry_p.h"

namespace {

using namespace BND_NT_NMT;
using Manager = VXFontPublishManager;
using FontPtr = std::unique_ptr<VXSwfDefineFont2Tag>;

class CountingIds : public IVXSwfIdGenerator {
public:
    unsigned short GetId(tVXSwfReservedIDEnum) override { return ++last; }
    VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override {
        EXPECT_EQ(reserved, kVXSwfOrdinaryId);
        id = ++last;
        return kVXSuccess;
    }

    unsigned short last = 0;
};

/// Tags that are shared and that a movie owns.
class VXFontPublishManagerTags : public testing::Test, protected IVXSwfTagHolder {
protected:
    ~VXFontPublishManagerTags() override { Manager::DoCleanUp(); }

    void IncludeTag(VXSwfTag* tag, int frame) override {
        EXPECT_EQ(frame, -1);
        tags.emplace_back(tag, &VXSwfTagFactory::DeleteTag);
    }
    VXSwfDefineFont2Tag* Get(const char* name, short bold, short italic) {
        return Manager::GetDefineFontTag(name, bold, italic, &ids, this, true);
    }

    CountingIds ids;
    std::vector<TagPtr> tags;
};

TEST_F(VXFontPublishManagerTags, AreSharedAndBringTheirTextSettings) {
    VXSwfDefineFont2Tag* font = Get("Ab", 2, 0);
    EXPECT_EQ(Get("Ab", 2, 0), font);
    EXPECT_NE(Get("ab", 2, 0), font);
    EXPECT_EQ(ids.last, 2);
    ASSERT_EQ(tags.size(), 4u);
    EXPECT_EQ(tags[0].get(), font);
    EXPECT_EQ(font->GetCharacterId(), 1);
    EXPECT_EQ(font->IsBold(), 2);
    EXPECT_EQ(font->m_FontKind, VXSwfDefineFont2Tag::kGlyphFont);
    EXPECT_EQ(DumpOf(*tags[1]), TagBytes(74, Hex("01 00  50  00 00 00 00  00 00 00 00  00")));
    const FontPtr own(Manager::GetTemporaryDefineFontTag("Ab", 0, 1, &ids));
    EXPECT_EQ(own->GetCharacterId(), 3);
    EXPECT_NE(Get("Ab", 0, 1), own.get()) << "a temporary one is not shared";
    const FontPtr none(Manager::GetDefineFontTag("Cd", 0, 0, nullptr, nullptr, true));
    EXPECT_EQ(none->GetCharacterId(), 0) << "no generator, no ID; no holder, no inclusion";
}

TEST_F(VXFontPublishManagerTags, ASecondStyleAnswersWithTheFirst) {
    VXSwfDefineFont2Tag* plain = Get("Ab", 0, 0);
    VXSwfDefineFont2Tag* bold = Get("Ab", 1, 0);
    EXPECT_NE(bold, plain);
    Manager::RemoveFontTag("Ab", 0, 1);  // a style that is not there leaves all as it is
    EXPECT_EQ(Get("Ab", 1, 0), plain);
    Manager::RemoveFontTag("Ab", 0, 0);
    EXPECT_EQ(Get("Ab", 1, 0), bold);
}

TEST_F(VXFontPublishManagerTags, ADumpForgetsItsTagWithBoldAndItalicExchanged) {
    const std::pair<short, short> styles[] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}};
    for (const auto& [bold, italic] : styles) {
        VXSwfDefineFont2Tag* font = Get("Ab", bold, italic);
        DumpOf(*font);
        EXPECT_EQ(Get("Ab", bold, italic) == font, bold != italic) << bold << italic;
        Manager::DoCleanUp();
    }
}

TEST_F(VXFontPublishManagerTags, OnesThatAreGoneCountAsNeverMade) {
    VXSwfDefineFont2Tag* plain = Get("Ab", 0, 0);
    Get("Ab", 1, 0);
    tags.clear();
    EXPECT_FALSE(VXFontTagRegistry::IsLive(plain));
    EXPECT_FALSE(VXFontTagRegistry::IsLive(nullptr));
    std::vector<FontPtr> others;  // one of these may lie where the first lay
    for (int i = 0; i < 8; ++i) others.emplace_back(Manager::GetTemporaryDefineFontTag("Cd", 0, 0, nullptr));
    VXSwfDefineFont2Tag* bold = Get("Ab", 1, 0);
    EXPECT_EQ(bold->GetFontName(), VXString("Ab"));
    EXPECT_EQ(Get("Ab", 1, 0), bold);
    tags.clear();
    Manager::RemoveFontTag("Ab", 1, 0);
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
        };
    }

    std::string Find(const char* name, bool bold, bool italic) {
        CTYFontDict font;
        const bool isThere = Manager::GetFontDict({name, bold, italic, 0}, font);
        EXPECT_EQ(isThere, !font.IsEmpty());
        return FakeTypeEngine::NameOf(font);
    }

    FakeTypeEngine engine;
};

TEST_F(VXFontPublishManagerFonts, AreMembersOrImitations) {
    const struct {
        const char *name, *plain, *italic, *bold, *both;
    } rows[] = {
        {"Fam", "Fam", "Fam +1", "Fam Bold", "Fam Bold Italic"},
        {"Fam Bold", "Fam Bold", "Fam Bold +1", "Fam Bold", "Fam Bold Italic"},
        {"Semi", "Semi", "Semi +1", "Semi Bold", "Semi Bold +3"},
        {"Late", "Late", "Late +1", "Late Bold", "Late +3"},
        {"Heavy", "Heavy", "Heavy +1", "Heavy +2", "Heavy +3"},
        {"Nobody", "none", "none", "none", "none"},
        {"", "none", "none", "none", "none"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Find(row.name, false, false), row.plain) << row.name;
        EXPECT_EQ(Find(row.name, false, true), row.italic) << row.name;
        EXPECT_EQ(Find(row.name, true, false), row.bold) << row.name;
        EXPECT_EQ(Find(row.name, true, true), row.both) << row.name;
    }
}

TEST_F(VXFontPublishManagerFonts, CanBePutIntoTheCache) {
    CTYFontDict late;
    CTYFontDict heavy;
    ASSERT_TRUE(Manager::GetFontDict({"Late", false, false, 0}, late));
    ASSERT_TRUE(Manager::GetFontDict({"Heavy", false, false, 0}, heavy));
    const VXTYFontPropStruct key{"Own", true, false, 0};
    Manager::AddFontDict(key, CTYFontDict(), true);
    Manager::AddFontDict({"", false, false, 0}, late, true);
    EXPECT_EQ(Find("Own", true, false), "none");
    Manager::AddFontDict(key, late, false);
    Manager::AddFontDict(key, heavy, false);
    EXPECT_EQ(Find("Own", true, false), "Late");
    EXPECT_EQ(Find("Own", false, false), "none");
    Manager::AddFontDict(key, heavy, true);
    EXPECT_EQ(Find("Own", true, false), "Heavy");
}

TEST_F(VXFontPublishManagerFonts, MeasureAndDrawCharacters) {
    engine.widths = {{'a', 512.5f}};
    engine.outlines = {{'a', {{kKVMMove, 1.0f, 2.0f}}}};
    CTYFontInstance none = Manager::GetFontInstance("Nobody", false, false);
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_EQ(Manager::CharWidth('a', none), 0);
    CTYFontInstance instance = Manager::GetFontInstance("Fam", false, false);
    EXPECT_EQ(Manager::CharWidth('a', instance), 513);
    EXPECT_EQ(Manager::CharWidth('b', instance), 0);
    instance = Manager::GetFontInstance("Fam", false, false, 12.0f);
    EXPECT_EQ(Manager::CharWidth('a', instance), 6);

    engine.refusesToShare = true;
    EXPECT_TRUE(Manager::GetFontInstance("Fam", false, false).IsEmpty()) << "no reference, no instance";
    engine.refusesToShare = false;

    CTYFontDict font;
    ASSERT_TRUE(Manager::GetFontDict({"Fam", false, false, 0}, font));
    CGFMSharedBezierPath path = GFMNewSharedBezierPath(1024);
    VXString name;
    EXPECT_FALSE(Manager::GetTextOutlines(0, 1.0f, 1.0f, path, font, name));
    EXPECT_TRUE(Manager::GetTextOutlines('a', 1.0f, 1.0f, path, font, name));
    EXPECT_FALSE(Manager::GetTextOutlines(' ', 1.0f, 1.0f, path, font, name)) << "nothing to append";
    EXPECT_FALSE(Manager::GetTextOutlines('a', 1.0f, 1.0f, path, CTYFontDict(), name));
}

}  // namespace

#include <sys/stat.h>
#include <filesystem>

#include "EngineFixture.h"
#include "support/Test.h"

using namespace BND_NT_NMT;
namespace fs = std::filesystem;

namespace {

/// A machine on which only the fonts of one directory are installed.
class VXFontFiles : public EngineFixture {
protected:
    void SetUp() override {
        m_Serif = FileOf("DejaVu Serif");
        const std::string plain = FileOf("DejaVu Sans"), bold = FileOf("DejaVu Sans Bold");
        std::string name = (fs::temp_directory_path() / "vxfontsXXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_Directory = name;
        fs::create_directory(m_Directory / "fonts");
        fs::copy_file(plain, m_Directory / "fonts/plain.ttf");
        fs::copy_file(bold, m_Directory / "fonts/bold.ttf");
        std::ofstream(m_Directory / "fonts.conf")
            << "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig><dir>"
            << (m_Directory / "fonts").string() << "</dir><cachedir>" << (m_Directory / "cache").string()
            << "</cachedir></fontconfig>";
        setenv("FONTCONFIG_FILE", (m_Directory / "fonts.conf").c_str(), 1);
        EngineFixture::SetUp();
    }
    void TearDown() override {
        EngineFixture::TearDown();
        unsetenv("FONTCONFIG_FILE");
        fs::remove_all(m_Directory);
    }

    fs::path Plain() const { return m_Directory / "fonts/plain.ttf"; }

    fs::path m_Directory;
    fs::path m_Serif;
};

}  // namespace

TEST_F(VXFontFiles, TheListIsMadeOnceAndDroppedWithTheEngine) {
    EXPECT_EQ(TYFamilyListGetNumFams(TYFamilyListNewList(TYFontSetNew())), 1);
    fs::copy_file(m_Serif, m_Directory / "fonts/serif.ttf");
    EXPECT_EQ(TYFamilyListGetNumFams(TYFamilyListNewList(TYFontSetNew())), 1);
    VX_ENGINE(TYTerminateProc)();
    EXPECT_EQ(TYFamilyListGetNumFams(TYFamilyListNewList(TYFontSetNew())), 2);
}

TEST_F(VXFontFiles, AFontThatIsGoneIsListedAndHasNothing) {
    const CTYFontDict font = Font("DejaVu Sans");
    const CTYFontInstance instance = Instance(Font("DejaVu Sans Bold"));
    const float width = Width(instance, u'A');
    fs::resize_file(m_Directory / "fonts/bold.ttf", 100);
    EXPECT_EQ(Width(instance, u'A'), width) << "nothing of the file is mapped";
    EXPECT_GT(Box(instance, u'A').right, 0.0F);

    fs::remove(Plain());
    EXPECT_FALSE(Font("DejaVu Sans").IsEmpty());
    float first = 9, second = 9, third = 9;
    TYFontDictGetHorizontalMetrics(font, first, second, third);
    EXPECT_EQ(first + second + third, 0.0F);
    ASSERT_EQ(mkfifo(Plain().c_str(), 0600), 0);
    EXPECT_TRUE(Instance(font).IsEmpty()) << "and nobody waits for a pipe";
    fs::remove(Plain());
    std::ofstream(Plain()) << "no font";
    EXPECT_TRUE(Instance(font).IsEmpty());

    VX_ENGINE(TYTerminateProc)();
    fs::remove_all(m_Directory / "fonts");
    EXPECT_EQ(TYFamilyListGetNumFams(TYFamilyListNewList(TYFontSetNew())), 0);
}

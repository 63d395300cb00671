#include "text/VXSwfDefineFont2Tag.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "binding/BNDInitialize.h"
#include "platform/GetVXBndAddressProc.h"
#include "support/TagSweep.h"
#include "text/FakeTypeEngine.h"
#include "text/VXFontPublishManager.h"

namespace {

using FontPtr = std::unique_ptr<VXSwfDefineFont2Tag>;

FontPtr NewFont() { return NewTag<VXSwfDefineFont2Tag>(75); }

VXErrorCodeEnum Load(VXSwfDefineFont2Tag& font, const Bytes& body) {
    const Bytes bytes = TagBytes(75, body);
    VXBitStream in = StreamOver(bytes);
    return font.LoadFromStream(in);
}

/// The tag of a font stays raw in a file, so the sweep works on one that was made by code.
void SweepFont(const std::string& what, const Bytes& in, const Bytes& out) {
    SweepRecord(
        what,
        [] {
            const std::shared_ptr<VXSwfDefineFont2Tag> font = NewFont();
            return RecordSweep{[font](VXBitStream& stream) { return font->LoadFromStream(stream); },
                               [font](VXBitStream& stream) { return font->DumpToStream(stream); }};
        },
        TagBytes(75, in), TagBytes(75, out));
}

TEST(VXSwfDefineFont2Tag, DeviceFontsHaveANameAndNoGlyphs) {
    const FontPtr font = NewFont();
    ASSERT_NE(font, nullptr);
    font->SetCharacterId(5);
    EXPECT_EQ(font->CreateDeviceFont("Ab", 0, 0), kVXSuccess);
    EXPECT_EQ(DumpOf(*font), TagBytes(75, Hex("05 00  10 01  02 41 62  00 00  02 00")));
    EXPECT_EQ(font->CreateDeviceFont("\xC3\xA9", 2, -1), kVXSuccess);
    EXPECT_EQ(DumpOf(*font), TagBytes(75, Hex("05 00  13 01  01 C3  00 00  02 00")))
        << "one unit, one of its bytes";
    EXPECT_EQ(font->CreateDeviceFont("@Ab", 0, 0), kVXSuccess);
    EXPECT_EQ(DumpOf(*font), TagBytes(75, Hex("05 00  40 01  03 40 41 62  00 00  02 00"))) << "double-byte";
    EXPECT_EQ(font->CreateDeviceFont(std::string(256, 'x').c_str(), 0, 0), kVXSuccess);
    EXPECT_EQ(DumpOf(*font), TagBytes(75, Hex("05 00  10 01  00  00 00  02 00")))
        << "256 units count as none";
}

TEST(VXSwfDefineFont2Tag, LoadAndDumpAreNotMirrorImages) {
    SweepFont("wide, with layout",
              Hex("05 00  8F 01  02 41 62  01 00  08 00 00 00  0B 00 00 00"
                  "10 10 00"  // a shape with its widths twice
                  "41 00  64 00 FF FF 00 10  0A 00  00  00 00"),
              Hex("05 00  8F 01  02 41 62  01 00  08 00 00 00  0A 00 00 00"
                  "10 00  41 00  D0 07 EC FF 00 40  0A 00  00  00 00"));
    SweepFont(
        "narrow, without layout",
        Hex("05 00  00 02  01 41  02 00  06 00 09 00  0C 00  00 00 00 00 00 00  41 42  03 00  FF FF FF"),
        Hex("05 00  00 02  01 41  02 00  06 00 09 00  0A 00  00 00 00 00  41 42"));
}

TEST(VXSwfDefineFont2Tag, AKerningCountIsWantedInAnyCase) {
    const FontPtr font = NewFont();
    EXPECT_EQ(Load(*font, Hex("05 00  00 01  00  00 00  02 00")), kVXFailure);
    EXPECT_EQ(Load(*font, Hex("05 00  00 01  00  00 00  02 00  03")), kVXFailure);
    EXPECT_EQ(font->m_KerningCount, 0);
    EXPECT_EQ(Load(*font, Hex("05 00  00 01  00  00 00  02 00  03 00  01")), kVXSuccess);
    EXPECT_EQ(font->m_KerningCount, 0);
    EXPECT_EQ(font->m_FontKind, VXSwfDefineFont2Tag::kDeviceFont);
}

TEST(VXSwfDefineFont2Tag, ACountTakesNoMemoryByItself) {
    const FontPtr font = NewFont();
    EXPECT_EQ(Load(*font, Hex("05 00  8C 01  00  FF FF  01 00 00 00")), kVXFailure);
    EXPECT_LE(font->m_OffsetTable.capacity(), 4u);
    EXPECT_EQ(font->m_GlyphShapes.capacity(), 0u);
    EXPECT_EQ(font->m_BoundsTable.capacity(), 0u);
}

TEST(VXSwfDefineFont2Tag, TablesThatAreShortGoOutWithNothingBehindThem) {
    const FontPtr font = NewFont();
    font->m_HasLayout = 1;
    font->m_NumGlyphs = 2;
    font->m_OffsetTable = {7};
    font->m_AdvanceTable = {-1};
    font->m_GlyphShapes.resize(1);
    font->m_GlyphShapes[0].ShapeRecords.Records.push_back(std::make_unique<VXFlintShapeRecord>());
    EXPECT_EQ(DumpOf(*font),
              TagBytes(75, Hex("00 00  8F 01  00  02 00  07 00 00 00 00 00 00 00  0D 00 00 00  00"
                               "00 00 00 00  00 00 00 00 00 00  FF FF 00 00  00 00  00 00")));
}

TEST(VXSwfDefineFont2Tag, CopiesAreWholeAndOnTheirOwn) {
    const FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("Ab", 1, 0), kVXSuccess);
    font->AddGlyphText('x');
    font->SetCharacterId(9);
    const VXSwfDefineFont2Tag copy(*font);
    font->AddGlyphText('y');
    EXPECT_EQ(copy.GetFontName(), VXString("Ab"));
    EXPECT_EQ(copy.GetIndexOfChar('x'), 0);
    EXPECT_EQ(copy.GetIndexOfChar('y'), -1);
    EXPECT_EQ(copy.m_FontKind, VXSwfDefineFont2Tag::kGlyphFont);
    EXPECT_EQ(copy.GetCharacterId(), 9);
}

TEST(VXSwfDefineFont2Tag, WithoutAnEngineGlyphsAreEmpty) {
    const FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("Solo", 0, 0), kVXSuccess);
    for (const char c : {'b', 'a', 'a', 'b'}) font->AddGlyphText(static_cast<unsigned short>(c));
    EXPECT_EQ(
        DumpOf(*font),
        TagBytes(75, Join({Hex("00 00  AC 01  04 53 6F 6C 6F  02 00  0C 00 00 00 10 00 00 00  14 00 00 00"),
                           Hex("10 34 10 00  10 34 10 00  61 00 62 00  00 00 00 00 00 00  00 00 00 00"),
                           // bounds of the em in width, and none in height
                           Bits("10000 0000000000000000 0101000000000000 0000000000000000 0000000000000000"),
                           Bits("10000 0000000000000000 0101000000000000 0000000000000000 0000000000000000"),
                           Hex("00 00")})));
    EXPECT_EQ(font->GetIndexOfChar('b'), 1);
    EXPECT_EQ(font->GetCharWidthW(1), 1024.0);
    EXPECT_EQ(font->GetCharWidthW(2), 0.0);
    EXPECT_EQ(font->GetCharWidthW(-1), 0.0);
}

/// A square of 10 by 20 units on the baseline. A tenth of the em goes, and the fraction is cut off.
const std::vector<FakeTypeEngine::Point> kSquare = {{kKVMMove, 102.9f, -20.0f}, {kKVMLine, 112.9f, -20.0f},
                                                    {kKVMLine, 112.9f, 0.0f},   {kKVMLine, 102.9f, 0.0f},
                                                    {kKVMLine, 102.9f, -20.0f}, {kKVMClose, 102.9f, -20.0f}};

const Bytes kSquareRecords = Bits(
    "0001 0000"
    "0 0 1 1 0 1 00000 1"
    "0 0 0 0 0 1 01010 0000000000 1001110000"
    "1 1 0111 0 0 011001000"
    "1 1 1000 0 1 0110010000"
    "1 1 0111 0 0 100111000"
    "1 1 1000 0 1 1001110000"
    "000000");

TEST(VXSwfDefineFont2Tag, GlyphsComeFromTheEngine) {
    FakeTypeEngine engine;
    engine.families = {{{"Solo", "Book", 0}}};
    engine.widths = {{' ', 256.5f}, {'a', 512.4f}};
    engine.outlines = {{'a', kSquare}, {'\n', kSquare}};
    const FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("Solo", 0, 0), kVXSuccess);
    for (const char c : {'a', ' ', '\n'}) font->AddGlyphText(static_cast<unsigned short>(c));
    const Bytes head = Hex("00 00  AC 01  04 53 6F 6C 6F");
    const Bytes empty = Hex("10 34 10 00");
    const Bytes metrics = Hex("00 50 00 14 00 00");  // the em, a quarter of it, and none, in twips
    const Bytes boundsOfEm =
        Bits("10001 00000000000000000 00101000000000000 00000000000000000 01000110000000000");
    const Bytes boundsOfSquare = Bits("01010 0000001010 0011010010 1001110000 0000000000");
    const Bytes tables = Join({Hex("03 00  10 00 00 00 14 00 00 00 18 00 00 00  28 00 00 00"), empty, empty,
                               kSquareRecords, Hex("0A 00 20 00 61 00"), metrics, Hex("00 00 14 14 00 28"),
                               boundsOfEm, Hex("00"), boundsOfSquare, Hex("00 00")});
    const Bytes expected = TagBytes(75, Join({head, tables}));
    EXPECT_EQ(DumpOf(*font), expected);
    EXPECT_EQ(DumpOf(*font), expected) << "the second dump";
    EXPECT_EQ(font->m_CodeTable.size(), 6u);

    font->AddGlyphText('!');
    DumpOf(*font);
    EXPECT_EQ(font->m_OffsetTable, (std::vector<unsigned int>{20, 24, 28, 32}));
    EXPECT_EQ(font->m_NumGlyphs, 4);
    EXPECT_EQ(font->m_CodeTable[3], '\n') << "codes and advances of earlier dumps stand in front";
    EXPECT_EQ(font->m_AdvanceTable.size(), 10u);
}

TEST(VXSwfDefineFont2Tag, AdvancesKeepTheirLowBits) {
    FakeTypeEngine engine;
    engine.families = {{{"Solo", "Book", 0}}};
    engine.widths = {{'a', 3300.0f}, {'b', 1e30f}};
    const FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("Solo", 0, 0), kVXSuccess);
    font->AddGlyphText('a');
    font->AddGlyphText('b');
    DumpOf(*font);
    EXPECT_EQ(font->m_AdvanceTable[0], 66000 - 65536);
    EXPECT_EQ(font->m_AdvanceTable[1], -1);
}

TEST(VXSwfDefineFont2Tag, ATabHasTheBoundsOfTheGlyphBeforeIt) {
    FakeTypeEngine engine;
    engine.families = {{{"Solo", "Book", 0}}};
    engine.outlines = {{1, kSquare}};
    const FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("Solo", 0, 0), kVXSuccess);
    font->AddGlyphText('\t');
    font->AddGlyphText(1);
    DumpOf(*font);
    EXPECT_EQ(font->m_BoundsTable[1].YMin, -20.0);
    EXPECT_EQ(font->m_GlyphShapes[1].ShapeRecords.Records.size(), 2u);
}

#ifdef VX_HAVE_TYPE_ENGINE

VXBndProc FindOlder(const char* name) {
    const std::string_view wanted = name;
    const bool isNewer = wanted.ends_with("V2") || wanted.ends_with("V3") || wanted.ends_with("V4");
    const bool hasOlder = wanted.starts_with("TYFontDictGet") || wanted.ends_with("InstanceProcV4") ||
                          wanted.ends_with("InstanceCPProcV3");
    return isNewer && hasOlder ? nullptr : GetVXBndAddressProc()(name);
}

/// A glyph font of an installed font, as a dump writes it.
Bytes DumpInstalled(VXBndAddressProc procedure, short bold, short italic) {
    BNDInitialize(procedure);
    const FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("DejaVu Sans", bold, italic), kVXSuccess);
    for (unsigned short c = ' '; c < 0x100; ++c) font->AddGlyphText(c);
    const Bytes bytes = DumpOf(*font);
    VXFontPublishManager::DoCleanUp();
    const auto countHandles = reinterpret_cast<std::int32_t (*)()>(procedure("TYTestLiveHandleCount"));
    EXPECT_EQ(countHandles(), 0);
    BNDTerminate();
    EXPECT_GT(font->GetCharWidthW(font->GetIndexOfChar('A')), 500.0);
    EXPECT_GT(
        font->m_GlyphShapes[static_cast<std::size_t>(font->GetIndexOfChar('A'))].ShapeRecords.Records.size(),
        8u);
    EXPECT_EQ(font->m_Ascent, 1024);
    EXPECT_GT(font->m_Descent, 200);
    return bytes;
}

TEST(VXSwfDefineFont2Tag, InstalledFontsGiveTheirOutlines) {
    const Bytes plain = DumpInstalled(GetVXBndAddressProc(), 0, 0);
    EXPECT_NE(plain, DumpInstalled(GetVXBndAddressProc(), 1, 0));
    EXPECT_NE(plain, DumpInstalled(GetVXBndAddressProc(), 0, 1));
    EXPECT_EQ(plain, DumpInstalled(&FindOlder, 0, 0)) << "both generations of the engine say the same";
}

#endif

}  // namespace

#include "support/GoldenMovie.h"

#include <memory>
#include <string>

#include "platform/CVXStreamReadWrite.h"
#include "support/TagSets.h"
#include "vxswf.h"

namespace {

const Bytes kUnitMatrix = Hex("00");
const Bytes kFullMatrix = Bits("1 00011 010 001  1 00010 01 11  00100 0101 1011");
const Bytes kActions = Hex("07  96 03 00 61 62 63  00");

/// One style for every kind of fill and one for a type that nobody knows.
Bytes FillStyles(const Bytes& color) {
    const Bytes gradient = Join({Hex("02 00"), color, Hex("FF"), color});
    Bytes styles = Join({Hex("08"), Hex("00"), color, Hex("10"), kFullMatrix, gradient, Hex("12"),
                         kUnitMatrix, gradient, Hex("13")});
    for (unsigned char type = 0x40; type < 0x44; ++type) {
        styles = Join({styles, Bytes{type}, Word(9), kUnitMatrix});
    }
    return styles;
}

/// A shape of a type with both kinds of edges, styles of every kind and, where it may have them, new styles.
Bytes Shape(unsigned int type, unsigned int id) {
    const Bytes color = type >= 32 ? Hex("10 20 30 80") : Hex("10 20 30");
    const Bytes lines = type == 83 ? Join({Hex("02  14 00 00 00"), color, Hex("14 00 20 00 03 00"), color})
                                   : Join({Hex("01  14 00"), color});
    const Bytes rectangle = Bits("00010 01 10 11 01");
    const Bytes bounds = type == 83 ? Join({rectangle, rectangle, Hex("00")}) : rectangle;
    const std::string edges =
        "0 01111 00011 010 110 001 010 1"  // a move to (2, -2), fills 1 and 2, line 1
        "1 1 0010 1 0101 1010"             // any direction
        "1 1 0010 0 1 0101"                // down
        "1 1 0010 0 0 1011"                // left
        "1 0 0010 0001 0010 1101 1110";    // a curve
    const Bytes newStyles = Join({Bits(edges + "0 10000"), FillStyles(color), lines, Hex("41")});
    return TagBytes(type, Join({Word(id), bounds, FillStyles(color), lines, Hex("31"),
                                type == 2 ? Bits(edges + "0 00000")
                                          : Join({newStyles, Bits("0 00101 00000 0001  0 00000")})}));
}

Bytes StaticText(unsigned int type, unsigned int id) {
    return TagBytes(type, Join({Word(id), Hex("00"), kUnitMatrix, Hex("04 04"), Hex("8F"), Word(12),
                                Hex(type == 33 ? "01 02 03 04" : "01 02 03"),
                                Hex("05 00 06 00 F0 00  02 1234"), Hex("80 01 56"), Hex("00")}));
}

Bytes Button() {
    const Bytes filters = Join({Hex("05"), Hex("01"), Repeat(9, 1), Hex("04 00"), Repeat(19, 2),
                                Hex("05 00 00"), Repeat(13, 3), Hex("00"), Repeat(23, 4), Hex("09")});
    const Bytes records =
        Join({Hex("0F 01 00 02 00"), kFullMatrix, Bits("1 1 0011 001 010 011 111 001 010 011 111"),
              Hex("31 02 00 03 00"), kUnitMatrix, Hex("00"), filters, Hex("01"), Hex("00")});
    const Bytes first = Join({Hex("08 80"), kActions});
    return TagBytes(
        34, Join({Word(21), Hex("01"), Word(static_cast<unsigned int>(records.size()) + 2), records,
                  Word(static_cast<unsigned int>(first.size()) + 2), first, Hex("00 00 00 02"), kActions}));
}

Bytes Placements() {
    const Bytes cxForm = Bits("1 1 0011 001 010 011 111 001 010 011 111");
    const Bytes clipActions = Join({Hex("00 00  0001"), Hex("00 01 08 00 00 00"), kActions,
                                    Hex("01 00 08 00 00 00"), kActions, Hex("00 00 00 00")});
    const Bytes blur = Join({Hex("01 01"), Repeat(9, 7)});
    return Join({TagBytes(4, Join({Word(1), Word(1), kFullMatrix, Bits("1 1 0011 001 010 011 001 010 011")})),
                 TagBytes(26, Join({Hex("FE"), Word(2), Word(30), kFullMatrix, cxForm, Hex("05 00"),
                                    Text("button_mc"), Word(3), clipActions})),
                 TagBytes(70, Join({Hex("DE 0B"), Word(4), Text("Class"), Word(21), kFullMatrix, cxForm,
                                    Hex("06 00"), Word(5), blur, Hex("01"), clipActions}))});
}

Bytes Sprites() {
    const Bytes inner = Sprite(31, 1, Join({Placement(2), kShowFrame, TagBytes(12, kActions)}));
    return Sprite(30, 2,
                  Join({Shape(22, 32), inner, Placement(31), kShowFrame, TagBytes(5, Hex("1F 00 01 00")),
                        TagBytes(777, Hex("AB")), kShowFrame}));
}

Bytes Sounds() {
    const Bytes info = Join({Hex("0F  01 00 00 00  02 00 00 00  03 00  02"), Repeat(16, 5)});
    return TagBytes(17, Join({Word(21), Word(14), info, Hex("00 00"), Word(14), Hex("20"), Hex("00 00")}));
}

}  // namespace

void BuildTags(VXSwfTagSet& movie) {
    const auto add = [&movie](auto tag, unsigned short id) {
        tag->SetCharacterId(id);
        movie.IncludeTag(tag.release(), -1);
    };
    auto lossless = NewTag<VXSwfDefineBitsLossless2Tag>(36);
    const unsigned char pixels[64] = {9, 8, 7, 255};
    VXIgnore(lossless->CreateImage(VXImage(4, 4, pixels), kVXBitmapQualityPalette));
    add(std::move(lossless), 9);
    auto jpeg = NewTag<VXSwfDefineBitsJpegTag>(35);
    CVXStreamReadWrite picture("\xFF\xD8\xFF\xD9", 4);
    VXIgnore(jpeg->SetJpegData(&picture));
    const unsigned char alpha[16] = {1, 2, 3};
    VXIgnore(jpeg->SetAlphaData(alpha, sizeof alpha));
    add(std::move(jpeg), 13);
    auto sound = NewTag<VXSwfDefineSoundTag>(14);
    const Bytes frame = Join({Hex("FF F3 10 00"), Repeat(22, 0)});  // 8 kbit/s at 22 kHz
    const Bytes frames = Join({frame, frame});
    CVXStreamReadWrite mp3(frames.data(), frames.size());
    sound->IncludeMP3Sound(&mp3, 2);
    add(std::move(sound), 14);
    auto font = NewTag<VXSwfDefineFont2Tag>(75);
    VXIgnore(font->CreateGlyphFont("Golden", 0, 0));
    for (const unsigned short c : {u'a', u'b'}) font->AddGlyphText(c);
    add(std::move(font), 12);
    auto shape = NewTag<VXSwfDefineShapeTag>(83);
    shape->SetLineStyle({1, 2, 3, 0, 255}, 2, 0, kVXStrokeDash, 0, kVXJoinMiter);
    shape->StartPath(0, 0, 1);
    shape->AddStraightEdge(0, 0, 30, 40);
    shape->AddCurvedEdge(30, 40, 50, 40, 60, 20, 30, 0);
    shape->EndShape();
    add(std::move(shape), 15);
    auto button = NewTag<VXSwfDefineButton2Tag>(34);
    button->CreateButtonRecord(1, 1, 1, 1, 15, 1);
    button->AddButtonAction(new VXFlintButtonCondAction);
    add(std::move(button), 16);
    auto actions = NewTag<VXSwfDoActionTag>(12);
    VXIgnore(actions->PushActionRecord(new VXFlintActionRecord(7)));
    add(std::move(actions), 0);
    auto special = NewTag<VXSwfVXSpecialTag>(996);
    VXIgnore(special->SetSpecificData(alpha, sizeof alpha));
    add(std::move(special), 0);
    TagPtr name = MakeTag(88, 0);
    VXIgnore(dynamic_cast<VXSwfDefineFontNameTag&>(*name).AddFontInfo(12, "Golden", "nobody"));
    add(std::move(name), 0);
    auto placement = NewTag<VXSwfPlaceObject3Tag>(70);
    auto shadow = std::make_unique<VXFlintFilterShadow>();
    placement->SetStaticEffectVector({shadow.get()});
    static_cast<void>(shadow.release());
    placement->SetName("placed");
    add(std::move(placement), 0);
}

Bytes GoldenMovie(unsigned int version) {
    VXSwfTagSet built;
    BuildTags(built);
    const Bytes editText = Join({Word(20), Hex("00 87 20"), Word(12), Hex("F0 00  01 02 03 FF  10 00  02"),
                                 Repeat(8, 1), Text("variable"), Text("caf\xC3\xA9")});
    return MovieBytes(
        static_cast<unsigned char>(version),
        Join({TagBytes(69, Hex("08 00 00 00")),
              TagBytes(9, Hex("FF FF FF")),
              TagBytes(8, Hex("FF D8 FF D9")),
              TagBytes(6, Join({Word(8), Hex("FF D8 FF D9")})),
              DumpOf(built),
              Shape(2, 1),
              Shape(22, 2),
              Shape(32, 3),
              Shape(83, 4),
              StaticText(11, 10),
              StaticText(33, 11),
              TagBytes(37, editText),
              Button(),
              Sounds(),
              Sprites(),
              TagBytes(59, Join({Word(30), kActions})),
              Placements(),
              TagBytes(12, kActions),
              TagBytes(15, Join({Word(14), Hex("20")})),
              TagBytes(43, Text("label")),
              kShowFrame,
              TagBytes(28, Word(2)),
              TagBytes(5, Join({Word(1), Word(1)})),
              TagBytes(3, Word(1)),
              TagBytes(56, Join({Word(2), Word(30), Text("__Packages.a"), Word(21), Text("b")})),
              TagBytes(76, Join({Word(2), Word(30), Text("Main"), Word(9), Text("Picture")})),
              TagBytes(82, Join({Hex("01 00 00 00"), Text("abc"), Repeat(20, 3)})),
              LongTagBytes(777, Hex("10 20 30")),
              kShowFrame}));
}

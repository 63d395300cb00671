#include "graphics/VXFlintShapeRecords.h"

#include <gtest/gtest.h>

#include "graphics/VXFlintEdgeRecords.h"
#include "graphics/VXFlintShape.h"
#include "graphics/VXFlintShapeStyleChangeRecord.h"
#include "graphics/VXFlintShapeWithStyle.h"
#include "support/Bytes.h"
#include "support/TagSweep.h"

namespace {

/// A list without styles: both widths 0, these records, and an end record.
Bytes ListOf(const std::string& records) { return Bits("0000 0000" + records + "000000"); }

void SweepList(const std::string& what, const std::string& in, const std::string& out) {
    SweepRecordOf<VXFlintShapeRecords>(what, ListOf(in), ListOf(out));
}

void SweepList(const std::string& what, const std::string& records) { SweepList(what, records, records); }

VXFlintShapeRecords Load(const Bytes& bytes) {
    VXFlintShapeRecords records;
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(records.LoadFromStream(in), kVXSuccess);
    return records;
}

template <typename T>
T& RecordAt(VXFlintShapeRecords& list, std::size_t index) {
    return dynamic_cast<T&>(*list.Records.at(index)->Record);
}

Bytes DumpRecord(VXFlintShapeRecordBase& record) {
    VXBitStream out;
    EXPECT_EQ(record.DumpToStream(out), kVXSuccess);
    EXPECT_EQ(out.FlushBits(), kVXSuccess);
    return BytesOf(out);
}

template <typename List>
Bytes DumpList(List& list) {
    VXBitStream out;
    EXPECT_EQ(list.DumpToStream(out), kVXSuccess);
    EXPECT_EQ(out.FlushBits(), kVXSuccess);
    return BytesOf(out);
}

/// A style change with one bitmap fill, of this ID.
std::unique_ptr<VXFlintShapeStyleChangeRecord> ChangeWithBitmap(unsigned short id) {
    auto change = std::make_unique<VXFlintShapeStyleChangeRecord>(1, 1, 0, 1, 0);
    change->StateNewStyles = 1;
    VXFlintFillStyle fill;
    fill.FillStyleType = 65;
    fill.BitmapId = id;
    change->NewFillStyles.AddFillStyle(fill);
    return change;
}

}  // namespace

TEST(VXFlintShapeRecords, EdgesDumpWhatTheyLoad) {
    SweepList("no edge", "");
    SweepList("no length: horizontal, in two bits", "11 0000 0 0 00");
    SweepList("one twip to the right", "11 0000 0 0 01");
    SweepList("two twips up", "11 0001 0 1 110");
    SweepList("both deltas", "11 0011 1 01010 11111");
    SweepList("a curve", "10 0001 011 101 000 001");
    SweepList("a curve without length", "10 0000 00 00 00 00");
    SweepList("the widest field", "11 1111 1 01111111111111111 10000000000000001");
    SweepList("width goes by magnitude, so −4 takes four bits", "11 0001 0 0 100", "11 0010 0 0 1100");
    SweepList("a wide field comes out narrow", "11 0100 1 000001 000000", "11 0000 1 01 00");
    SweepList("a wide curve too", "10 0010 0001 0000 1111 0000", "10 0000 01 00 11 00");
}

TEST(VXFlintShapeRecords, StyleChangesDumpWhatTheyLoad) {
    SweepList("a move to the origin has no width", "0 00001 00000");
    SweepList("a move", "0 00001 00011 011 110");
    SweepList("a wide move comes out narrow", "0 00001 00101 00001 00000", "0 00001 00010 01 00");
    SweepList("indices without width", "0 01110");

    const Bytes indices = Bits("0010 0011  0 01111 00010 01 11  10 01 101  000000");
    SweepRecordOf<VXFlintShapeRecords>("move, fill 0, fill 1, line", indices, indices);
    VXFlintShapeRecords list = Load(indices);
    const auto& change = RecordAt<VXFlintShapeStyleChangeRecord>(list, 0);
    EXPECT_EQ(change.MoveDeltaX, 0.05);
    EXPECT_EQ(change.MoveDeltaY, -0.05);
    EXPECT_EQ(change.FillStyle0, 2u);
    EXPECT_EQ(change.FillStyle1, 1u);
    EXPECT_EQ(change.LineStyle, 5u);
    EXPECT_EQ(change.NewNumFillBits, 2u);
    EXPECT_EQ(change.NewNumLineBits, 3u);
}

TEST(VXFlintShapeRecords, NewStylesBringNewWidths) {
    const Bytes bytes =
        Join({Bits("0001 0001  0 10010 1"),                 // fill index of one bit, then a byte begins
              Hex("01 00 FF 00 00  01 14 00 00 00 FF"),     // one solid fill, one line of a pixel
              Bits("0011 0010  0 01010 101 10  000000")});  // indices of three and two bits
    SweepRecordOf<VXFlintShapeRecords>("", bytes, bytes);
    VXFlintShapeRecords list = Load(bytes);
    ASSERT_EQ(list.Records.size(), 3u);
    EXPECT_EQ(list.NumFillBits, 1u) << "as first read";
    EXPECT_EQ(list.Records[0]->NumFillBits, 3u) << "in force behind it";
    EXPECT_EQ(list.Records[2]->NumLineBits, 2u);
    EXPECT_EQ(RecordAt<VXFlintShapeStyleChangeRecord>(list, 0).NumFillBits, 1u) << "in force for it";
    EXPECT_EQ(RecordAt<VXFlintShapeStyleChangeRecord>(list, 1).FillStyle0, 5u);
}

TEST(VXFlintShapeRecords, FlagsOfTheListReachNewStyles) {
    const Bytes bytes =
        Join({Bits("0000 0000  0 10000"), Hex("FF 01 00 00 11 22 33 44"),      // 255 and a word
              Hex("01 28 00 00 02 11 22 33 44"), Bits("0000 0000  000000")});  // line without a miter
    const Bytes dumped = Join({Bits("0000 0000  0 10000"), Hex("01 00 11 22 33 44"),
                               Hex("01 28 00 06 02 11 22 33 44"), Bits("0000 0000  000000")});
    VXFlintShapeRecords list;
    list.SetAlpha(1);
    list.SetSupports255Plus(1);
    list.SetLineStyle2(1);
    VXBitStream in = StreamOver(bytes);
    ASSERT_EQ(list.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(DumpList(list), dumped);
    EXPECT_EQ(list.Records[1]->UseAlpha, 1);
    list.SetAlpha(0);
    EXPECT_EQ(DumpList(list), dumped);
    EXPECT_EQ(list.Records[1]->UseAlpha, 0)
        << "a dump hands the flags on again, and they reach wrappers only";
}

TEST(VXFlintShapeRecords, FlagsOfAnEdgeSayWhatIsWritten) {
    VXFlintStraightEdgeRecord edge;
    edge.DeltaX = 0.05;
    edge.DeltaY = -0.1;
    EXPECT_EQ(DumpRecord(edge), Bits("11 0000 0 0 01"));
    edge.VertLineFlag = 1;
    EXPECT_EQ(DumpRecord(edge), Bits("11 0001 0 1 110"));
    edge.GeneralLineFlag = 2;
    EXPECT_EQ(DumpRecord(edge), Bits("11 0001 1 001 110"));
    edge.NumBits = 9;
    EXPECT_EQ(DumpRecord(edge), Bits("11 0001 1 001 110"));

    const Bytes fields = Bits("0000 0 0 01");  // behind the bits that chose the class
    VXBitStream in = StreamOver(fields);
    ASSERT_EQ(edge.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(edge.StraightFlag, 1);
    EXPECT_EQ(edge.NumBits, 2u);
    EXPECT_EQ(edge.GeneralLineFlag, 0);
    EXPECT_EQ(edge.DeltaY, -0.1) << "what is not on the wire stays";
}

TEST(VXFlintShapeRecords, DeltasBeyondTheWidthSpoilTheBitsInFront) {
    VXFlintStraightEdgeRecord edge;
    edge.DeltaX = 3276.8;  // 65,536 twips take 18 bits, and four bits say 17 at most
    EXPECT_EQ(DumpRecord(edge), Bits("00 0000 0 0 010000000000000000"));
}

TEST(VXFlintShapeRecords, RecordsWriteWithTheirOwnWidths) {
    VXFlintShapeRecords list;
    list.NumFillBits = 1;
    auto change = std::make_unique<VXFlintShapeStyleChangeRecord>(4, 3, 0, 0, 0);
    change->StateFillStyle1 = 2;  // any but 0 is a set bit
    change->FillStyle1 = 5;
    change->NewNumFillBits = 9;
    list.AddShapeRecord(VXFlintShapeRecord(std::move(change)));
    EXPECT_EQ(DumpList(list), Bits("0001 0000  0 00100 0101"));
    EXPECT_EQ(RecordAt<VXFlintShapeStyleChangeRecord>(list, 0).NewNumFillBits, 4u);
    EXPECT_EQ(list.Records[0]->NumFillBits, 4u);
    EXPECT_EQ(list.Records[0]->NumLineBits, 3u);
}

TEST(VXFlintShapeRecords, LoadAppendsAndKeepsWhatFails) {
    VXFlintShapeRecords list = Load(ListOf("11 0000 0 0 01"));
    const Bytes second = ListOf("0 00001 00000");
    VXBitStream in = StreamOver(second);
    ASSERT_EQ(list.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(list.Records.size(), 4u);
    EXPECT_EQ(list.Records[1]->Kind, VXFlintShapeRecord::kEnd);

    const Bytes cut = Bits("0000 0000  11 0000 0 0 01 10 0000");  // ends behind the width of a curve
    VXBitStream broken = StreamOver(cut);
    EXPECT_EQ(list.LoadFromStream(broken), kVXFailure);
    ASSERT_EQ(list.Records.size(), 6u);
    EXPECT_EQ(list.Records[5]->Kind, VXFlintShapeRecord::kCurvedEdge);
    VXBitStream nothing;
    VXFlintShapeRecords empty;
    EXPECT_EQ(empty.LoadFromStream(nothing), kVXFailure);
    EXPECT_EQ(DumpList(empty), Hex("00"));
}

TEST(VXFlintShapeRecords, TheNextLoadStartsAtTheNextByte) {
    const Bytes bytes = Join({Bits("0000 0000 000000"), Hex("00 00")});
    VXBitStream in = StreamOver(bytes);
    VXFlintShapeRecords list;
    ASSERT_EQ(list.LoadFromStream(in), kVXSuccess);
    unsigned int bits = 1;
    ASSERT_EQ(in.ReadBits(8, bits), kVXSuccess);
    EXPECT_EQ(in.GetPosition(), 3u);
}

TEST(VXFlintShapeRecords, CopiesStandAlone) {
    VXFlintShapeRecords copy;
    const Bytes bytes = Bits("0000 0000  0 00001 00000  11 0000 0 0 01  10 0000 01 00 11 01  000000");
    {
        VXFlintShapeRecords source = Load(bytes);
        source.SetLineStyle2(1);
        copy = Load(ListOf("11 0000 0 1 11"));
        copy = source;
        EXPECT_EQ(copy.Records.size(), 4u);
        EXPECT_NE(copy.Records[1], source.Records[1]);
        EXPECT_NE(copy.Records[1]->Record, source.Records[1]->Record);
        RecordAt<VXFlintStraightEdgeRecord>(source, 1).DeltaX = 77.0;
    }
    EXPECT_EQ(copy.IsLineStyle2, 1);
    VXFlintShapeRecords& same = copy;
    copy = same;
    EXPECT_EQ(DumpList(copy), bytes);
    copy.AddShapeRecord(*copy.Records[3]);
    EXPECT_EQ(copy.Records.size(), 5u);
}

TEST(VXFlintShapeRecord, KindIsNeverTrustedForACast) {
    VXFlintShapeRecord lying(std::make_unique<VXFlintShapeEndRecord>());
    EXPECT_EQ(lying.Kind, VXFlintShapeRecord::kEnd);
    VXFlintIDMap map;
    for (unsigned int kind = 0; kind <= 5; ++kind) {
        lying.Kind = kind;
        VXFlintShapeRecord copy(lying);
        EXPECT_EQ(copy.Kind, kind);
        EXPECT_NE(dynamic_cast<VXFlintShapeEndRecord*>(copy.Record.get()), nullptr);
        copy.UpdateReferenceIDs(&map);
        VXBitStream out;
        EXPECT_EQ(copy.DumpToStream(out), kVXSuccess);
    }
    VXFlintShapeRecord hidden(ChangeWithBitmap(7));
    hidden.Kind = VXFlintShapeRecord::kCurvedEdge;
    hidden.UpdateReferenceIDs(&map);
    EXPECT_TRUE(map.empty()) << "only what is said to be a style change is asked";
}

TEST(VXFlintShapeRecord, WithoutRecordDumpFailsAndACopyIsEmpty) {
    VXFlintShapeRecord none;
    VXBitStream out;
    EXPECT_EQ(none.DumpToStream(out), kVXFailure);
    none.Kind = VXFlintShapeRecord::kStyleChange;
    VXFlintIDMap map;
    none.UpdateReferenceIDs(&map);
    EXPECT_EQ(VXFlintShapeRecord(none).Record, nullptr);

    VXFlintShapeRecords list;
    list.AddShapeRecord(none);
    VXFlintShapeRecords holes = list;
    EXPECT_EQ(holes.DumpToStream(out), kVXFailure);
    holes.Records[0] = nullptr;
    holes.UpdateReferenceIDs(&map);
    EXPECT_EQ(VXFlintShapeRecords(holes).DumpToStream(out), kVXFailure);
}

TEST(VXFlintShapeRecord, SecondLoadReplacesTheRecord) {
    const Bytes bytes = Bits("0 00001 00000  11 0000 0 0 01");
    VXBitStream in = StreamOver(bytes);
    VXFlintShapeRecord record;
    ASSERT_EQ(record.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(record.Kind, VXFlintShapeRecord::kStyleChange);
    EXPECT_EQ(record.IsEdge, 0);
    EXPECT_EQ(record.Record->StateMoveTo, 1) << "the flags as read stand in the base";
    ASSERT_EQ(record.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(record.Kind, VXFlintShapeRecord::kStraightEdge);
    EXPECT_EQ(record.IsEdge, 1);
}

TEST(VXFlintShapeRecords, BitmapsGetNewIdsInStyleChanges) {
    VXFlintShapeWithStyle shape;
    VXFlintFillStyle fill;
    fill.FillStyleType = 64;
    fill.BitmapId = 3;
    shape.AddFillStyle(fill);
    shape.ShapeRecords.AddShapeRecord(VXFlintShapeRecord(std::make_unique<VXFlintStraightEdgeRecord>()));
    shape.ShapeRecords.AddShapeRecord(VXFlintShapeRecord(ChangeWithBitmap(7)));
    shape.ShapeRecords.AddShapeRecord(VXFlintShapeRecord(std::make_unique<VXFlintShapeEndRecord>()));
    shape.UpdateReferenceIDs(nullptr);
    VXFlintIDMap map;
    map.Set(3, 30);
    map.Set(7, 70);
    shape.UpdateReferenceIDs(&map);
    EXPECT_EQ(shape.FillStyles.FillStyles[0].BitmapId, 30);
    EXPECT_EQ(
        RecordAt<VXFlintShapeStyleChangeRecord>(shape.ShapeRecords, 1).NewFillStyles.FillStyles[0].BitmapId,
        70);
}

TEST(VXFlintShape, LoadWantsTheWidthsTwice) {
    const Bytes twice = Bits("0101 0110  0001 0000  0 00100 1  000000");
    const Bytes once = Bits("0001 0000  0 00100 1  000000");
    SweepRecordOf<VXFlintShape>("", twice, once);
    VXFlintShape shape;
    VXBitStream in = StreamOver(twice);
    ASSERT_EQ(shape.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(shape.NumFillBits, 5u);
    EXPECT_EQ(shape.NumLineBits, 6u);
    EXPECT_EQ(shape.ShapeRecords.NumFillBits, 1u);
}

TEST(VXFlintShapeWithStyle, DumpsWhatItLoads) {
    const Bytes plain = Hex("01 00 11 22 33  01 28 00 44 55 66  11 00");
    SweepRecordOf<VXFlintShapeWithStyle>("fills, lines, records", plain, plain);
    const Bytes alpha = Hex("01 00 11 22 33 80  01 28 00 46 00 44 55 66 90  11 00");
    SweepRecordOf<VXFlintShapeWithStyle>("alpha and lines of the second kind", alpha, alpha,
                                         [](VXFlintShapeWithStyle& shape) {
                                             shape.SetAlpha(1);
                                             shape.SetSupports255Plus(1);
                                             shape.SetIsLineStyle2(1);
                                         });
}

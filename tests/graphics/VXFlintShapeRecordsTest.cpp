#include "support/Test.h"

namespace {

/// A list without styles: both widths 0, these records, and an end record.
Bytes ListOf(const std::string& records) { return Bits("0000 0000" + records + "000000"); }

template <typename T>
T& RecordAt(VXFlintShapeRecords& list, std::size_t index) {
    return dynamic_cast<T&>(*list.Records.at(index)->Record);
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

TEST(VXFlintShapeRecords, DumpWhatTheyLoad) {
    const struct {
        const char *what, *in, *out;  // no `out` where it is the same
    } rows[] = {
        {"no record", "", nullptr},
        {"no length: horizontal, in two bits", "11 0000 0 0 00  11 0000 0 0 00", nullptr},
        {"one twip to the right, two up", "11 0000 0 0 01  11 0001 0 1 110", nullptr},
        {"both deltas", "11 0011 1 01010 11111", nullptr},
        {"a curve, and one without length", "10 0001 011 101 000 001  10 0000 00 00 00 00", nullptr},
        {"the widest field", "11 1111 1 01111111111111111 10000000000000001", nullptr},
        {"width goes by magnitude, so −4 takes four bits", "11 0001 0 0 100", "11 0010 0 0 1100"},
        {"a wide field comes out narrow", "11 0100 1 000001 000000", "11 0000 1 01 00"},
        {"a move to the origin has no width, nor have indices", "0 00001 00000  0 01110", nullptr},
        {"a wide move comes out narrow", "0 00001 00101 00001 00000", "0 00001 00010 01 00"},
    };
    for (const auto& row : rows) {
        const Bytes out = ListOf(row.out == nullptr ? row.in : row.out);
        SweepRecordOf<VXFlintShapeRecords>(row.what, ListOf(row.in), out);
    }
    const Bytes indices = Bits("0010 0011  0 01111 00010 01 11  10 01 101  000000");
    SweepRecordOf<VXFlintShapeRecords>("move, fill 0, fill 1, line", indices, indices);
    VXFlintShapeRecords list;
    EXPECT_EQ(LoadInto(list, indices), kVXSuccess);
    const auto& change = RecordAt<VXFlintShapeStyleChangeRecord>(list, 0);
    EXPECT_EQ(change.MoveDeltaY, -0.05);
    EXPECT_EQ(change.FillStyle1, 1u);
    EXPECT_EQ(change.LineStyle, 5u);
}

TEST(VXFlintShapeRecords, NewStylesBringNewWidths) {
    const Bytes bytes =
        Join({Bits("0001 0001  0 10010 1"),                 // fill index of one bit, then a byte begins
              Hex("01 00 FF 00 00  01 14 00 00 00 FF"),     // one solid fill, one line of a pixel
              Bits("0011 0010  0 01010 101 10  000000")});  // indices of three and two bits
    SweepRecordOf<VXFlintShapeRecords>("", bytes, bytes);
    VXFlintShapeRecords list;
    EXPECT_EQ(LoadInto(list, bytes), kVXSuccess);
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
    ASSERT_EQ(LoadInto(list, bytes), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(list), dumped);
    EXPECT_EQ(list.Records[1]->UseAlpha, 1);
    list.SetAlpha(0);
    EXPECT_EQ(BytesOfRecord(list), dumped);
    EXPECT_EQ(list.Records[1]->UseAlpha, 0) << "a dump hands the flags on again, to wrappers only";
}

TEST(VXFlintShapeRecords, FlagsOfAnEdgeSayWhatIsWritten) {
    VXFlintStraightEdgeRecord edge;
    edge.DeltaX = 0.05;
    edge.DeltaY = -0.1;
    EXPECT_EQ(BytesOfRecord(edge), Bits("11 0000 0 0 01"));
    edge.VertLineFlag = 1;
    EXPECT_EQ(BytesOfRecord(edge), Bits("11 0001 0 1 110"));
    edge.GeneralLineFlag = 2;
    edge.NumBits = 9;
    EXPECT_EQ(BytesOfRecord(edge), Bits("11 0001 1 001 110"));
    ASSERT_EQ(LoadInto(edge, Bits("0000 0 0 01")), kVXSuccess);  // behind the bits that chose the class
    EXPECT_EQ(edge.NumBits, 2u);
    EXPECT_EQ(edge.GeneralLineFlag, 0);
    EXPECT_EQ(edge.DeltaY, -0.1) << "what is not on the wire stays";
    edge.DeltaX = 3276.8;  // 65,536 twips take 18 bits, and four bits say 17 at most
    EXPECT_EQ(BytesOfRecord(edge), Bits("00 0000 0 0 010000000000000000")) << "the bits in front are spoilt";
}

TEST(VXFlintShapeRecords, RecordsWriteWithTheirOwnWidths) {
    VXFlintShapeRecords list;
    list.NumFillBits = 1;
    auto change = std::make_unique<VXFlintShapeStyleChangeRecord>(4, 3, 0, 0, 0);
    change->StateFillStyle1 = 2;  // any but 0 is a set bit
    change->FillStyle1 = 5;
    change->NewNumFillBits = 9;
    list.AddShapeRecord(VXFlintShapeRecord(std::move(change)));
    EXPECT_EQ(BytesOfRecord(list), Bits("0001 0000  0 00100 0101"));
    EXPECT_EQ(RecordAt<VXFlintShapeStyleChangeRecord>(list, 0).NewNumFillBits, 4u);
    EXPECT_EQ(list.Records[0]->NumFillBits, 4u);
    EXPECT_EQ(list.Records[0]->NumLineBits, 3u);
}

TEST(VXFlintShapeRecords, LoadAppendsAndKeepsWhatFails) {
    VXFlintShapeRecords list;
    EXPECT_EQ(LoadInto(list, {}), kVXFailure);
    EXPECT_EQ(BytesOfRecord(list), Hex("00"));
    EXPECT_EQ(LoadInto(list, ListOf("11 0000 0 0 01")), kVXSuccess);
    const Bytes more = Join({ListOf("0 00001 00000"), Hex("AA 00")});
    VXBitStream in = StreamOver(more);
    ASSERT_EQ(list.LoadFromStream(in), kVXSuccess);
    unsigned int next = 0;
    EXPECT_EQ(in.ReadBits(8, next), kVXSuccess);
    EXPECT_EQ(next, 0xAAu) << "what follows starts at the next byte";
    EXPECT_EQ(list.Records.size(), 4u);
    EXPECT_EQ(list.Records[1]->Kind, VXFlintShapeRecord::kEnd);
    EXPECT_EQ(LoadInto(list, Bits("0000 0000  11 0000 0 0 01 10 0000")), kVXFailure)
        << "no deltas of a curve";
    ASSERT_EQ(list.Records.size(), 6u);
    EXPECT_EQ(list.Records[5]->Kind, VXFlintShapeRecord::kCurvedEdge);
}

TEST(VXFlintShapeRecords, AFieldThatIsCutStaysAsItWas) {
    using Base = VXFlintShapeRecordBase;
    using Change = VXFlintShapeStyleChangeRecord;
    const struct {
        short Base::*flag;
        unsigned int Change::*field;
        const char* in;
    } rows[] = {{&Base::StateMoveTo, &Change::MoveBits, ""},
                {&Base::StateFillStyle0, &Change::FillStyle0, "AA"},
                {&Base::StateFillStyle1, &Change::FillStyle1, "AA"},
                {&Base::StateLineStyle, &Change::LineStyle, "AA"},
                {&Base::StateNewStyles, &Change::NewNumFillBits, "00 00"}};
    for (const auto& row : rows) {
        Change change(9, 9, 0, 0, 0);
        change.*row.flag = 1;
        change.*row.field = 7;
        EXPECT_EQ(LoadInto(change, Hex(row.in)), kVXFailure);
        EXPECT_EQ(change.*row.field, 7u);
    }
    VXFlintShape shape;
    shape.NumFillBits = shape.ShapeRecords.NumFillBits = 7;
    EXPECT_EQ(LoadInto(shape, {}), kVXFailure);
    EXPECT_EQ(LoadInto(shape.ShapeRecords, {}), kVXFailure);
    EXPECT_EQ(shape.NumFillBits + shape.ShapeRecords.NumFillBits, 14u);
}

TEST(VXFlintShapeRecords, CopiesStandAlone) {
    const Bytes bytes = Bits("0000 0000  0 00001 00000  11 0000 0 0 01  10 0000 01 00 11 01  000000");
    VXFlintShapeRecords source, copy;
    EXPECT_EQ(LoadInto(copy, ListOf("11 0000 0 1 11")), kVXSuccess);
    EXPECT_EQ(LoadInto(source, bytes), kVXSuccess);
    copy = source;
    RecordAt<VXFlintStraightEdgeRecord>(source, 1).DeltaX = 77.0;
    copy = *&copy;
    EXPECT_EQ(BytesOfRecord(copy), bytes);
    copy.AddShapeRecord(*copy.Records[3]);
    EXPECT_EQ(copy.Records.size(), 5u);
    copy.Records.pop_back();  // a leak unless it deletes, as below
    copy.Records.erase(copy.Records.begin());
    copy.Records.resize(2);
    EXPECT_EQ(copy.Records[1]->Kind, VXFlintShapeRecord::kCurvedEdge);
    copy.Records.clear();
}

TEST(VXFlintShapeRecord, KindIsNeverTrustedForACast) {
    VXFlintShapeRecord lying(std::make_unique<VXFlintShapeEndRecord>());
    VXFlintIDMap map;
    VXBitStream out;
    for (unsigned int kind = 0; kind <= 5; ++kind) {
        lying.Kind = kind;
        VXFlintShapeRecord copy(lying);
        EXPECT_EQ(copy.Kind, kind);
        EXPECT_NE(dynamic_cast<VXFlintShapeEndRecord*>(copy.Record), nullptr);
        copy.UpdateReferenceIDs(&map);
        EXPECT_EQ(copy.DumpToStream(out), kVXSuccess);
    }
    VXFlintShapeRecord hidden(ChangeWithBitmap(7));
    hidden.Kind = VXFlintShapeRecord::kCurvedEdge;
    hidden.UpdateReferenceIDs(&map);
    EXPECT_TRUE(map.empty()) << "only what is said to be a style change is asked";

    VXFlintShapeRecord none;
    none.Kind = VXFlintShapeRecord::kStyleChange;
    none.UpdateReferenceIDs(&map);
    VXFlintShapeRecords holes;
    holes.AddShapeRecord(none);
    EXPECT_EQ(holes.DumpToStream(out), kVXFailure) << "no record";
    delete std::exchange(holes.Records[0], nullptr);
    holes.UpdateReferenceIDs(&map);
    EXPECT_EQ(VXFlintShapeRecords(holes).DumpToStream(out), kVXFailure);
}

TEST(VXFlintShape, LoadWantsTheWidthsTwice) {
    const Bytes twice = Bits("0101 0110  0001 0000  0 00100 1  000000");
    SweepRecordOf<VXFlintShape>("", twice, Bits("0001 0000  0 00100 1  000000"));
    VXFlintShape shape;
    ASSERT_EQ(LoadInto(shape, twice), kVXSuccess);
    EXPECT_EQ(shape.NumFillBits, 5u);
    EXPECT_EQ(shape.NumLineBits, 6u);
    EXPECT_EQ(shape.ShapeRecords.NumFillBits, 1u);
}

}  // namespace

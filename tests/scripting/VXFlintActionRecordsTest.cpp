#include "support/Test.h"

namespace {

using List = VXFlintActionRecords;

List ListOf(const char* digits) {
    List list;
    EXPECT_EQ(LoadInto(list, Hex(digits)), kVXSuccess);
    return list;
}

Bytes CodesOf(const List& list) {
    Bytes codes;
    for (const VXFlintActionRecord* record : list) codes.push_back(record->m_ActionCode);
    return codes;
}

// The two forms of a list, packed and not, must not be told apart.
TEST(VXFlintActionRecords, DumpsWhatItLoads) {
    const Bytes bytes = Hex("96 0300 000000 07 80 0000 00");
    SweepRecordOf<List, false>("no action", Hex("00"), Hex("00"));
    SweepRecordOf<List, false>("payloads", bytes, bytes);
    SweepRecordOf<List, false>("bytes behind the end", Hex("07 00 07 00"), Hex("07 00"));
    const List list = ListOf("96 0300 000000 07 80 0000 00");
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(CodesOf(list), Hex("96 07 80"));
    VXBitStream packed, unpacked;
    for (VXBitStream* out : {&packed, &unpacked}) ASSERT_EQ(out->WriteBits(5, 3), kVXSuccess);
    ASSERT_EQ(ListOf("96 0300 000000 07 80 0000 00").DumpToStream(packed), kVXSuccess);
    ASSERT_EQ(list.DumpToStream(unpacked), kVXSuccess);
    EXPECT_EQ(BytesOf(packed), Join({Hex("A0"), bytes})) << "pending bits go out first";
    EXPECT_EQ(BytesOf(unpacked), Join({Hex("A0"), bytes}));
}

TEST(VXFlintActionRecords, ReadsWhereTheStreamStands) {
    const Bytes bytes = Hex("FF 07 00 17 00 AA");
    VXBitStream in = StreamOver(bytes);
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    in.SetOutputStream(&target);
    unsigned int bits = 0;
    ASSERT_EQ(in.ReadBits(3, bits), kVXSuccess);
    List list;
    ASSERT_EQ(list.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(in.GetRemaining(), 3u);
    ASSERT_EQ(list.LoadFromStream(in), kVXSuccess) << "a second load appends";
    EXPECT_EQ(in.GetRemaining(), 1u);
    EXPECT_EQ(BytesOfRecord(list), Hex("07 17 00"));
    const std::pair<const char*, const char*> cuts[] = {
        {"", "00"}, {"07 17", "07 17 00"}, {"07 96 03", "07 00"}, {"07 96 0300 AA", "07 96 0300 AA0000 00"}};
    for (const auto& [cut, dumped] : cuts) {
        List kept;
        EXPECT_EQ(LoadInto(kept, Hex(cut)), kVXFailure) << cut;
        EXPECT_EQ(BytesOfRecord(kept), Hex(dumped)) << "without its end a list keeps what was read";
    }
}

TEST(VXFlintActionRecords, CopiesShareTheirActions) {
    List list = ListOf("96 0100 61 07 00");
    List copy(list);
    int delta = 0;
    EXPECT_NE((*copy.begin())->ReplaceString("a", "b", delta), 0);
    EXPECT_EQ(BytesOfRecord(list), Hex("96 0100 62 07 00"));
    auto* extra = new VXFlintActionRecord(0x17);
    list.PushActionRecord(extra);
    list.PushActionRecord(extra);
    list.PushActionRecord(nullptr);
    EXPECT_EQ(CodesOf(copy), Hex("96 07"));
    copy = list;
    copy = *&copy;
    list = List();
    EXPECT_EQ(CodesOf(copy), Hex("96 07 17 17")) << "one action may stand twice";
    list = std::move(copy);
    EXPECT_EQ(CodesOf(list), Hex("96 07 17 17"));
    EXPECT_TRUE(copy.empty());
}

TEST(VXFlintActionRecords, CopyClonesAndKeepsOneEnd) {
    const auto listOf = [](const Bytes& codes) {
        List list;
        for (const unsigned char code : codes) list.PushActionRecord(new VXFlintActionRecord(code));
        return list;
    };
    const struct {
        const char* what;
        Bytes list, source;
        short beforeEnd;
        Bytes result;
    } rows[] = {
        {"in front of the end", Hex("07 00"), Hex("17 00 18 00"), 1, Hex("07 17 18 00")},
        {"without an end all goes behind", Hex("07"), Hex("17 00"), 1, Hex("07 17 00")},
        {"an empty list takes all", Hex(""), Hex("17 00"), 1, Hex("17 00")},
        {"behind the end when not asked", Hex("07 00"), Hex("17 00"), 0, Hex("07 00 17 00")},
    };
    for (const auto& row : rows) {
        List list = listOf(row.list);
        list.Copy(listOf(row.source), row.beforeEnd);
        EXPECT_EQ(CodesOf(list), row.result) << row.what;
    }
    List self = listOf(Hex("07 00"));
    self.Copy(self, 1);
    EXPECT_EQ(CodesOf(self), Hex("07 07 00")) << "into itself";
    List source = ListOf("96 0100 61 00");
    List list = ListOf("07 00");
    list.Copy(source, 0);
    (*source.begin())->m_ActionData[0] = 0x7A;
    EXPECT_EQ(BytesOfRecord(list), Hex("07 96 0100 61 00"));
}

TEST(VXFlintActionRecords, InsertsACallAtTheEnd) {
    List list;
    list.InsertCallFunction("f", 5);
    EXPECT_EQ(BytesOfRecord(list), Hex("96 0D00 07 05000000 07 01000000 00 66 00 3D 17 00"));
    list = ListOf("07 00");
    list.InsertCallFunction("\xC3\xA9", -2);
    EXPECT_EQ(BytesOfRecord(list), Hex("07 96 0D00 07 FEFFFFFF 07 01000000 00 C3 00 3D 17 00"))
        << "Kept: a byte for each 16-bit unit of the name";
}

}  // namespace

#include "support/Test.h"

namespace {

using Record = VXFlintActionRecord;
using std::string;

Bytes TextBytes(const string& text) { return {text.begin(), text.end()}; }

Record PushOf(const Bytes& payload) {
    Record record(0x96);
    record.SetData(payload.data(), static_cast<unsigned int>(payload.size()));
    return record;
}

TEST(VXFlintActionRecord, DumpsWhatItLoads) {
    SweepRecordOf<Record, false>("the greatest code without a payload", Hex("7F 0100 AA"), Hex("7F"));
    SweepRecordOf<Record, false>("the least code with a payload", Hex("80 0300 AABBCC"),
                                 Hex("80 0300 AABBCC"));
    SweepRecordOf<Record, false>("a payload of no bytes", Hex("96 0000"), Hex("96 0000"));
    SweepRecordOf<Record, false>("zeros stand for what is cut", Hex("96 0500 AABB"),
                                 Hex("96 0500 AABB000000"));
    SweepRecordOf<Record, false>("a cut to nothing", Hex("96 FDFF"), Join({Hex("96 FDFF"), Bytes(65533)}));
    Record record = PushOf(Hex("AABB"));
    for (const char* bytes : {"", "96", "96 05"})
        EXPECT_EQ(LoadInto(record, Hex(bytes)), kVXFailure) << bytes;
    ASSERT_EQ(LoadInto(record, Hex("07")), kVXSuccess);
    EXPECT_EQ(record.m_Length, 0);
    EXPECT_NE(record.m_ActionData, nullptr) << "the payload of another action stays";
    record = Record(0x87);
    record.m_Length = 9;
    EXPECT_EQ(BytesOfRecord(record), Hex("87 0900 000000000000000000")) << "without a payload it is zeros";
    const Bytes data = Hex("FF 96 FFFF AA");
    VXBitStream in = StreamOver(data);
    unsigned int bits = 0;
    ASSERT_EQ(in.ReadBits(3, bits), kVXSuccess);
    ASSERT_EQ(record.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(record.m_ActionCode, 0x96) << "pending bits are dropped";
    EXPECT_EQ(record.m_ActionData.GetSize(), 1u) << "memory for the bytes present, not for the length";
}

TEST(VXFlintActionRecord, SetDataTakesAnyBytes) {
    Record record(0x96);
    EXPECT_EQ(record.m_ActionData, nullptr);
    record.SetData(nullptr, 3);
    EXPECT_EQ(BytesOfRecord(record), Hex("96 0300 000000"));
    record.SetData(nullptr, 0);
    EXPECT_NE(record.m_ActionData, nullptr);
    record = PushOf(Hex("AABBCCDD"));
    record.SetData(record.m_ActionData + 1, 2);
    EXPECT_EQ(BytesOfRecord(record), Hex("96 0200 BBCC")) << "from its own payload";
    record.m_Length = 9;
    record.SetData(record.m_ActionData + 1, record.m_Length);
    EXPECT_EQ(BytesOfRecord(record), Hex("96 0900 CC0000000000000000")) << "which holds less than it states";
    record.SetData(Repeat(65539, 0xEE).data(), 65539);
    EXPECT_EQ(BytesOfRecord(record), Hex("96 0300 EEEEEE")) << "Kept: the length is cut to 16 bits";
}

TEST(VXFlintActionRecord, CopiesShareAndClonesDoNot) {
    Record record = PushOf(Hex("AABB"));
    Record copy(record);
    copy = static_cast<const Record&>(copy);
    const std::unique_ptr<Record> clone(record.Copy());
    record.m_ActionData[0] = 0x11;
    EXPECT_EQ(BytesOfRecord(*clone), Hex("96 0200 AABB"));
    record.Clean();
    EXPECT_EQ(record.m_ActionData, nullptr);
    EXPECT_EQ(record.m_Length, 2);
    EXPECT_EQ(BytesOfRecord(copy), Hex("96 0200 11BB"));
    const std::unique_ptr<Record> bare(Record(0x07).Copy());
    EXPECT_NE(bare->m_ActionData, nullptr) << "Kept: a clone has an array where its source has none";
}

TEST(VXFlintActionRecord, ParseReadsTheLengthAlone) {
    Record record = PushOf(Hex("AABB"));
    const Bytes data = Hex("0300 AABBCC");
    VXBitStream in = StreamOver(data);
    EXPECT_EQ(record.Parse(&in), 1);
    EXPECT_EQ(in.GetPosition(), 2u);
    ASSERT_EQ(record.m_ActionData.GetSize(), 3u);
    EXPECT_EQ(Bytes(&record.m_ActionData[0], &record.m_ActionData[3]), Hex("000000"));
    EXPECT_EQ(BytesOfRecord(record), Hex("96 0000"));
    record.m_ActionCode = 0x07;
    EXPECT_EQ(record.Parse(&in), 1);
    EXPECT_EQ(record.m_ActionData, nullptr);
    EXPECT_EQ(in.GetPosition(), 2u);
    EXPECT_EQ(record.Parse(nullptr), 1);
}

TEST(VXFlintActionRecord, ReplacesStrings) {
    const struct {
        const char* what;
        string payload, from, to, result;
    } rows[] = {
        {"every occurrence", "ab-ab", "ab", "xyz", "xyz-xyz"},
        {"neighbours, one a pass", "ababab", "ab", "x", "xxx"},
        {"by nothing", "xaxbx", "x", "", "ab"},
        {"what a replacement has made", "aabb_", "ab", "", "aabb_"},
        {"Kept: a byte that ends a partial match begins none", "aab", "ab", "x", "aab"},
        {"an empty string is nowhere", "ab", "", "x", "ab"},
        {"longer than the payload", "ab", "abc", "x", "ab"},
        {"zeros behind a hit", string("ab\0ab\0", 6), "ab", "q", string("q\0q\0", 4)},
        {"Kept: a zero behind a hit takes the next byte along", string("cb\0ccb", 6), "cb", "cy",
         string("cy\0ccy", 6)},
        {"Kept: outside ASCII nothing is found", "a\xC3\xA9", "\xC3\xA9", "x", "a\xC3\xA9"},
        {"Kept: as many bytes as there are units", "ab", "ab", "\xC3\xA9z", "\xC3\xA9"},
        {"Kept: nor does the byte behind a hit", "aba_b", "ab", "x", "xa_b"},
        {"a text that brings itself takes one pass over every hit", "abab", "ab", "abab", "abababab"},
        {"whatever lies behind a hit", string("\3\0mc\0mcA\0mcB\0", 13), "mc", "mc2",
         string("\3\0mc2\0mc2A\0mc2B\0", 16)},
        {"passes meet what earlier ones joined", "xaxbbx", "xbb", "b", "xabx"},
    };
    for (const auto& row : rows) {
        Record record = PushOf(TextBytes(row.payload));
        int delta = 77;
        const bool isRewritten = row.payload != row.result || row.from == row.to;
        EXPECT_EQ(record.ReplaceString(row.from.c_str(), row.to.c_str(), delta), isRewritten ? 1 : 0)
            << row.what;
        EXPECT_EQ(BytesOfRecord(record), BytesOfRecord(PushOf(TextBytes(row.result)))) << row.what;
        EXPECT_EQ(delta, static_cast<int>(row.result.size()) - static_cast<int>(row.payload.size()))
            << row.what;
    }
}

TEST(VXFlintActionRecord, ReplacingEndsAtTheGreatestLength) {
    Record record = PushOf(Join({Hex("61 2D 61 2D 61"), Repeat(65525, 0x2E)}));
    int delta = 0;
    EXPECT_NE(record.ReplaceString("a", "1234", delta), 0);
    EXPECT_EQ(delta, 3);
    EXPECT_EQ(BytesOfRecord(record), Join({Hex("96 FDFF 31323334 2D 61 2D 61"), Repeat(65525, 0x2E)}));
    EXPECT_EQ(record.ReplaceString("a", "12345", delta), 0);
    record = PushOf(TextBytes("babbbaabbbb"));
    EXPECT_NE(record.ReplaceString("ab", "bbaa", delta), 0);
    EXPECT_GT(record.m_Length, 65535 - 2) << "every replacement makes room for others";

    record = PushOf(TextBytes("ab"));
    const Record copy(record);
    record.m_Length = 4;
    EXPECT_NE(record.ReplaceString("ab", "xyz", delta), 0);
    EXPECT_EQ(delta, 1);
    EXPECT_EQ(BytesOfRecord(record), Hex("96 0500 78797A 0000")) << "the rest of a payload that was cut";
    EXPECT_EQ(BytesOfRecord(copy), Hex("96 0200 6162"));
    EXPECT_EQ(Record(0x96).ReplaceString("a", "b", delta), 0);
}

}  // namespace

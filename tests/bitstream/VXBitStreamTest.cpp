#include "support/Test.h"

namespace {

unsigned int ReadField(VXBitStream& in, unsigned int count) {
    unsigned int value = 0xDEADBEEF;
    EXPECT_EQ(in.ReadBits(count, value), kVXSuccess);
    return value;
}

Bytes Written(const std::function<void(VXBitStream&)>& write) {
    VXBitStream out;
    write(out);
    EXPECT_EQ(out.FlushBits(), kVXSuccess);
    return BytesOf(out);
}

/// A copy never grows, so it shows where the capacity ends.
unsigned int CapacityOf(const VXBitStream& stream) {
    unsigned int capacity = stream.GetSize();
    for (unsigned int step = 1u << 20; step != 0; step /= 2) {
        VXBitStream copy = stream;
        if (copy.EnsureSize(capacity + step) != 0) capacity += step;
    }
    return capacity;
}

TEST(VXBitStreamRead, BitsRunFromTheTopAndByteReadsDropTheRest) {
    const Bytes bytes = Join({Bits("10110 111"), Hex("C3 34 12 78 56 34 12"), Bits("101 01100"), Hex("EE")});
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(ReadField(in, 0), 0u);
    EXPECT_EQ(ReadField(in, 5), 0b10110u);
    EXPECT_EQ(ReadField(in, 0), 0u);
    unsigned char byte = 0;
    unsigned short word = 0;
    unsigned int dword = 0;
    EXPECT_EQ(in.ReadByte(byte) + in.ReadWord(word) + in.ReadDWord(dword), kVXSuccess);
    EXPECT_EQ(byte, 0xC3);
    EXPECT_EQ(word, 0x1234);
    EXPECT_EQ(dword, 0x12345678u);
    ReadField(in, 3);
    unsigned int length = 1;
    EXPECT_EQ(in.Read(&byte, length), kVXSuccess);
    EXPECT_EQ(byte, 0xEE);
    EXPECT_EQ(ReadField(in, 5), 0b01100u) << "raw reads leave pending bits";
}

TEST(VXBitStreamRead, FieldsOfEveryWidthComeBackFromEveryOffset) {
    for (unsigned int offset = 0; offset < 8; ++offset) {
        for (unsigned int width = 1; width <= 32; ++width) {
            const unsigned int value = 0xA5C3E197u >> (32 - width);
            const Bytes field = Written([=](VXBitStream& out) {
                EXPECT_EQ(out.WriteBits(0, offset), kVXSuccess);
                EXPECT_EQ(out.WriteBits(value, width), kVXSuccess);
                EXPECT_EQ(out.WriteBits(1, 1), kVXSuccess);
            });
            EXPECT_EQ(field.size(), (offset + width + 1 + 7) / 8);
            // Alone, behind others at the end of the data, and with bytes behind it.
            for (const auto& [front, behind] : {std::pair{0u, 0u}, {9u, 0u}, {0u, 8u}}) {
                const Bytes bytes = Join({Repeat(front, 0xFF), field, Repeat(behind, 0xFF)});
                VXBitStream in = StreamOver(bytes);
                EXPECT_EQ(in.SetPosition(front), 1);
                ReadField(in, offset);
                EXPECT_EQ(ReadField(in, width), value) << width << " bits at " << offset;
                EXPECT_EQ(ReadField(in, 1), 1u) << width << " bits at " << offset;
            }
        }
    }
}

TEST(VXBitStreamRead, ShortReadsTakeWhatIsThere) {
    const Bytes three = Hex("01 02 03");
    VXBitStream in = StreamOver(three);
    unsigned int dword = 0xFFFFFFFF;
    EXPECT_EQ(in.ReadDWord(dword), kVXFailure);
    EXPECT_EQ(dword, 0x00030201u);
    EXPECT_EQ(in.SetPosition(2), 1);
    unsigned short word = 0x7777;
    EXPECT_EQ(in.ReadWord(word), kVXFailure);
    EXPECT_EQ(word, 0x7703);
    EXPECT_EQ(in.GetPosition(), 3u);
    EXPECT_EQ(in.ReadWord(word), kVXFailure);
    EXPECT_EQ(word, 0x7703) << "at the end the target stays";
    EXPECT_EQ(in.SetPosition(0), 1);
    for (const int expected : {0x00030201, 0}) {
        int integer = -1;
        EXPECT_EQ(in.ReadVXInt32(integer), kVXSuccess);
        EXPECT_EQ(integer, expected);
    }
    EXPECT_EQ(in.SetPosition(0), 1);
    for (const unsigned int expected : {3u, 0u}) {
        unsigned char target[8] = {};
        unsigned int length = 8;
        EXPECT_EQ(in.Read(target, length), expected != 0 ? kVXSuccess : kVXFailure);
        EXPECT_EQ(length, expected);
    }
}

TEST(VXBitStreamRead, BitsThatAreMissingLeaveAPartialValue) {
    const Bytes bytes = Bits("00000 101 11110000");
    VXBitStream in = StreamOver(bytes);
    ReadField(in, 5);
    unsigned int value = 0;
    EXPECT_EQ(in.ReadBits(12, value), kVXFailure);
    EXPECT_EQ(value, 0b10111110000u);
    short flag = 7;
    EXPECT_EQ(in.ReadVXBool16(flag), kVXFailure);
    EXPECT_EQ(flag, 7);
    int number = 9;
    EXPECT_EQ(in.ReadSBits(4, number), kVXFailure);
    EXPECT_EQ(number, 9);
}

TEST(VXBitStream, SignedFields) {
    const struct {
        int value;
        unsigned int count;
        Bytes bytes;
    } rows[] = {
        {0, 0, {}},
        {-1, 1, Bits("1")},
        {-8, 4, Bits("1000")},
        {5, 4, Bits("0101")},
        {INT_MIN, 32, Hex("80 00 00 00")},
        // Beyond 32 bits the sign has nothing to subtract from, and the low bits count.
        {INT_MIN, 33, Hex("C0 00 00 00 00")},
        {3, 34, Hex("00 00 00 00 C0")},
        {-1, 255, Join({Repeat(31, 0xFF), Hex("FE")})},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Written([&](VXBitStream& out) { VXIgnore(out.WriteSBits(row.value, row.count)); }),
                  row.bytes);
        VXBitStream in = StreamOver(row.bytes);
        int value = 0x5A5A;
        EXPECT_EQ(in.ReadSBits(row.count, value), kVXSuccess);
        EXPECT_EQ(value, row.value) << row.count;
    }
}

TEST(VXBitStreamWrite, PendingBitsGoBeforeBytesAndWordsButNotBeforeRawBytes) {
    const struct {
        const char* what;
        std::function<VXErrorCodeEnum(VXBitStream&)> write;
        Bytes bytes;
    } rows[] = {
        {"a word", [](VXBitStream& out) { return out.WriteWord(0x1234); }, Join({Bits("101"), Hex("34 12")})},
        {"a byte", [](VXBitStream& out) { return out.WriteByte(0x12); }, Join({Bits("101"), Hex("12")})},
        {"raw bytes", [](VXBitStream& out) { return out.Write("\x11", 1u); }, Join({Hex("11"), Bits("101")})},
        {"text", [](VXBitStream& out) { return out.WriteVXString("a"); }, Hex("61 A0 00")},
        // The upper bit of an oversized field is added to the three in front.
        {"0x1F at 4 bits", [](VXBitStream& out) { return out.WriteBits(0x1F, 4); }, Bits("110 1111 0")},
        {"the sum keeps eight bits, later chunks their own",
         [](VXBitStream& out) { return out.WriteBits(0xFFFFF, 13); }, Bits("100 11111 11111111")},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Written([&](VXBitStream& out) {
                      VXIgnore(out.WriteBits(0b101, 3));
                      EXPECT_EQ(row.write(out), kVXSuccess);
                  }),
                  row.bytes)
            << row.what;
    }
}

TEST(VXBitStreamWrite, AnOutputStreamTakesEverythingAndReadsStayInMemory) {
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    const Bytes bytes = Hex("77 88");
    VXBitStream stream = StreamOver(bytes);
    stream.SetOutputStream(&target);
    EXPECT_EQ(stream.WriteBits(0x1FF, 9), kVXSuccess);
    EXPECT_EQ(stream.WriteByte(0x42), kVXSuccess);
    EXPECT_EQ(stream.MovePosition(-4), 1) << "whatever the stream says to it";
    EXPECT_EQ(stream.GetPosition(), 3u);
    EXPECT_EQ(stream.GetSize(), 3u);
    EXPECT_EQ(stream.MovePosition(-2), 1);
    EXPECT_EQ(stream.WriteByte(0x01), kVXSuccess);
    unsigned char byte = 0;
    EXPECT_EQ(stream.ReadByte(byte), kVXSuccess);
    EXPECT_EQ(byte, 0x77);
    EXPECT_EQ(stream.GetRemaining(), 1u);
    EXPECT_EQ(BytesOf(target), Hex("FF 01 42"));
    stream.SetOutputStream(nullptr);
    EXPECT_EQ(stream.GetSize(), 2u);
}

TEST(VXBitStreamWrite, ABorrowedBufferIsNeverPassed) {
    Bytes room(3);
    VXBitStream out = StreamOver(room);
    EXPECT_EQ(out.WriteWord(0x0201), kVXSuccess);
    EXPECT_EQ(out.WriteWord(0x0403), kVXFailure);
    EXPECT_EQ(out.Write("ab", 2u), kVXFailure);
    EXPECT_EQ(out.WriteByte(3), kVXSuccess);
    EXPECT_EQ(out.WriteBits(0xFFFF, 16), kVXSuccess) << "loses the bytes without report";
    EXPECT_EQ(out.WriteBits(1, 1), kVXSuccess);
    EXPECT_EQ(out.FlushBits(), kVXFailure);
    EXPECT_EQ(room, Hex("01 02 03"));
    EXPECT_EQ(out.EnsureSize(3), 1);
    EXPECT_EQ(out.EnsureSize(4), 0);
    EXPECT_EQ(out.SetPosition(4), 0);
}

TEST(VXBitStreamBuffer, GrowsByStepsOrToWhatIsAskedFor) {
    VXBitStream stream;
    EXPECT_EQ(stream.EnsureSize(0), 1);
    EXPECT_EQ(stream.GetBuffer(), nullptr);
    const std::pair<unsigned int, unsigned int> steps[] = {{1, 512}, {513, 1024}, {5000, 5000}};
    for (const auto& [size, capacity] : steps) {
        EXPECT_EQ(stream.EnsureSize(size), 1);
        EXPECT_EQ(CapacityOf(stream), capacity);
    }
    EXPECT_EQ(stream.SetPosition(10), 1);
    EXPECT_EQ(stream.GetSize(), 5000u);
    EXPECT_EQ(stream.MovePosition(-11), 0);
    EXPECT_EQ(stream.MovePosition(9990), 1);
    EXPECT_EQ(BytesOf(stream), Repeat(10000, 0)) << "what a seek uncovers is zero";

    VXBitStream own;
    for (unsigned int i = 0; i < 3u << 20; ++i) VXIgnore(own.WriteByte(static_cast<unsigned char>(i)));
    EXPECT_EQ(own.Write(own.GetBuffer(), 3u << 20), kVXSuccess) << "bytes of its own buffer, which moves";
    ASSERT_EQ(own.GetSize(), 6u << 20);
    for (unsigned int i = 0; i < 6u << 20; i += 4099) ASSERT_EQ(own.GetBuffer()[i], i & 0xFF);
}

TEST(VXBitStreamBuffer, CopiesNeverOwn) {
    VXBitStream owner;
    EXPECT_EQ(owner.WriteDWord(0x44332211), kVXSuccess);
    VXBitStream copy;
    EXPECT_EQ(copy.WriteByte(1), kVXSuccess);
    copy = owner;
    copy = *&copy;
    EXPECT_EQ(copy.GetPosition(), 4u);
    EXPECT_EQ(copy.EnsureSize(513), 0) << "cannot grow what it does not own";
    copy = owner;
    owner.LoadFromAllocedMem(owner.GetBuffer(), 3);
    EXPECT_EQ(BytesOf(owner), Hex("11 22 33"));
    owner = copy;
    EXPECT_EQ(owner.WriteByte(0x55), kVXSuccess) << "grows as the owner that it still is";
    EXPECT_EQ(BytesOf(owner), Hex("11 22 33 44 55"));
    owner.LoadFromAllocedMem(owner.GetBuffer() + 1, 99);
    EXPECT_EQ(BytesOf(owner), Hex("22 33 44 55"));
    EXPECT_EQ(owner.Write(owner.GetBuffer(), 2u), kVXSuccess);
    EXPECT_EQ(BytesOf(owner), Hex("22 33 44 55"));
}

TEST(VXBitStreamBuffer, LoadsAndDumpsAWholeStream) {
    const Bytes bytes = Hex("01 02 03 04 05");
    CVXStreamReadWrite source(bytes.data(), bytes.size());
    source.Seek(3, kVXSeekFromStart);
    VXBitStream stream;
    EXPECT_EQ(stream.LoadFromStream(&source), 1);
    EXPECT_EQ(BytesOf(stream), bytes);
    EXPECT_EQ(stream.SetPosition(5), 1);
    EXPECT_EQ(stream.WriteBits(1, 1), kVXSuccess);
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    EXPECT_EQ(stream.DumpToStream(&target), 1);
    EXPECT_EQ(BytesOf(target), Hex("01 02 03 04 05 80"));
    EXPECT_EQ(stream.DumpToStream(&source), 0) << "a stream that reads moves less than the buffer has";
    EXPECT_EQ(stream.DumpToStream(nullptr), 0);
    EXPECT_EQ(stream.LoadFromStream(nullptr), 0);
    CVXStreamReadWrite nothing;
    EXPECT_EQ(stream.LoadFromStream(&nothing), 1);
    stream.LoadFromAllocedMem(nullptr, 100);
    EXPECT_EQ(stream.IsEOF(), 1);
    EXPECT_EQ(stream.GetRemaining(), 0u);
}

TEST(VXBitStreamText, ReadsUpToTheNul) {
    const Bytes bytes = Hex("61 62 63 00 64 65");
    VXBitStream in = StreamOver(bytes);
    VXString text("old");
    EXPECT_EQ(in.ReadVXString(text), kVXSuccess);
    EXPECT_EQ(text, VXString("abc"));
    EXPECT_EQ(in.GetPosition(), 4u);
    EXPECT_EQ(in.ReadVXString(text), kVXFailure) << "no NUL";
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(in.SetPosition(0), 1);
    EXPECT_EQ(in.ReadVXString(text, 6), kVXSuccess);
    EXPECT_EQ(text, VXString("abc")) << "ends at the first NUL";
    EXPECT_EQ(in.SetPosition(0), 1);
    EXPECT_EQ(in.ReadVXString(text, 0xFFFFFFFF), kVXFailure);
    EXPECT_EQ(text, VXString("abc")) << "kept";
    EXPECT_EQ(in.IsEOF(), 1) << "the bytes that were there are consumed";
}

TEST(VXBitStreamText, WritesAsManyBytesAsUnits) {
    // Two characters of three bytes each: two bytes go out.
    const std::pair<const char*, const char*> rows[] = {{"", "00"}, {"\xE2\x82\xAC\xE2\x82\xAC", "E2 82 00"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Written([&](VXBitStream& out) { VXIgnore(out.WriteVXString(row.first)); }),
                  Hex(row.second));
    }
}

TEST(VXBitStreamText, AnOutputStreamMovesTheTextBehindItsOwnNul) {
    const Bytes bytes = Hex("61 62 00 63 64 00 65");
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    VXBitStream stream = StreamOver(bytes);
    stream.SetOutputStream(&target);
    VXString text;
    EXPECT_EQ(stream.ReadVXString(text), kVXSuccess);
    EXPECT_EQ(text, VXString("cd"));
    EXPECT_EQ(stream.GetRemaining(), 1u);
    EXPECT_EQ(stream.ReadVXString(text), kVXFailure);
    EXPECT_TRUE(text.empty());
}

TEST(VXBitStreamNumbers, Fixed) {
    const std::pair<float, const char*> rows[] = {
        {1.5f, "00 80 01 00"},
        {-1.5f, "00 00 FF FF"},  // a negative number loses its fraction
        {std::numeric_limits<float>::quiet_NaN(), "00 00 00 00"},
        {std::numeric_limits<float>::infinity(), "FF FF 00 00"},
        {-1e20f, "00 00 00 00"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Written([&](VXBitStream& out) { VXIgnore(out.WriteFixed(row.first)); }), Hex(row.second));
    }
}

TEST(VXBitStreamNumbers, Widths) {
    EXPECT_EQ(VXBitStream::FindNBitsUnsigned(0x80000000), 0u);
    EXPECT_EQ(VXBitStream::FindNBitsUnsigned(0xC0000000), 31u);
    EXPECT_EQ(VXBitStream::FindNBitsSigned(0), 0u);
    EXPECT_EQ(VXBitStream::FindNBitsSigned(-1), 2u);
    EXPECT_EQ(VXBitStream::FindNBitsSigned(INT_MIN), 1u);
    EXPECT_EQ(VXBitStream::FindMaxNBitsUnsigned(3, 255), 8u);
    EXPECT_EQ(VXBitStream::FindMaxNBitsUnsigned(9, 255), 9u);
    EXPECT_EQ(VXBitStream::FindMaxNBitsSigned(-4, 0), 0);
    EXPECT_EQ(VXBitStream::FindMaxNBitsSigned(1, -4), 4);
    EXPECT_EQ(VXBitStream::MinBits(4, 0), 3u);
    EXPECT_EQ(VXBitStream::MinBits(0x7FFFFFFF, 0), 31u);
    EXPECT_EQ(VXBitStream::MinBits(0x80000000, 0), 33u);
    EXPECT_EQ(VXBitStream::MinBits(0xFFFFFFFF, 1), 34u);
    EXPECT_EQ(VXBitStream::MaxSNum4(1, -7, 3, 0), 7u);
    EXPECT_EQ(VXBitStream::MaxSNum4(0, INT_MIN, INT_MAX, 0), 0x80000000u);
}

}  // namespace

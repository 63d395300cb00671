#include "bitstream/VXBitStream.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <limits>

#include "platform/CVXStreamReadWrite.h"
#include "support/Bytes.h"

namespace {

unsigned int ReadField(VXBitStream& in, unsigned int count) {
    unsigned int value = 0xDEADBEEF;
    EXPECT_EQ(in.ReadBits(count, value), kVXSuccess);
    return value;
}

int ReadSigned(const Bytes& bytes, unsigned int count) {
    VXBitStream in = StreamOver(bytes);
    int value = 0x5A5A;
    EXPECT_EQ(in.ReadSBits(count, value), kVXSuccess);
    return value;
}

Bytes Written(const std::function<void(VXBitStream&)>& write) {
    VXBitStream out;
    write(out);
    EXPECT_EQ(out.FlushBits(), kVXSuccess);
    return BytesOf(out);
}

Bytes FixedBytes(float value) {
    return Written([value](VXBitStream& out) { EXPECT_EQ(out.WriteFixed(value), kVXSuccess); });
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
    const Bytes bytes = Join({Bits("10110 111"), Hex("C3 34 12 78 56 34 12")});
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(ReadField(in, 0), 0u);
    EXPECT_EQ(ReadField(in, 5), 0b10110u);
    EXPECT_EQ(ReadField(in, 0), 0u);
    unsigned char byte = 0;
    EXPECT_EQ(in.ReadByte(byte), kVXSuccess);
    EXPECT_EQ(byte, 0xC3);
    unsigned short word = 0;
    EXPECT_EQ(in.ReadWord(word), kVXSuccess);
    EXPECT_EQ(word, 0x1234);
    unsigned int dword = 0;
    EXPECT_EQ(in.ReadDWord(dword), kVXSuccess);
    EXPECT_EQ(dword, 0x12345678u);
    EXPECT_EQ(in.IsEOF(), 1);
}

TEST(VXBitStreamRead, FieldsOfEveryWidthComeBackFromEveryOffset) {
    for (unsigned int offset = 0; offset < 8; ++offset) {
        for (unsigned int width = 1; width <= 32; ++width) {
            const unsigned int value = 0xA5C3E197u >> (32 - width);
            VXBitStream stream;
            EXPECT_EQ(stream.WriteBits(0, offset), kVXSuccess);
            EXPECT_EQ(stream.WriteBits(value, width), kVXSuccess);
            EXPECT_EQ(stream.WriteBits(1, 1), kVXSuccess);
            EXPECT_EQ(stream.FlushBits(), kVXSuccess);
            EXPECT_EQ(stream.GetSize(), (offset + width + 1 + 7) / 8);
            // Once with the end right behind the field, once with bytes behind it.
            for (const unsigned int behind : {0u, 8u}) {
                Bytes bytes = Join({BytesOf(stream), Repeat(behind, 0xFF)});
                VXBitStream in = StreamOver(bytes);
                ReadField(in, offset);
                EXPECT_EQ(ReadField(in, width), value) << width << " bits at " << offset;
                EXPECT_EQ(ReadField(in, 1), 1u) << width << " bits at " << offset;
            }
        }
    }
}

TEST(VXBitStreamRead, ShortReadsTakeWhatIsThere) {
    const Bytes one = Hex("AB");
    unsigned short word = 0x7777;
    VXBitStream in = StreamOver(one);
    EXPECT_EQ(in.ReadWord(word), kVXFailure);
    EXPECT_EQ(word, 0x77AB);
    EXPECT_EQ(in.GetPosition(), 1u);
    EXPECT_EQ(in.ReadWord(word), kVXFailure);
    EXPECT_EQ(word, 0x77AB) << "at the end the target stays";

    const Bytes three = Hex("01 02 03");
    in = StreamOver(three);
    unsigned int dword = 0xFFFFFFFF;
    EXPECT_EQ(in.ReadDWord(dword), kVXFailure);
    EXPECT_EQ(dword, 0x00030201u);

    in = StreamOver(three);
    int integer = -1;
    EXPECT_EQ(in.ReadVXInt32(integer), kVXSuccess);
    EXPECT_EQ(integer, 0x00030201);
    EXPECT_EQ(in.ReadVXInt32(integer), kVXSuccess);
    EXPECT_EQ(integer, 0);

    in = StreamOver(three);
    unsigned char target[8] = {};
    unsigned int length = 8;
    EXPECT_EQ(in.Read(target, length), kVXSuccess);
    EXPECT_EQ(length, 3u);
    length = 8;
    EXPECT_EQ(in.Read(target, length), kVXFailure);
    EXPECT_EQ(length, 0u);
    VXBitStream empty;
    length = 8;
    EXPECT_EQ(empty.Read(target, length), kVXFailure);
    EXPECT_EQ(length, 0u);
}

TEST(VXBitStreamRead, RawReadsLeavePendingBits) {
    const Bytes bytes = Join({Bits("101 01100"), Hex("EE FF")});
    VXBitStream in = StreamOver(bytes);
    ReadField(in, 3);
    unsigned char raw = 0;
    unsigned int length = 1;
    EXPECT_EQ(in.Read(&raw, length), kVXSuccess);
    EXPECT_EQ(raw, 0xEE);
    EXPECT_EQ(ReadField(in, 5), 0b01100u);
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

TEST(VXBitStreamRead, SignedFields) {
    EXPECT_EQ(ReadSigned(Bits("1111"), 4), -1);
    EXPECT_EQ(ReadSigned(Bits("1"), 1), -1);
    EXPECT_EQ(ReadSigned(Bits("1000"), 4), -8);
    EXPECT_EQ(ReadSigned(Hex("80 00 00 00"), 32), INT_MIN);
    EXPECT_EQ(ReadSigned(Hex(""), 0), 0);
    // Beyond 32 bits the sign has nothing to subtract from, and the low bits count.
    EXPECT_EQ(ReadSigned(Hex("FF FF FF FF 80"), 33), -1);
    EXPECT_EQ(ReadSigned(Hex("C0 00 00 01 40"), 34), 5);
    EXPECT_EQ(ReadSigned(Join({Repeat(31, 0xFF), Hex("FE")}), 255), -1);
}

TEST(VXBitStreamWrite, PendingBitsGoBeforeBytesAndWordsButNotBeforeRawBytes) {
    EXPECT_EQ(Written([](VXBitStream& out) {
                  VXIgnore(out.WriteBits(0b101, 3));
                  VXIgnore(out.WriteWord(0x1234));
              }),
              Join({Bits("10100000"), Hex("34 12")}));
    EXPECT_EQ(Written([](VXBitStream& out) {
                  VXIgnore(out.WriteBits(0b101, 3));
                  VXIgnore(out.Write("\x11\x22", 2u));
                  VXIgnore(out.WriteBits(0b11111, 5));
              }),
              Join({Hex("11 22"), Bits("10111111")}));
    EXPECT_EQ(Written([](VXBitStream& out) {
                  VXIgnore(out.WriteByte(0xAB));
                  VXIgnore(out.WriteDWord(0x12345678));
                  VXIgnore(out.FlushBits());
              }),
              Hex("AB 78 56 34 12"));
}

TEST(VXBitStreamWrite, OversizedFieldsSpoilTheBitsInFront) {
    // 0b101 pending, then 0x1F at 4 bits: its upper bit is added to the three.
    EXPECT_EQ(Written([](VXBitStream& out) {
                  VXIgnore(out.WriteBits(0b101, 3));
                  VXIgnore(out.WriteBits(0x1F, 4));
              }),
              Bits("110 1111 0"));
    EXPECT_EQ(Written([](VXBitStream& out) {
                  VXIgnore(out.WriteBits(0b1111, 4));
                  VXIgnore(out.WriteBits(0xFFFFF, 12));
              }),
              Hex("EF FF"))
        << "the sum keeps eight bits, later chunks their own";
}

TEST(VXBitStreamWrite, SignedFields) {
    const auto bytes = [](int value, unsigned int count) {
        return Written([=](VXBitStream& out) { EXPECT_EQ(out.WriteSBits(value, count), kVXSuccess); });
    };
    EXPECT_EQ(bytes(-1, 4), Bits("1111"));
    EXPECT_EQ(bytes(-8, 4), Bits("1000"));
    EXPECT_EQ(bytes(5, 4), Bits("0101"));
    EXPECT_EQ(bytes(5, 0), Hex(""));
    EXPECT_EQ(bytes(INT_MIN, 32), Hex("80 00 00 00"));
    EXPECT_EQ(bytes(INT_MIN, 33), Hex("C0 00 00 00 00"));
    EXPECT_EQ(bytes(-2, 34), Hex("FF FF FF FF 80"));
    EXPECT_EQ(bytes(3, 34), Hex("00 00 00 00 C0"));
    EXPECT_EQ(bytes(-1, 255), Join({Repeat(31, 0xFF), Hex("FE")}));
}

TEST(VXBitStreamWrite, AnOutputStreamTakesEverythingAndReadsStayInMemory) {
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    const Bytes bytes = Hex("77 88");
    VXBitStream stream = StreamOver(bytes);
    stream.SetOutputStream(&target);
    EXPECT_EQ(stream.WriteBits(0x1FF, 9), kVXSuccess);
    EXPECT_EQ(stream.WriteByte(0x42), kVXSuccess);
    EXPECT_EQ(stream.GetPosition(), 3u);
    EXPECT_EQ(stream.GetSize(), 3u);
    EXPECT_EQ(stream.MovePosition(-4), 1) << "whatever the stream says to it";
    EXPECT_EQ(stream.GetPosition(), 3u);
    EXPECT_EQ(stream.MovePosition(-2), 1);
    EXPECT_EQ(stream.WriteByte(0x01), kVXSuccess);
    unsigned char byte = 0;
    EXPECT_EQ(stream.ReadByte(byte), kVXSuccess);
    EXPECT_EQ(byte, 0x77);
    EXPECT_EQ(stream.GetRemaining(), 1u);
    EXPECT_EQ(Bytes(target.GetMemory(), target.GetMemory() + target.GetMemorySize()), Hex("FF 01 42"));
    stream.SetOutputStream(nullptr);
    EXPECT_EQ(stream.GetSize(), 2u);
}

TEST(VXBitStreamWrite, BytesOfItsOwnBufferSurviveTheGrowth) {
    VXBitStream stream;
    for (int i = 0; i < 512; ++i) VXIgnore(stream.WriteByte(static_cast<unsigned char>(i)));
    EXPECT_EQ(stream.Write(stream.GetBuffer(), 512u), kVXSuccess);
    ASSERT_EQ(stream.GetSize(), 1024u);
    for (unsigned int i = 0; i < 1024; ++i) ASSERT_EQ(stream.GetBuffer()[i], i & 0xFF);
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
    EXPECT_EQ(out.GetSize(), 3u);
    EXPECT_EQ(out.SetPosition(4), 0);
}

TEST(VXBitStreamBuffer, GrowsBySteps) {
    VXBitStream stream;
    EXPECT_EQ(stream.EnsureSize(0), 1);
    EXPECT_EQ(stream.GetBuffer(), nullptr);
    EXPECT_EQ(stream.EnsureSize(1), 1);
    EXPECT_EQ(CapacityOf(stream), 512u);
    EXPECT_EQ(stream.EnsureSize(513), 1);
    EXPECT_EQ(CapacityOf(stream), 1024u);
    VXBitStream other;
    EXPECT_EQ(other.EnsureSize(1), 1);
    EXPECT_EQ(other.EnsureSize(5000), 1);
    EXPECT_EQ(CapacityOf(other), 5000u);
    EXPECT_EQ(other.GetSize(), 5000u);
}

TEST(VXBitStreamBuffer, WhatASeekUncoversIsZero) {
    VXBitStream stream;
    for (int i = 0; i < 300; ++i) VXIgnore(stream.WriteByte(0xFF));
    EXPECT_EQ(stream.SetPosition(10), 1);
    EXPECT_EQ(stream.GetSize(), 300u);
    EXPECT_EQ(stream.MovePosition(-11), 0);
    EXPECT_EQ(stream.GetPosition(), 10u);
    EXPECT_EQ(stream.MovePosition(1990), 1);
    EXPECT_EQ(stream.GetPosition(), 2000u);
    ASSERT_EQ(stream.GetSize(), 2000u);
    EXPECT_EQ(Bytes(stream.GetBuffer() + 300, stream.GetBuffer() + 2000), Repeat(1700, 0));
    VXBitStream fresh;
    EXPECT_EQ(fresh.SetPosition(100), 1);
    EXPECT_EQ(fresh.GetSize(), 100u);
    EXPECT_EQ(fresh.GetPosition(), 100u);
}

TEST(VXBitStreamBuffer, CopiesNeverOwn) {
    VXBitStream owner;
    EXPECT_EQ(owner.WriteDWord(0x44332211), kVXSuccess);
    VXBitStream copy = owner;
    EXPECT_EQ(copy.GetBuffer(), owner.GetBuffer());
    EXPECT_EQ(copy.GetPosition(), 4u);
    EXPECT_EQ(copy.EnsureSize(513), 0) << "cannot grow what it does not own";
    copy.Clean();
    EXPECT_EQ(BytesOf(owner), Hex("11 22 33 44"));
    VXBitStream assigned;
    EXPECT_EQ(assigned.WriteByte(1), kVXSuccess);
    assigned = owner;
    assigned = *&assigned;
    EXPECT_EQ(assigned.GetBuffer(), owner.GetBuffer());
}

TEST(VXBitStreamBuffer, NullAndEmptySourcesFailSoftly) {
    VXBitStream stream;
    EXPECT_EQ(stream.LoadFromStream(nullptr), 0);
    EXPECT_EQ(stream.DumpToStream(nullptr), 0);
    stream.LoadFromAllocedMem(nullptr, 100);
    EXPECT_EQ(stream.IsEOF(), 1);
    EXPECT_EQ(stream.GetRemaining(), 0u);
    CVXStreamReadWrite nothing;
    EXPECT_EQ(stream.LoadFromStream(&nothing), 1);
    EXPECT_EQ(stream.GetSize(), 0u);
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
    EXPECT_EQ(Bytes(target.GetMemory(), target.GetMemory() + target.GetMemorySize()),
              Hex("01 02 03 04 05 80"));
    CVXStreamReadWrite reader(bytes.data(), bytes.size());
    EXPECT_EQ(stream.DumpToStream(&reader), 0) << "the buffer is longer than what the transfer moved";
}

/// States a length that it does not deliver.
class ShortStream : public CVXStreamReadWrite {
public:
    using CVXStreamReadWrite::CVXStreamReadWrite;
    using CVXStreamReadWrite::XferByte;
    int XferByte(unsigned char* data, int count) override {
        return CVXStreamReadWrite::XferByte(data, count - 1);
    }
};

TEST(VXBitStreamBuffer, AStreamThatDeliversLessLeavesNothing) {
    ShortStream source("abcdef", 6);
    VXBitStream stream;
    EXPECT_EQ(stream.WriteByte(1), kVXSuccess);
    EXPECT_EQ(stream.LoadFromStream(&source), 0);
    EXPECT_EQ(stream.GetSize(), 0u);
    EXPECT_EQ(stream.GetPosition(), 0u);
}

TEST(VXBitStreamBuffer, ManySmallWritesReachMegabytes) {
    VXBitStream stream;
    for (unsigned int i = 0; i < 3u << 20; ++i) VXIgnore(stream.WriteByte(static_cast<unsigned char>(i * 7)));
    ASSERT_EQ(stream.GetSize(), 3u << 20);
    for (unsigned int i = 0; i < 3u << 20; i += 4099) {
        ASSERT_EQ(stream.GetBuffer()[i], static_cast<unsigned char>(i * 7));
    }
}

TEST(VXBitStreamText, Strings) {
    const Bytes bytes = Hex("61 62 63 00 64 65");
    VXBitStream in = StreamOver(bytes);
    VXString text("old");
    EXPECT_EQ(in.ReadVXString(text), kVXSuccess);
    EXPECT_EQ(text, VXString("abc"));
    EXPECT_EQ(in.GetPosition(), 4u);
    EXPECT_EQ(in.ReadVXString(text), kVXFailure) << "no NUL";
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(in.IsEOF(), 1);

    in = StreamOver(bytes);
    EXPECT_EQ(in.ReadVXString(text, 6), kVXSuccess);
    EXPECT_EQ(text, VXString("abc")) << "ends at the first NUL";
    in = StreamOver(bytes);
    text = VXString("kept");
    EXPECT_EQ(in.ReadVXString(text, 0xFFFFFFFF), kVXFailure);
    EXPECT_EQ(text, VXString("kept"));
    EXPECT_EQ(in.IsEOF(), 1) << "the bytes that were there are consumed";
}

TEST(VXBitStreamText, WritesAsManyBytesAsUnits) {
    EXPECT_EQ(Written([](VXBitStream& out) { VXIgnore(out.WriteVXString(VXString("ab"))); }),
              Hex("61 62 00"));
    EXPECT_EQ(Written([](VXBitStream& out) { VXIgnore(out.WriteVXString(VXString())); }), Hex("00"));
    // Two characters of three bytes each: two bytes go out.
    EXPECT_EQ(
        Written([](VXBitStream& out) { VXIgnore(out.WriteVXString(VXString("\xE2\x82\xAC\xE2\x82\xAC"))); }),
        Hex("E2 82 00"));
    EXPECT_EQ(Written([](VXBitStream& out) {
                  VXIgnore(out.WriteBits(1, 1));
                  VXIgnore(out.WriteVXString(VXString("a")));
              }),
              Hex("61 80 00"))
        << "pending bits land between text and NUL";
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
    EXPECT_EQ(FixedBytes(1.5f), Hex("00 80 01 00"));
    EXPECT_EQ(FixedBytes(-1.5f), Hex("00 00 FF FF")) << "a negative number loses its fraction";
    EXPECT_EQ(FixedBytes(0.0f), Hex("00 00 00 00"));
    EXPECT_EQ(FixedBytes(70000.25f), Hex("00 40 70 11"));
    EXPECT_EQ(FixedBytes(std::numeric_limits<float>::quiet_NaN()), Hex("00 00 00 00"));
    EXPECT_EQ(FixedBytes(std::numeric_limits<float>::infinity()), Hex("FF FF 00 00"));
    EXPECT_EQ(FixedBytes(-1e20f), Hex("00 00 00 00"));
}

TEST(VXBitStreamNumbers, Widths) {
    EXPECT_EQ(VXBitStream::FindNBitsUnsigned(0), 0u);
    EXPECT_EQ(VXBitStream::FindNBitsUnsigned(0x80000000), 0u);
    EXPECT_EQ(VXBitStream::FindNBitsUnsigned(0xC0000000), 31u);
    EXPECT_EQ(VXBitStream::FindNBitsSigned(0), 0u);
    EXPECT_EQ(VXBitStream::FindNBitsSigned(1), 2u);
    EXPECT_EQ(VXBitStream::FindNBitsSigned(-1), 2u);
    EXPECT_EQ(VXBitStream::FindNBitsSigned(INT_MIN), 1u);
    EXPECT_EQ(VXBitStream::FindMaxNBitsUnsigned(3, 255), 8u);
    EXPECT_EQ(VXBitStream::FindMaxNBitsUnsigned(9, 255), 9u);
    EXPECT_EQ(VXBitStream::FindMaxNBitsSigned(-4, 0), 0);
    EXPECT_EQ(VXBitStream::FindMaxNBitsSigned(1, -4), 4);
    EXPECT_EQ(VXBitStream::MinBits(0, 1), 0u);
    EXPECT_EQ(VXBitStream::MinBits(1, 0), 1u);
    EXPECT_EQ(VXBitStream::MinBits(1, 1), 2u);
    EXPECT_EQ(VXBitStream::MinBits(4, 0), 3u);
    EXPECT_EQ(VXBitStream::MinBits(0x7FFFFFFF, 0), 31u);
    EXPECT_EQ(VXBitStream::MinBits(0x80000000, 0), 33u);
    EXPECT_EQ(VXBitStream::MinBits(0xFFFFFFFF, 1), 34u);
    EXPECT_EQ(VXBitStream::MaxSNum4(1, -7, 3, 0), 7u);
    EXPECT_EQ(VXBitStream::MaxSNum4(0, INT_MIN, INT_MAX, 0), 0x80000000u);
}

}  // namespace

#include "support/Test.h"

namespace {

constexpr unsigned int kChunk = 1048576;

std::string theMessage;

std::string TakeMessage() { return std::exchange(theMessage, std::string()); }

class VXBitStreamZlib : public testing::Test {
protected:
    ~VXBitStreamZlib() override {
        EXPECT_EQ(TakeMessage(), "");
        VXSetAssertHandler(m_Old);
    }

private:
    VXAssertHandler m_Old = VXSetAssertHandler([](const char* message) { theMessage = message; });
};

const Bytes kHeader = Hex("43 57 53 08 11 22 33 44");

void Fill(IVXStream& stream, Bytes bytes) {
    stream.SetMode(IVXStream::kWrite);
    stream.Seek(0, kVXSeekFromStart);
    ASSERT_EQ(stream.XferByte(bytes.data(), static_cast<int>(bytes.size())), static_cast<int>(bytes.size()));
}

TEST_F(VXBitStreamZlib, TheSizeCountsEightBytesWhateverTheOffset) {
    const Bytes body = Noise(300);
    for (const unsigned int offset : {0u, 4u, 8u, 100u}) {
        const Bytes header = Repeat(offset, 0x5A);
        const Bytes bytes = Join({header, Deflated(body, 6)});
        VXBitStream stream = StreamOver(bytes);
        EXPECT_EQ(stream.UnCompress(offset, offset + 300), 1);
        EXPECT_EQ(stream.GetPosition(), offset);
        EXPECT_EQ(BytesOf(stream), Head(Join({header, body, Repeat(8, 0)}), 308)) << "at offset " << offset;
        EXPECT_EQ(bytes, Join({header, Deflated(body, 6)})) << "borrowed bytes stay as they are";
    }
}

TEST_F(VXBitStreamZlib, APositionBehindTheSizeStaysHarmless) {
    const Bytes bytes = Join({Repeat(100, 0x5A), Deflated(Hex("01"), 6)});
    VXBitStream stream = StreamOver(bytes);
    ASSERT_EQ(stream.UnCompress(100, 101), 1);
    ASSERT_EQ(stream.GetSize(), 9u);
    EXPECT_EQ(stream.IsEOF(), 1);
    unsigned int value = 0;
    EXPECT_EQ(stream.ReadBits(7, value), kVXFailure);
    EXPECT_EQ(stream.WriteByte(0xEE), kVXSuccess);
    EXPECT_EQ(BytesOf(stream), Join({Repeat(9, 0x5A), Repeat(91, 0), Hex("EE")}));
}

TEST_F(VXBitStreamZlib, WhatDoesNotInflateStays) {
    const Bytes good = Join({kHeader, Deflated(Noise(2000), 6)});
    const auto fails = [](const Bytes& bytes, unsigned int offset, unsigned int fullSize) {
        VXBitStream stream = StreamOver(bytes);
        EXPECT_EQ(stream.SetPosition(3), 1);
        EXPECT_EQ(stream.UnCompress(offset, fullSize), 0);
        EXPECT_EQ(TakeMessage(), "compress2 returned failure");
        EXPECT_EQ(stream.GetBuffer(), bytes.data());
        EXPECT_EQ(stream.GetSize(), bytes.size());
        EXPECT_EQ(stream.GetPosition(), 3u);
    };
    fails(good, 8, 2007);
    fails(good, 8, 7);
    fails(good, static_cast<unsigned int>(good.size()) + 1, 0xFFFFFFFF);
    for (std::size_t size = 8; size < good.size(); size += 7) fails(Head(good, size), 8, 2008);
    Bytes corrupt = good;
    corrupt[corrupt.size() / 2] ^= 0x10;
    fails(corrupt, 8, 2008);
}

TEST_F(VXBitStreamZlib, TheBlockGrowsWithWhatIsThere) {
    // Close to the most that deflate can do, and a body that turns out far larger than it first seems.
    for (const Bytes& body : {Repeat(100000, 7), Join({Noise(600000), Repeat(20000000, 7)})}) {
        const Bytes movie = Join({kHeader, Deflated(body, 9)});
        VXBitStream stream = StreamOver(movie);
        EXPECT_EQ(stream.UnCompress(8, 0xFFFFFFFF), 1);
        EXPECT_TRUE(BytesOf(stream) == Join({kHeader, body}));
    }
}

TEST_F(VXBitStreamZlib, CompressesInMemory) {
    const Bytes bytes = Join({Hex("AA BB"), Repeat(3000, 'x')});
    const Bytes deflated = Deflated(Repeat(3000, 'x'), 6);
    VXBitStream stream = StreamOver(bytes);
    EXPECT_EQ(stream.SetPosition(5), 1);
    unsigned char* array = nullptr;
    unsigned int length = 0;
    EXPECT_EQ(stream.Compress(2, 1, &array, &length), 1);
    const std::unique_ptr<unsigned char[]> owner(array);
    EXPECT_EQ(Bytes(array, array + length), deflated);
    EXPECT_EQ(stream.GetBuffer(), bytes.data());
    EXPECT_EQ(stream.GetPosition(), 5u);

    // Without both pointers the result takes the place of the data.
    EXPECT_EQ(stream.Compress(2, 1, nullptr, &length), 1);
    EXPECT_EQ(stream.GetPosition(), 0u);
    ASSERT_EQ(stream.GetSize(), deflated.size() + 2);
    EXPECT_EQ(Bytes(stream.GetBuffer() + 2, stream.GetBuffer() + stream.GetSize()), deflated);

    VXBitStream nothing;
    EXPECT_EQ(nothing.Compress(0, 0, nullptr, nullptr), 1);
    EXPECT_EQ(BytesOf(nothing), Deflated({}, 6));
    VXBitStream small = StreamOver(kHeader);
    EXPECT_EQ(small.Compress(9, 0, nullptr, nullptr), 0);
    EXPECT_EQ(TakeMessage(), "compress2 returned failure");
    EXPECT_EQ(small.GetBuffer(), kHeader.data());
}

TEST_F(VXBitStreamZlib, CompressesFromStreamToStream) {
    const Bytes body = Noise(100);
    CVXTempFileStreamReadWrite source;
    Fill(source, Join({kHeader, body}));
    CVXStreamReadWrite target;
    VXBitStream stream;
    stream.SetOutputStream(&source);
    EXPECT_EQ(stream.Compress(8, 0, nullptr, nullptr), 0) << "without a target";
    stream.SetCompressionStream(&target);
    EXPECT_EQ(stream.Compress(8, 0, nullptr, nullptr), 1);
    EXPECT_EQ(BytesOf(target), Join({kHeader, Deflated(body, 6)}));
    EXPECT_EQ(stream.Compress(109, 0, nullptr, nullptr), 0) << "a source that is too short";
    /// Takes only so many bytes.
    struct Full : CVXStreamReadWrite {
        using CVXStreamReadWrite::XferByte;
        int XferByte(unsigned char* data, int count) override {
            return CVXStreamReadWrite::XferByte(data, std::min(count, 5));
        }
    } full;
    stream.SetCompressionStream(&full);
    EXPECT_FALSE(stream.HasFailed());
    EXPECT_EQ(stream.Compress(8, 0, nullptr, nullptr), 1);
    EXPECT_TRUE(stream.HasFailed());
    EXPECT_EQ(stream.StreamedCompress(8), 0);
}

TEST_F(VXBitStreamZlib, StreamsMoviesOfEverySizeAroundTheChunk) {
    for (const unsigned int size : {1u, 4095u, kChunk - 1, kChunk, kChunk + 1, 2 * kChunk}) {
        const Bytes body = Noise(size);
        CVXStreamReadWrite memory;
        CVXTempFileStreamReadWrite file;
        for (IVXStream* source : {static_cast<IVXStream*>(&memory), static_cast<IVXStream*>(&file)}) {
            Fill(*source, Join({kHeader, body}));
            CVXStreamReadWrite target;
            VXBitStream stream;
            stream.SetOutputStream(source);
            stream.SetCompressionStream(&target);
            EXPECT_EQ(stream.StreamedCompress(8), 1) << size;
            EXPECT_TRUE(BytesOf(target) == Join({kHeader, Deflated(body, 9)})) << size;
        }
    }
}

TEST_F(VXBitStreamZlib, StreamedFailures) {
    VXBitStream stream;
    EXPECT_EQ(stream.StreamedCompress(8), 1);
    EXPECT_EQ(TakeMessage(), "StreamedCompress called with NULL m_Stream");
    CVXStreamReadWrite source;
    Fill(source, kHeader);
    stream.SetOutputStream(&source);
    EXPECT_EQ(stream.StreamedCompress(8), 0) << "without a target";
    TakeMessage();
    CVXStreamReadWrite target;
    stream.SetCompressionStream(&target);
    for (const unsigned int offset : {8u, 9u, 0xFFFFFFFFu}) {
        EXPECT_EQ(stream.StreamedCompress(offset), 0) << "a source that ends with or in the header";
        EXPECT_EQ(TakeMessage(), "Error reading input Stream for compression");
    }
}

}  // namespace

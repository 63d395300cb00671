#include "support/GoldenMovie.h"
#include "support/Test.h"

namespace {

/// A stream in memory of which the `n`th operation fails, from 1 on, or every one from there: a transfer
/// moves half of what it should, a seek nothing.
class FaultyStream : public CVXStreamReadWrite {
public:
    FaultyStream(unsigned int n, bool allLater) : m_Countdown(n), m_AllLater(allLater) {}

    using CVXStreamReadWrite::XferByte;
    int XferByte(unsigned char* data, int count) override {
        return CVXStreamReadWrite::XferByte(data, Fails() ? count / 2 : count);
    }
    int Seek(int offset, VXSeekFromWhere origin) override {
        return Fails() ? 0 : CVXStreamReadWrite::Seek(offset, origin);
    }
    bool HasFailed() const { return m_HasFailed; }

private:
    bool Fails() {
        if (m_HasFailed) return m_AllLater;
        m_HasFailed = --m_Countdown == 0;
        return m_HasFailed;
    }

    unsigned int m_Countdown;
    bool m_AllLater;
    bool m_HasFailed = false;
};

/// Makes every operation fail in turn, until `attempt` meets no fault any more.
template <typename Attempt>
void FailEach(const Attempt& attempt) {
    for (const bool allLater : {false, true}) {
        bool hasFailed = true;
        for (unsigned int n = 1; hasFailed && !testing::Test::HasFailure(); ++n) {
            SCOPED_TRACE(testing::Message() << "operation " << n << (allLater ? " and all later ones" : ""));
            FaultyStream stream(n, allLater);
            attempt(stream);
            hasFailed = stream.HasFailed();
        }
    }
}

TEST(StreamFault, ALoadIsWholeOrFails) {
    const Bytes bytes = GoldenMovie(8);
    VXFlintFile whole;
    ASSERT_EQ(LoadInto(whole, bytes), kVXSuccess);
    FailEach([&](FaultyStream& stream) {
        stream.SetMode(IVXStream::kWrite);
        for (unsigned char byte : bytes) stream.CVXStreamReadWrite::XferByte(byte);
        stream.SetMode(IVXStream::kRead);
        VXFlintFile movie;
        const VXErrorCodeEnum result = movie.LoadFromStream(&stream);
        const bool isWhole = movie.GetNumTags() == whole.GetNumTags();
        EXPECT_TRUE(result == kVXSuccess ? isWhole : result == kVXFailure && stream.HasFailed());
    });
}

TEST(StreamFault, ADumpIsWholeOrFails) {
    const SilentAsserts silence;
    VXFlintFile movie;
    ASSERT_EQ(LoadInto(movie, GoldenMovie(8)), kVXSuccess);
    for (const short compression : {short{0}, short{1}}) {
        movie.SetCompression(compression);
        CVXStreamReadWrite good;
        good.SetMode(IVXStream::kWrite);
        ASSERT_EQ(movie.DumpToStream(&good), kVXSuccess);
        FailEach([&](FaultyStream& stream) {
            stream.SetMode(IVXStream::kWrite);
            const VXErrorCodeEnum failure = compression != 0 ? kVXCompressionFailed : kVXFailure;
            const VXErrorCodeEnum result = movie.DumpToStream(&stream);
            const bool isWhole = BytesOf(stream) == BytesOf(good);
            EXPECT_TRUE(result == kVXSuccess ? isWhole : result == failure && stream.HasFailed());
        });
    }
}

TEST(StreamFault, WhatIsCompressedIsWholeOrFails) {
    const SilentAsserts silence;
    Bytes bytes(3000000);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<unsigned char>(i * i >> 8);
    for (const bool streamed : {false, true}) {
        Bytes whole;
        const auto attempt = [&](FaultyStream& source) {
            source.SetMode(IVXStream::kWrite);
            source.CVXStreamReadWrite::XferByte(bytes.data(), static_cast<int>(bytes.size()));
            CVXStreamReadWrite target;
            VXBitStream stream;
            stream.SetOutputStream(&source);
            stream.SetCompressionStream(&target);
            const short result =
                streamed ? stream.StreamedCompress(8) : stream.Compress(8, 0, nullptr, nullptr);
            EXPECT_TRUE(result != 0 || source.HasFailed());
            if (whole.empty()) whole = BytesOf(target);
            EXPECT_TRUE(result == 0 || (!streamed && stream.HasFailed()) || BytesOf(target) == whole);
        };
        FaultyStream good(1000, false);
        attempt(good);
        FailEach(attempt);
    }
}

}  // namespace

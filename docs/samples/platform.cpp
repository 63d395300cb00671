// A host's own platform: its byte streams, its place for messages, its type engine; and its threads.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "expect.h"

namespace {

/// Bytes of the host as a stream. Loading and writing use what is overridden with a body here; the typed
/// transfers serve hosts that store filters of their own in streams.
class HostStream : public IVXReadWriteStream {
public:
    std::vector<unsigned char> bytes;

    int XferByte(unsigned char* data, int count) override {
        if (data == nullptr || count <= 0) return 0;
        std::size_t size = static_cast<std::size_t>(count);
        if (m_Mode == kRead) {
            size = std::min(size, bytes.size() - std::min(m_Position, bytes.size()));
            if (size > 0) std::memcpy(data, bytes.data() + m_Position, size);
        } else {
            if (m_Position + size > bytes.size()) bytes.resize(m_Position + size);
            std::memcpy(bytes.data() + m_Position, data, size);
        }
        m_Position += size;
        return static_cast<int>(size);
    }
    int Seek(int offset, VXSeekFromWhere origin) override {
        const std::size_t base = origin == kVXSeekFromStart     ? 0
                                 : origin == kVXSeekFromCurrent ? m_Position
                                                                : bytes.size();
        if (offset < 0 && base < static_cast<std::size_t>(-static_cast<long long>(offset))) return 0;
        m_Position = base + static_cast<std::size_t>(static_cast<long long>(offset));
        return 1;
    }
    unsigned int Tell() override { return static_cast<unsigned int>(m_Position); }
    void SetEndOfStream() override {
        if (m_Position < bytes.size()) bytes.resize(m_Position);
    }
    int GetStreamState() override { return m_Position < bytes.size() ? kVXStreamGood : kVXStreamAtEnd; }
    void SetMode(Mode mode) override { m_Mode = mode; }
    Mode GetMode() const override { return m_Mode; }
    bool IsReading() const override { return m_Mode == kRead; }
    bool IsWriting() const override { return m_Mode == kWrite; }

    int XferByte(unsigned char& value) override { return XferByte(&value, 1); }
    int XferString(VXString&) override { return 0; }
    int XferBool(bool&) override { return 0; }
    int XferBool(short&) override { return 0; }
    int XferInt16(std::int16_t&) override { return 0; }
    int XferInt16(std::uint16_t&) override { return 0; }
    int XferInt32(std::int32_t&) override { return 0; }
    int XferInt32(std::uint32_t&) override { return 0; }
    int XferInt64(std::int64_t&) override { return 0; }
    int XferID(std::int32_t&) override { return 0; }
    int XferID(std::uint32_t&) override { return 0; }
    int XferPropertyID(std::int32_t&) override { return 0; }
    int XferPropertyID(std::uint32_t&) override { return 0; }
    int XferRealNumber(double&) override { return 0; }
    int XferRealNumber(float&) override { return 0; }
    void Comment(const char*) override {}
    void Flush() override {}
    void SetSwapping(short) override {}
    short GetSwapping() const override { return 0; }
    int Open() override { return 1; }
    void Close() override {}
    void Destroy() override { delete this; }

private:
    std::size_t m_Position = 0;
    Mode m_Mode = kRead;
};

std::string g_LastMessage;  // of the one thread that asks for it here

void TakeMessage(const char* message) { g_LastMessage = message; }

/// A type engine of the host: procedures by name, null for those that it does not have. This one says of
/// every font that its lines are 1 em high, and knows nothing else.
TYError HostMetrics(TYFontDict, float* first, float* second, float* third) {
    if (first != nullptr) *first = 0.75F;
    if (second != nullptr) *second = 0.25F;
    if (third != nullptr) *third = 0.0F;
    return nullptr;  // good
}

VXBndProc FindHostProcedure(const char* name) {
    if (name == nullptr || std::string_view(name) != "TYFontDictGetHorizontalMetricsProc") return nullptr;
    // The declaration has the type that the library will call it by.
    constexpr decltype(&TYFontDictGetHorizontalMetricsProc) kProcedure = HostMetrics;
    return reinterpret_cast<VXBndProc>(kProcedure);
}

/// Any number of movies at a time, each in one thread.
void BuildInThreads() {
    std::array<std::thread, 4> threads;
    for (std::thread& thread : threads) {
        thread = std::thread([] {
            VXFlintFile movie;
            VXMovieBuilder builder(movie, 320, 240);
            movie.IncludeShowFrameTags(100, -1);
            HostStream out;
            out.SetMode(IVXStream::kWrite);
            Expect(movie.DumpToStream(&out) == kVXSuccess, "each thread writes its movie");
        });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace

int main() {
    HostStream stream;
    for (const short compressed : {short{0}, short{1}}) {
        VXFlintFile movie;
        VXMovieBuilder builder(movie, 320, 240);
        movie.SetCompression(compressed);
        movie.IncludeShowFrameTags(1, -1);
        stream.SetMode(IVXStream::kWrite);
        Expect(movie.DumpToStream(&stream) == kVXSuccess, "the stream takes a movie");
        const unsigned char first = compressed != 0 ? 'C' : 'F';
        Expect(stream.bytes[0] == first, "compressed when it was asked for");
        stream.SetMode(IVXStream::kRead);
        VXFlintFile loaded;
        Expect(loaded.LoadFromStream(&stream) == kVXSuccess && loaded.GetNumTags() == 2, "and gives it back");
    }

    const VXAssertHandler before = VXSetAssertHandler(TakeMessage);
    VXBitStream none;
    none.StreamedCompress(0);  // has no stream to read
    Expect(!g_LastMessage.empty(), "the message came here and not to standard error");
    VXSetAssertHandler(before);

    BNDInitialize(FindHostProcedure);  // in place of the component's Startup
    float first = 0.0F;
    float second = 0.0F;
    float third = 0.0F;
    BND_NT_NMT::TYFontDictGetHorizontalMetrics({}, first, second, third);
    Expect(first == 0.75F && second == 0.25F, "the host's engine answers");
    BNDTerminate();

    BuildInThreads();
    return 0;
}

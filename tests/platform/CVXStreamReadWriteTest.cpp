#include "platform/CVXStreamReadWrite.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/CVXTempFileStreamReadWrite.h"
#include "platform/VXString.h"

namespace {

using Bytes = std::vector<unsigned char>;

constexpr int kBuffer = 64 * 1024;  // what a file stream keeps at least

Bytes Pattern(int count, unsigned seed = 1) {
    Bytes bytes(static_cast<std::size_t>(count));
    for (auto& byte : bytes) {
        seed = seed * 1664525U + 1013904223U;
        byte = static_cast<unsigned char>(seed >> 24);
    }
    return bytes;
}

Bytes Part(const Bytes& bytes, std::size_t begin, std::size_t end) {
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                 bytes.begin() + static_cast<std::ptrdiff_t>(end));
}

int Xfer(IVXStream& stream, Bytes& bytes) {
    return stream.XferByte(bytes.data(), static_cast<int>(bytes.size()));
}

void Put(IVXStream& stream, Bytes bytes) { ASSERT_EQ(Xfer(stream, bytes), static_cast<int>(bytes.size())); }

Bytes Get(IVXStream& stream, int count) {
    Bytes bytes(static_cast<std::size_t>(count));
    bytes.resize(static_cast<std::size_t>(Xfer(stream, bytes)));
    return bytes;
}

/// The whole stream from the start, through its own interface.
Bytes Contents(IVXStream& stream) {
    stream.SetMode(IVXStream::kRead);
    EXPECT_EQ(stream.Seek(0, kVXSeekFromEnd), 1);
    const int size = static_cast<int>(stream.Tell());
    EXPECT_EQ(stream.Seek(0, kVXSeekFromStart), 1);
    Bytes bytes = Get(stream, size + 1);
    EXPECT_EQ(static_cast<int>(bytes.size()), size);
    return bytes;
}

/// A file of this test alone, gone at its end.
class ScratchFile {
public:
    ScratchFile() {
        std::string name = testing::TempDir() + "vxstreamXXXXXX";
        close(mkstemp(name.data()));
        m_Path = name;
    }
    ~ScratchFile() { unlink(m_Path.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const char* Path() const { return m_Path.c_str(); }
    Bytes Read() const {
        Bytes bytes(1 << 20);
        const int file = open(Path(), O_RDONLY);
        const ssize_t size = read(file, bytes.data(), bytes.size());
        close(file);
        bytes.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
        return bytes;
    }
    void Overwrite(const Bytes& bytes) const {
        const int file = open(Path(), O_WRONLY | O_TRUNC);
        EXPECT_EQ(write(file, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        close(file);
    }

private:
    std::string m_Path;
};

struct Kind {
    const char* name;
    std::function<std::unique_ptr<CVXStreamReadWrite>(const ScratchFile&)> make;
};

/// What holds for every kind of stream. Each starts empty and writing.
class EveryStream : public testing::TestWithParam<Kind> {
protected:
    void SetUp() override {
        stream = GetParam().make(m_File);
        ASSERT_EQ(stream->Open(), 1);
        ASSERT_TRUE(stream->IsReading());
        stream->SetMode(IVXStream::kWrite);
    }

private:
    ScratchFile m_File;

protected:
    std::unique_ptr<CVXStreamReadWrite> stream;  // closed before its file goes
};

INSTANTIATE_TEST_SUITE_P(
    , EveryStream,
    testing::Values(Kind{"Memory", [](const ScratchFile&) { return std::make_unique<CVXStreamReadWrite>(); }},
                    Kind{"File",
                         [](const ScratchFile& file) {
                             return std::make_unique<CVXStreamReadWrite>(file.Path(),
                                                                         CVXStreamReadWrite::kCreateOrEmpty);
                         }},
                    Kind{"TempFile",
                         [](const ScratchFile&) { return std::make_unique<CVXTempFileStreamReadWrite>(); }}),
    [](const auto& row) { return row.param.name; });

/// One value of each transfer.
struct Values {
    std::int16_t int16;
    std::uint16_t word;
    std::int32_t int32, id, propertyID;
    std::uint32_t dword, unsignedID, unsignedPropertyID;
    std::int64_t int64;
    double real;
    float shortReal;
    bool flag;
    short flag16;
    unsigned char byte;
    VXString text;

    /// How many were moved, of 15.
    int Xfer(IVXStream& s) {
        return s.XferInt16(int16) + s.XferInt16(word) + s.XferInt32(int32) + s.XferInt32(dword) +
               s.XferInt64(int64) + s.XferID(id) + s.XferID(unsignedID) + s.XferPropertyID(propertyID) +
               s.XferPropertyID(unsignedPropertyID) + s.XferRealNumber(real) + s.XferRealNumber(shortReal) +
               s.XferBool(flag) + s.XferBool(flag16) + s.XferByte(byte) + s.XferString(text);
    }
    bool operator==(const Values&) const = default;
};

TEST_P(EveryStream, CarriesEveryTypeInBothByteOrders) {
    const std::vector<Bytes> fields = {{0xFE, 0xFF},                               // -2
                                       {0x34, 0x12},                               // 0x1234
                                       {0xFD, 0xFF, 0xFF, 0xFF},                   // -3
                                       {0x78, 0x56, 0x34, 0x12},                   // 0x12345678
                                       {0xFC, 255, 255, 255, 255, 255, 255, 255},  // -4
                                       {0xFB, 0xFF, 0xFF, 0xFF},                   // -5
                                       {0x01, 0x02, 0x03, 0x04},                   // 0x04030201
                                       {0xFA, 0xFF, 0xFF, 0xFF},                   // -6
                                       {0x05, 0x06, 0x07, 0x08},                   // 0x08070605
                                       {0, 0, 0, 0, 0, 0, 0xF8, 0xBF},             // -1.5
                                       {0x00, 0x00, 0x20, 0x40},                   // 2.5
                                       {0x01},                                     // true
                                       {0x01},                                     // a flag of 2
                                       {0x7F},                                     // a byte
                                       {0x03, 0x00, 0x00, 0x00},                   // the length of a text
                                       {'x'},
                                       {0xC3},
                                       {0xA9}};
    for (const short swap : {short{0}, short{2}}) {
        Bytes wire;
        for (Bytes field : fields) {
            if (swap != 0) std::reverse(field.begin(), field.end());
            wire.insert(wire.end(), field.begin(), field.end());
        }
        Values out = {-2, 0x1234, -3,   -5,   -6, 0x12345678, 0x04030201, 0x08070605,
                      -4, -1.5,   2.5F, true, 2,  0x7F,       "x\xC3\xA9"};
        stream->SetSwapping(swap);
        stream->SetMode(IVXStream::kWrite);
        stream->Seek(0, kVXSeekFromStart);
        ASSERT_EQ(out.Xfer(*stream), 15);
        EXPECT_EQ(Contents(*stream), wire);

        Values in = {};
        stream->Seek(0, kVXSeekFromStart);
        ASSERT_EQ(in.Xfer(*stream), 15);
        out.flag16 = 1;  // a boolean is a byte of 1 or 0
        EXPECT_EQ(in, out);
        EXPECT_EQ(stream->GetStreamState(), kVXStreamAtEnd);
    }
}

TEST_P(EveryStream, ValuesThatAreCutShortStayAsTheyWere) {
    Put(*stream, {0xFF, 0xFF, 0xFF, 0xFF, 'a', 'b'});
    stream->SetMode(IVXStream::kRead);
    stream->Seek(0, kVXSeekFromStart);
    VXString text("old");
    EXPECT_EQ(stream->XferString(text), 0) << "a length that lies";
    EXPECT_EQ(text, "old");

    std::int64_t whole = 7;
    double real = 7;
    stream->Seek(0, kVXSeekFromStart);
    EXPECT_EQ(stream->XferInt64(whole), 0);
    stream->Seek(0, kVXSeekFromStart);
    EXPECT_EQ(stream->XferRealNumber(real), 0);
    bool flag = true;
    stream->Seek(0, kVXSeekFromEnd);
    EXPECT_EQ(stream->XferBool(flag), 0);
    EXPECT_TRUE(whole == 7 && real == 7 && flag);
    EXPECT_EQ(stream->GetStreamState(), kVXStreamAtEnd) << "the end of the data is not a failure";
}

TEST_P(EveryStream, RefusesImpossibleCountsAndSeeks) {
    Put(*stream, {1, 2, 3});
    unsigned char byte = 9;
    for (const auto mode : {IVXStream::kRead, IVXStream::kWrite}) {
        stream->SetMode(mode);
        stream->Seek(2, kVXSeekFromStart);
        for (const int count : {0, -1, INT_MIN}) EXPECT_EQ(stream->XferByte(&byte, count), 0);
        EXPECT_EQ(stream->XferByte(nullptr, 3), 0);
        EXPECT_EQ(stream->Seek(-1, kVXSeekFromStart), 0);
        EXPECT_EQ(stream->Seek(-3, kVXSeekFromCurrent), 0);
        EXPECT_EQ(stream->Seek(INT_MIN, kVXSeekFromEnd), 0);
        EXPECT_EQ(stream->Seek(0, static_cast<VXSeekFromWhere>(3)), 0);
        EXPECT_EQ(stream->Tell(), 2U);
    }
    EXPECT_EQ(stream->Seek(-2, kVXSeekFromEnd), 1);
    EXPECT_EQ(stream->Seek(-1, kVXSeekFromCurrent), 1);
    EXPECT_EQ(Contents(*stream), (Bytes{1, 2, 3}));
}

TEST_P(EveryStream, BehavesLikeAPlainArray) {
    // A deterministic walk over seeks, turns, reads, writes and cuts, beside an array that does the same.
    Bytes model;
    std::size_t position = 0;
    unsigned seed = 12345;
    const auto random = [&seed](unsigned below) {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<unsigned>((std::uint64_t{seed} * below) >> 32);
    };
    for (int step = 0; step < 3000; ++step) {
        const int count = static_cast<int>(random(10) == 0 ? random(3 * kBuffer) : random(300));
        switch (random(5)) {
            case 0:
                position = random(static_cast<unsigned>(model.size()) + 1000);
                ASSERT_EQ(stream->Seek(static_cast<int>(position), kVXSeekFromStart), 1);
                break;
            case 1:
            case 2: {
                stream->SetMode(IVXStream::kWrite);
                const Bytes bytes = Pattern(count, seed);
                if (count == 0 || model.size() > 20 * kBuffer) break;
                Put(*stream, bytes);
                const std::size_t end = position + bytes.size();
                if (model.size() < end) model.resize(end);
                std::copy(bytes.begin(), bytes.end(), model.begin() + static_cast<std::ptrdiff_t>(position));
                position = end;
                break;
            }
            case 3: {
                stream->SetMode(IVXStream::kRead);
                const std::size_t begin = std::min(position, model.size());
                const std::size_t end = std::min(begin + static_cast<std::size_t>(count), model.size());
                const Bytes expected = Part(model, begin, end);
                ASSERT_EQ(Get(*stream, count), expected) << "step " << step;
                position += expected.size();
                break;
            }
            default:
                if (random(4) == 0) {
                    stream->SetEndOfStream();
                    model.resize(std::min(model.size(), position));
                } else {
                    stream->Flush();
                }
        }
        ASSERT_EQ(stream->Tell(), position);
        ASSERT_EQ(stream->GetStreamState(), position >= model.size() ? kVXStreamAtEnd : kVXStreamGood);
    }
    EXPECT_EQ(Contents(*stream), model);
}

TEST_P(EveryStream, EndsAtTheLastPositionThatTellCanAnswer) {
    EXPECT_EQ(stream->Seek(INT_MAX, kVXSeekFromStart), 1);
    EXPECT_EQ(stream->Seek(INT_MAX, kVXSeekFromCurrent), 1);
    EXPECT_EQ(stream->Tell(), 4294967294U);
    EXPECT_EQ(stream->Seek(2, kVXSeekFromCurrent), 0);
    EXPECT_EQ(stream->Seek(1, kVXSeekFromCurrent), 1);
    EXPECT_EQ(stream->Tell(), 4294967295U);
    EXPECT_EQ(stream->GetStreamState(), kVXStreamAtEnd);
    Bytes bytes = {1, 2};
    EXPECT_EQ(Xfer(*stream, bytes), 0);
    EXPECT_EQ(stream->GetStreamState(), kVXStreamFailed);
    EXPECT_TRUE(Contents(*stream).empty()) << "a seek alone makes nothing longer";
}

// ---- memory

TEST(CVXStreamReadWrite, MemoryStartsWithACopy) {
    Bytes bytes = {1, 2, 3};
    CVXStreamReadWrite stream(bytes.data(), bytes.size());
    bytes[0] = 9;
    EXPECT_EQ(stream.Tell(), 0U);
    EXPECT_EQ(Contents(stream), (Bytes{1, 2, 3}));
    ASSERT_EQ(stream.GetMemorySize(), 3U);
    EXPECT_EQ(stream.GetMemory()[2], 3);
    stream.Close();
    EXPECT_EQ(stream.Open(), 1) << "memory has nothing to give up";
    EXPECT_EQ(stream.GetMemorySize(), 3U);

    CVXStreamReadWrite none(nullptr, 5);
    EXPECT_EQ(none.GetMemorySize(), 0U);
    EXPECT_EQ(none.GetStreamState(), kVXStreamAtEnd);
    (new CVXStreamReadWrite)->Destroy();
}

// ---- files

TEST(CVXStreamReadWrite, AFileThatCannotBeOpenedIsEmptyAndTakesNothing) {
    const std::string missing = testing::TempDir() + "no/such/file";
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    CVXStreamReadWrite streams[] = {
        CVXStreamReadWrite(missing.c_str(), CVXStreamReadWrite::kOpenExisting),
        CVXStreamReadWrite(missing.c_str(), CVXStreamReadWrite::kCreateOrEmpty),
        CVXStreamReadWrite(testing::TempDir().c_str(), CVXStreamReadWrite::kOpenExisting),  // a directory
        CVXStreamReadWrite(static_cast<const char*>(nullptr), CVXStreamReadWrite::kOpenExisting),
        CVXStreamReadWrite(-1),
        CVXStreamReadWrite(pipeEnds[0]),  // cannot seek
    };
    for (auto& stream : streams) {
        EXPECT_EQ(stream.Open(), 0);
        EXPECT_EQ(stream.GetStreamState(), kVXStreamAtEnd);
        EXPECT_TRUE(Contents(stream).empty());
        EXPECT_EQ(stream.Seek(5, kVXSeekFromStart), 1);
        stream.SetMode(IVXStream::kWrite);
        Bytes bytes = {1};
        EXPECT_EQ(Xfer(stream, bytes), 0);
        stream.SetEndOfStream();
        stream.Flush();
        stream.Close();
        EXPECT_EQ(stream.GetMemory(), nullptr);
        EXPECT_EQ(stream.GetMemorySize(), 0U);
    }
    EXPECT_EQ(fcntl(pipeEnds[0], F_GETFD), -1) << "a descriptor that is refused is closed all the same";
    close(pipeEnds[1]);
}

TEST(CVXStreamReadWrite, AnExistingFileIsReadOnly) {
    const ScratchFile file;
    file.Overwrite(Pattern(100));
    CVXStreamReadWrite stream(file.Path(), CVXStreamReadWrite::kOpenExisting);
    EXPECT_EQ(Contents(stream), Pattern(100));
    stream.Seek(3, kVXSeekFromStart);
    EXPECT_EQ(Get(stream, 1).size(), 1U);
    stream.SetMode(IVXStream::kWrite);
    Bytes bytes = {1};
    EXPECT_EQ(Xfer(stream, bytes), 0);
    stream.SetEndOfStream();
    EXPECT_EQ(stream.GetStreamState(), kVXStreamFailed);
    EXPECT_EQ(Contents(stream), Pattern(100));
    stream.Close();
    EXPECT_EQ(file.Read(), Pattern(100));
}

TEST(CVXStreamReadWrite, FlushCloseAndDestructionBringTheBufferOut) {
    const ScratchFile file;
    for (const int way : {0, 1, 2}) {
        auto stream = std::make_unique<CVXStreamReadWrite>(file.Path(), CVXStreamReadWrite::kCreateOrEmpty);
        stream->SetMode(IVXStream::kWrite);
        Put(*stream, {1, 2, 3});
        EXPECT_TRUE(file.Read().empty()) << "a small write is no system call";
        if (way == 0) stream->Flush();
        if (way == 1) stream->Close();
        if (way == 2) stream.reset();
        EXPECT_EQ(file.Read(), (Bytes{1, 2, 3})) << way;
        if (way != 1) continue;
        EXPECT_EQ(stream->Open(), 0);
        unsigned char byte = 9;
        EXPECT_EQ(stream->XferByte(byte), 0);
    }
}

TEST(CVXStreamReadWrite, ADescriptorIsTakenOverAndClosedOnce) {
    const ScratchFile file;
    file.Overwrite(Pattern(20));
    const int descriptor = open(file.Path(), O_RDWR | O_CLOEXEC);
    lseek(descriptor, 7, SEEK_SET);
    {
        CVXStreamReadWrite stream(descriptor);
        EXPECT_EQ(Contents(stream), Pattern(20)) << "from the start, wherever the descriptor stands";
        stream.Close();
        EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
        ASSERT_EQ(open(file.Path(), O_RDONLY | O_CLOEXEC), descriptor) << "the number is in use again";
    }
    EXPECT_NE(fcntl(descriptor, F_GETFD), -1) << "and not closed for a second time";
    close(descriptor);
}

TEST(CVXStreamReadWrite, AFullDiskStaysToBeSeen) {
    for (const bool isClosed : {false, true}) {
        CVXStreamReadWrite stream("/dev/full", CVXStreamReadWrite::kCreateOrEmpty);
        stream.SetMode(IVXStream::kWrite);
        Put(stream, {1, 2, 3});
        isClosed ? stream.Close() : stream.Flush();
        EXPECT_EQ(stream.GetStreamState(), kVXStreamFailed);
        stream.Seek(0, kVXSeekFromStart);
        stream.SetMode(IVXStream::kRead);
        EXPECT_EQ(stream.GetStreamState(), kVXStreamFailed) << "a writer that goes back must not hide it";
    }
}

/// No file grows beyond `size` as long as this lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) : m_OldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_Old);
        const rlimit tight = {size, m_Old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_Old);
        std::signal(SIGXFSZ, m_OldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_Old = {};
    void (*m_OldHandler)(int);
};

TEST(CVXStreamReadWrite, AMediumThatFillsUpTakesWhatFits) {
    const ScratchFile file;
    CVXStreamReadWrite stream(file.Path(), CVXStreamReadWrite::kCreateOrEmpty);
    stream.SetMode(IVXStream::kWrite);
    Bytes large = Pattern(3 * kBuffer);
    Bytes tail = {1, 2, 3};
    {
        const FileSizeLimit limit(100000);
        EXPECT_EQ(Xfer(stream, large), 100000);
        EXPECT_EQ(stream.GetStreamState(), kVXStreamFailed);
        EXPECT_EQ(Xfer(stream, tail), 3) << "the buffer has room";
        stream.Flush();
        stream.Seek(0, kVXSeekFromStart);
        EXPECT_EQ(Xfer(stream, tail), 0) << "the buffer is still needed";
    }
    EXPECT_EQ(file.Read(), Part(large, 0, 100000));
    stream.Flush();
    Bytes expected = Part(large, 0, 100000);
    expected.insert(expected.end(), tail.begin(), tail.end());
    EXPECT_EQ(file.Read(), expected) << "what was left in the buffer goes out when there is room again";
}

TEST(CVXStreamReadWrite, FilesBeyondThePositionsAreReadAsFarAsTheyReach) {
    const ScratchFile file;
    ASSERT_EQ(truncate(file.Path(), (off_t{1} << 32) + 10), 0);  // sparse: takes no space
    CVXStreamReadWrite stream(open(file.Path(), O_RDWR | O_CLOEXEC));
    EXPECT_EQ(stream.Seek(0, kVXSeekFromEnd), 0);
    for (const auto mode : {IVXStream::kRead, IVXStream::kWrite}) {
        stream.SetMode(mode);
        stream.Seek(INT_MAX, kVXSeekFromStart);
        stream.Seek(INT_MAX, kVXSeekFromCurrent);
        Bytes bytes(5);
        EXPECT_EQ(Xfer(stream, bytes), 1);
        EXPECT_EQ(stream.Tell(), 4294967295U);
        EXPECT_EQ(stream.GetStreamState(), mode == IVXStream::kRead ? kVXStreamAtEnd : kVXStreamFailed);
    }
}

}  // namespace

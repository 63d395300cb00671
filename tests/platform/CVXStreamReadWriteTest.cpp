#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/Test.h"

namespace {

constexpr int kBuffer = 64 * 1024;  // what a file stream keeps at least

Bytes Part(const Bytes& bytes, std::size_t begin, std::size_t end) {
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                 bytes.begin() + static_cast<std::ptrdiff_t>(end));
}

/// How many of the bytes went out.
int Put(IVXStream& stream, Bytes bytes) {
    stream.SetMode(IVXStream::kWrite);
    return stream.XferByte(bytes.data(), static_cast<int>(bytes.size()));
}

Bytes Get(IVXStream& stream, int count) {
    stream.SetMode(IVXStream::kRead);
    Bytes bytes(static_cast<std::size_t>(count));
    bytes.resize(static_cast<std::size_t>(stream.XferByte(bytes.data(), count)));
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
    explicit ScratchFile(const Bytes& bytes = {}) {
        close(mkstemp(m_Path.data()));
        std::ofstream(m_Path).write(reinterpret_cast<const char*>(bytes.data()),
                                    static_cast<std::streamsize>(bytes.size()));
    }
    ~ScratchFile() { unlink(Path()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const char* Path() const { return m_Path.c_str(); }
    Bytes Read() const {
        std::ifstream in(m_Path);
        return Bytes(std::istreambuf_iterator<char>(in), {});
    }

private:
    std::string m_Path = testing::TempDir() + "vxstreamXXXXXX";
};

struct Kind {
    const char* name;
    std::function<std::unique_ptr<CVXStreamReadWrite>(const ScratchFile&)> make;
};

/// What holds for every kind of stream. Each starts empty.
class EveryStream : public testing::TestWithParam<Kind> {
protected:
    void SetUp() override {
        stream = GetParam().make(m_File);
        ASSERT_EQ(stream->Open(), 1);
        ASSERT_TRUE(stream->IsReading());
    }

private:
    ScratchFile m_File;

protected:
    std::unique_ptr<CVXStreamReadWrite> stream;  // closed before its file goes
};

std::unique_ptr<CVXStreamReadWrite> MakeFile(const ScratchFile& file) {
    return std::make_unique<CVXStreamReadWrite>(file.Path(), CVXStreamReadWrite::kCreateOrEmpty);
}

INSTANTIATE_TEST_SUITE_P(
    , EveryStream,
    testing::Values(Kind{"Memory", [](const auto&) { return std::make_unique<CVXStreamReadWrite>(); }},
                    Kind{"File", &MakeFile},
                    Kind{"TempFile",
                         [](const auto&) { return std::make_unique<CVXTempFileStreamReadWrite>(); }}),
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
    const std::pair<short, Bytes> orders[] = {
        {0, Hex("FEFF 3412 FDFFFFFF 78563412 FCFFFFFFFFFFFFFF FBFFFFFF 01020304 FAFFFFFF 05060708"
                "000000000000F8BF 00002040 01 01 7F 03000000 78C3A9")},
        {2, Hex("FFFE 1234 FFFFFFFD 12345678 FFFFFFFFFFFFFFFC FFFFFFFB 04030201 FFFFFFFA 08070605"
                "BFF8000000000000 40200000 01 01 7F 00000003 78C3A9")}};
    for (const auto& [swap, wire] : orders) {
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
    }
}

TEST_P(EveryStream, ValuesThatAreCutShortStayAsTheyWere) {
    EXPECT_EQ(Put(*stream, Hex("FF FF FF FF 61 62")), 6);
    stream->SetMode(IVXStream::kRead);
    VXString text("old");
    double real = 7;
    bool flag = true;
    stream->Seek(0, kVXSeekFromStart);
    EXPECT_EQ(stream->XferString(text), 0) << "a length that lies";
    stream->Seek(0, kVXSeekFromStart);
    EXPECT_EQ(stream->XferRealNumber(real), 0);
    stream->Seek(0, kVXSeekFromEnd);
    EXPECT_EQ(stream->XferBool(flag), 0);
    EXPECT_TRUE(text == "old" && real == 7 && flag);
    EXPECT_EQ(stream->GetStreamState(), kVXStreamAtEnd) << "the end of the data is not a failure";
}

TEST_P(EveryStream, RefusesImpossibleCountsAndSeeks) {
    EXPECT_EQ(Put(*stream, {1, 2, 3}), 3);
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
                const Bytes bytes = Noise(static_cast<std::size_t>(count), seed);
                if (count == 0 || model.size() > 20 * kBuffer) break;
                ASSERT_EQ(Put(*stream, bytes), count);
                const std::size_t end = position + bytes.size();
                if (model.size() < end) model.resize(end);
                std::copy(bytes.begin(), bytes.end(), model.begin() + static_cast<std::ptrdiff_t>(position));
                position = end;
                break;
            }
            case 3: {
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

TEST(CVXStreamReadWrite, AFileThatCannotBeOpenedIsEmptyAndTakesNothing) {
    const std::string missing = testing::TempDir() + "no/such/file";
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    CVXStreamReadWrite streams[] = {
        CVXStreamReadWrite(missing.c_str(), CVXStreamReadWrite::kCreateOrEmpty),
        CVXStreamReadWrite(testing::TempDir().c_str(), CVXStreamReadWrite::kOpenExisting),  // a directory
        CVXStreamReadWrite(static_cast<const char*>(nullptr), CVXStreamReadWrite::kOpenExisting),
        CVXStreamReadWrite(pipeEnds[0]),  // cannot seek
    };
    for (auto& stream : streams) {
        EXPECT_EQ(stream.Open(), 0);
        EXPECT_TRUE(Contents(stream).empty());
        EXPECT_EQ(Put(stream, {1}), 0);
        stream.SetEndOfStream();
        stream.Flush();
        stream.Close();
        EXPECT_EQ(stream.GetMemorySize(), 0U);
    }
    EXPECT_EQ(fcntl(pipeEnds[0], F_GETFD), -1) << "a descriptor that is refused is closed all the same";
    close(pipeEnds[1]);
}

TEST(CVXStreamReadWrite, AnExistingFileIsReadOnly) {
    const ScratchFile file(Noise(100));
    CVXStreamReadWrite stream(file.Path(), CVXStreamReadWrite::kOpenExisting);
    stream.Seek(3, kVXSeekFromStart);
    EXPECT_EQ(Get(stream, 1), Part(Noise(100), 3, 4));
    EXPECT_EQ(Put(stream, {1}), 0);
    stream.SetEndOfStream();
    EXPECT_EQ(stream.GetStreamState(), kVXStreamFailed);
    EXPECT_EQ(Contents(stream), Noise(100));
    stream.Close();
    EXPECT_EQ(file.Read(), Noise(100));
}

TEST(CVXStreamReadWrite, FlushCloseAndDestructionBringTheBufferOut) {
    const ScratchFile file;
    for (const int way : {0, 1, 2}) {
        auto stream = MakeFile(file);
        EXPECT_EQ(Put(*stream, {1, 2, 3}), 3);
        EXPECT_TRUE(file.Read().empty()) << "a small write is no system call";
        if (way == 0) stream->Flush();
        if (way == 1) stream->Close();
        if (way == 2) stream.reset();
        EXPECT_EQ(file.Read(), (Bytes{1, 2, 3})) << way;
    }
}

TEST(CVXStreamReadWrite, ADescriptorIsTakenOverAndClosedOnce) {
    const ScratchFile file(Noise(20));
    const int descriptor = open(file.Path(), O_RDWR | O_CLOEXEC);
    lseek(descriptor, 7, SEEK_SET);
    {
        CVXStreamReadWrite stream(descriptor);
        EXPECT_EQ(Contents(stream), Noise(20)) << "from the start, wherever the descriptor stands";
        stream.Close();
        ASSERT_EQ(open(file.Path(), O_RDONLY | O_CLOEXEC), descriptor) << "the number is in use again";
    }
    EXPECT_EQ(close(descriptor), 0) << "and not closed for a second time";
}

TEST(CVXStreamReadWrite, AFullDiskStaysToBeSeen) {
    for (const bool isClosed : {false, true}) {
        CVXStreamReadWrite stream("/dev/full", CVXStreamReadWrite::kCreateOrEmpty);
        EXPECT_EQ(Put(stream, {1, 2, 3}), 3);
        isClosed ? stream.Close() : stream.Flush();
        stream.Seek(0, kVXSeekFromStart);
        stream.SetMode(IVXStream::kRead);
        EXPECT_EQ(stream.GetStreamState(), kVXStreamFailed) << "a writer that goes back must not hide it";
    }
}

TEST(CVXTempFileStreamReadWrite, IsPrivateAndLeavesNothingBehind) {
    std::string directory = testing::TempDir() + "vxtempdirXXXXXX";
    ASSERT_NE(mkdtemp(directory.data()), nullptr);
    setenv("TMPDIR", directory.c_str(), 1);
    const int descriptor = dup(0);  // the one that the next open in this process will get
    close(descriptor);
    {
        CVXTempFileStreamReadWrite stream;
        EXPECT_EQ(Put(stream, {1, 2, 3, 4}), 4);
        stream.Flush();
        struct stat file = {};
        ASSERT_EQ(fstat(descriptor, &file), 0);
        EXPECT_EQ(file.st_mode, static_cast<mode_t>(S_IFREG | 0600));
        EXPECT_EQ(file.st_size, 4);
        EXPECT_EQ(file.st_nlink, 0U) << "nobody else can reach it";
        EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
    }
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
    EXPECT_EQ(rmdir(directory.c_str()), 0) << "empty";
    EXPECT_NE(CVXTempFileStreamReadWrite().Open(), 0) << "the directory is gone, and the usual one does";
    unsetenv("TMPDIR");
}

}  // namespace

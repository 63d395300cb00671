#include "Files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "MovieBytes.h"
#include "Progress.h"
#include "System.h"

namespace {

constexpr std::size_t kLongestMovie = std::size_t{1} << 30;

struct Closer {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};

/// A reader that goes on where the last call ended.
class Input {
public:
    explicit Input(const std::string& file)
        : m_Name(file), m_File(file == kStandardStream ? stdin : std::fopen(file.c_str(), "rb")) {
        if (m_File.get() == stdin) return;
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(file, error);
        if (!error) m_Size = size;
    }

    /// Reads on until `bytes` has `size` of them or the file ends. What goes wrong has been reported.
    ExitCode ReadUpTo(std::size_t size, std::vector<unsigned char>& bytes) {
        if (m_File == nullptr) return ReportUnusable(m_Name);
        constexpr std::size_t kChunk = 1 << 16;
        while (bytes.size() < size) {
            const std::size_t done = bytes.size();
            const std::size_t wanted = std::min(size - done, kChunk);
            bytes.resize(done + wanted);
            const std::size_t count = std::fread(bytes.data() + done, 1, wanted, m_File.get());
            bytes.resize(done + count);
            if (std::ferror(m_File.get()) != 0) return ReportUnusable(m_Name);
            if (count < wanted) break;
            ShowProgress("reading", m_Name, bytes.size(), m_Size);
        }
        EraseProgress();
        return kDone;
    }
    ExitCode ReadAll(std::size_t longest, std::vector<unsigned char>& bytes) {
        if (m_Size <= longest) bytes.reserve(m_Size);
        if (const ExitCode code = ReadUpTo(longest + 1, bytes); code != kDone) return code;
        return bytes.size() <= longest
                   ? kDone
                   : ReportUnusable(m_Name, "is larger than " + std::to_string(longest) + " bytes");
    }

private:
    std::string m_Name;
    std::unique_ptr<std::FILE, Closer> m_File;
    std::uintmax_t m_Size = 0;  // where it is known before the end
};

/// Loads what there is of a compressed movie that is cut. The library gives a movie room by the bytes that
/// came, so the rest is deflated again.
VXErrorCodeEnum LoadCut(const MovieBytes& cut, VXFlintFile& movie) {
    constexpr unsigned int kHeader = 8;
    std::vector<unsigned char> bytes = cut.GetBytes();
    const auto size = static_cast<unsigned int>(bytes.size());
    bytes[0] = 'C';
    VXBitStream stream;
    VX_RETURN_IF_FAILED(stream.Write(bytes.data(), size));
    if (stream.Compress(kHeader, 0, nullptr, nullptr) == 0) return kVXFailure;
    VX_RETURN_IF_FAILED(stream.Write(bytes.data(), kHeader));
    stream.SetPosition(0);
    return movie.LoadFromStream(stream);
}

ExitCode ReportDump(const VXFlintFile&, const std::string& file, VXErrorCodeEnum result, int error) {
    if (result == kVXCompressionFailed && error != 0) {
        return ReportUnusable(
            file, "cannot be compressed through a temporary file: " + std::generic_category().message(error));
    }
    return ReportFailure(file, "dump failed with " + std::to_string(static_cast<int>(result)));
}

ExitCode ReportDump(const VXWholeMovie& movie, const std::string& file, VXErrorCodeEnum, int) {
    return ReportFailure(file, movie.GetErrorText());
}

template <typename Movie>
ExitCode DumpMovie(Movie& movie, const std::string& file, CVXStreamReadWrite& stream) {
    stream.SetMode(IVXStream::kWrite);
    errno = 0;
    const VXErrorCodeEnum result = movie.DumpToStream(&stream);
    stream.Flush();
    const int error = errno;
    EraseProgress();
    // A full disk fails the dump as well, or is seen in the flush alone.
    if (stream.GetStreamState() == kVXStreamFailed)
        return ReportUnusable(file, std::generic_category().message(error));
    return result == kVXSuccess ? kDone : ReportDump(movie, file, result, error);
}

/// For what can only be written once, from front to end.
template <typename Movie>
ExitCode SaveThrough(Movie& movie, const std::string& file, OutputFile& output) {
    CVXStreamReadWrite memory;
    if (const ExitCode code = DumpMovie(movie, file, memory); code != kDone) return code;
    constexpr std::size_t kStep = 1 << 20;
    const std::size_t size = memory.GetMemorySize();
    for (std::size_t done = 0; done < size; done += std::min(size - done, kStep)) {
        if (!output.Write(memory.GetMemory() + done, std::min(size - done, kStep)))
            return ReportUnusable(file);
        ShowProgress("writing", file, done, size);
    }
    EraseProgress();
    return kDone;
}

template <typename Movie>
ExitCode Save(Movie& movie, const std::string& file) {
    OutputFile output;
    if (!output.Open(file)) return ReportUnusable(file);
    if (!output.IsReplaced()) return SaveThrough(movie, file, output);
    const int descriptor = output.TakeDescriptor();
    if (descriptor < 0) return ReportUnusable(file);
    {
        ProgressStream stream(descriptor, file);
        if (const ExitCode code = DumpMovie(movie, file, stream); code != kDone) return code;
    }
    if (!output.Commit()) return ReportUnusable(file);
    if (output.HasOtherNames()) ReportNote(file, "has other names, which go on leading to the old contents");
    return kDone;
}

ExitCode ReportShortness(const std::string& file, IfShort ifShort, const std::string& shortness) {
    if (ifShort == IfShort::kFail) return ReportFailure(file, shortness);
    ReportNote(file, shortness);
    return kDone;
}

bool LoadWhole(const std::vector<unsigned char>& bytes, VXWholeMovie& movie) {
    VXBitStream stream;
    stream.LoadFromAllocedMem(bytes.data(), static_cast<unsigned int>(bytes.size()));
    return movie.LoadFromStream(stream) == kVXSuccess;
}

}  // namespace

ExitCode LoadMovie(const std::string& file, bool isRaw, IfShort ifShort, VXFlintFile& movie) {
    std::vector<unsigned char> bytes;
    if (const ExitCode code = ReadMovie(file, bytes); code != kDone) return code;
    movie.SetParsingMode(isRaw ? 1 : 0);
    VXBitStream stream;
    stream.LoadFromAllocedMem(bytes.data(), static_cast<unsigned int>(bytes.size()));
    const bool isGood = movie.LoadFromStream(stream) == kVXSuccess;
    std::string shortness;
    if (isGood) {
        // The stream holds the inflated movie by now.
        if (stream.GetSize() >= movie.GetFileLength()) return kDone;
        shortness = DescribeEnd(stream.GetSize(), movie.GetFileLength());
    } else {
        MovieBytes framed;
        if (const std::string error = framed.Open(std::move(bytes)); !error.empty())
            return ReportFailure(file, error);
        shortness = framed.DescribeShortness();
        if (shortness.empty()) {
            return ReportFailure(file,
                                 (stream.IsOutOfMemory() ? "takes more memory than it may " : "is damaged ") +
                                     framed.DescribePlace(movie.GetNumTags()));
        }
        // The tags in front of the end are loaded, unless nothing was inflated.
        if (ifShort == IfShort::kNote && framed.IsCompressed() && movie.GetNumTags() == 0)
            VXIgnore(LoadCut(framed, movie));
    }
    return ReportShortness(file, ifShort, shortness);
}

ExitCode LoadWholeMovie(const std::string& file, IfShort ifShort, VXWholeMovie& movie) {
    std::vector<unsigned char> bytes;
    if (const ExitCode code = ReadMovie(file, bytes); code != kDone) return code;
    if (LoadWhole(bytes, movie)) {
        const std::size_t size = movie.GetLoadedLength();
        return size >= movie.GetFileLength()
                   ? kDone
                   : ReportShortness(file, ifShort, DescribeEnd(size, movie.GetFileLength()));
    }
    const std::string error = movie.GetErrorText();
    if (bytes[0] == 'Z') return ReportFailure(file, error);
    MovieBytes framed;
    if (const std::string reason = framed.Open(std::move(bytes)); !reason.empty())
        return ReportFailure(file, reason);
    const std::string shortness = framed.DescribeShortness();
    if (shortness.empty()) return ReportFailure(file, error);
    if (ifShort == IfShort::kNote) {
        if (!LoadWhole(framed.GetBytes(), movie)) return ReportFailure(file, movie.GetErrorText());
        if (framed.IsCompressed()) movie.SetPacking(VXWholeMovie::Packing::kDeflate);
    }
    return ReportShortness(file, ifShort, shortness);
}

ExitCode SaveMovie(VXFlintFile& movie, const std::string& file) { return Save(movie, file); }

ExitCode SaveMovie(VXWholeMovie& movie, const std::string& file) { return Save(movie, file); }

ExitCode ReadMovie(const std::string& file, std::vector<unsigned char>& bytes) {
    Input input(file);
    constexpr std::size_t kSignature = 3;
    bytes.clear();
    if (const ExitCode code = input.ReadUpTo(kSignature, bytes); code != kDone) return code;
    // What never ends, like /dev/zero, is not read to its end.
    if (const std::string refusal = RefuseSignature(bytes); !refusal.empty())
        return ReportFailure(file, refusal);
    return input.ReadAll(kLongestMovie, bytes);
}

ExitCode ReadFile(const std::string& file, std::size_t longest, std::vector<unsigned char>& bytes) {
    bytes.clear();
    return Input(file).ReadAll(longest, bytes);
}

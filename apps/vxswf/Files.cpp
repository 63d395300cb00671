#include "Files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

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

bool HasSignature(const std::vector<unsigned char>& bytes) {
    return bytes.size() >= 3 && (bytes[0] == 'F' || bytes[0] == 'C') && bytes[1] == 'W' && bytes[2] == 'S';
}

ExitCode DumpMovie(VXFlintFile& movie, const std::string& file, CVXStreamReadWrite& stream) {
    stream.SetMode(IVXStream::kWrite);
    errno = 0;
    const VXErrorCodeEnum result = movie.DumpToStream(&stream);
    stream.Flush();
    const int error = errno;
    EraseProgress();
    if (result == kVXSuccess && stream.GetStreamState() != kVXStreamFailed) return kDone;
    // A full disk fails the dump as well, or is seen in the flush alone. What is compressed passes through a
    // temporary file of the library.
    const std::string reason = std::generic_category().message(error);
    if (stream.GetStreamState() == kVXStreamFailed) return ReportUnusable(file, reason);
    if (result == kVXCompressionFailed && error != 0)
        return ReportUnusable(file, "cannot be compressed through a temporary file: " + reason);
    return ReportFailure(file, "dump failed with " + std::to_string(static_cast<int>(result)));
}

/// For what can only be written once, from front to end.
ExitCode SaveThrough(VXFlintFile& movie, const std::string& file, OutputFile& output) {
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

}  // namespace

ExitCode LoadMovie(const std::string& file, bool isRaw, VXFlintFile& movie) {
    Input input(file);
    std::vector<unsigned char> bytes;
    constexpr std::size_t kHeader = 8;
    if (const ExitCode code = input.ReadUpTo(kHeader, bytes); code != kDone) return code;
    // What never ends, like /dev/zero, is not read to its end.
    if (!HasSignature(bytes)) return ReportFailure(file, "is not an SWF movie");
    if (const ExitCode code = input.ReadAll(kLongestMovie, bytes); code != kDone) return code;
    VXBitStream stream;
    stream.LoadFromAllocedMem(bytes.data(), static_cast<unsigned int>(bytes.size()));
    movie.SetParsingMode(isRaw ? 1 : 0);
    const VXErrorCodeEnum result = movie.LoadFromStream(stream);
    return result == kVXSuccess ? kDone : ReportFailure(file, "is cut short or damaged");
}

ExitCode SaveMovie(VXFlintFile& movie, const std::string& file) {
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

ExitCode ReadFile(const std::string& file, std::size_t longest, std::vector<unsigned char>& bytes) {
    bytes.clear();
    return Input(file).ReadAll(longest, bytes);
}

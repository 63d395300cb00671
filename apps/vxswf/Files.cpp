#include "Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "Progress.h"

namespace {

/// A descriptor that is closed in the end.
class Descriptor {
public:
    explicit Descriptor(int descriptor) : m_Descriptor(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (IsOpen()) close(m_Descriptor);
    }

    bool IsOpen() const { return m_Descriptor >= 0; }
    int Get() const { return m_Descriptor; }
    int Release() { return std::exchange(m_Descriptor, -1); }

private:
    int m_Descriptor;
};

/// A stream in memory over all that `descriptor` still gives, or null with the reason in `errno`.
std::unique_ptr<CVXStreamReadWrite> ReadToEnd(int descriptor, const std::string& file) {
    auto memory = std::make_unique<CVXStreamReadWrite>();
    memory->SetMode(IVXStream::kWrite);
    std::vector<unsigned char> chunk(1 << 16);
    while (true) {
        const ssize_t count = read(descriptor, chunk.data(), chunk.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return nullptr;
        if (count == 0) break;
        if (memory->XferByte(chunk.data(), static_cast<int>(count)) != count) {
            errno = EFBIG;
            return nullptr;
        }
        ShowProgress("reading", file, memory->GetMemorySize(), 0);
    }
    memory->Seek(0, kVXSeekFromStart);
    memory->SetMode(IVXStream::kRead);
    return memory;
}

/// A stream over the file, or null with the reason in `errno`. What cannot seek, such as a pipe, is read now.
std::unique_ptr<CVXStreamReadWrite> OpenInput(const std::string& file) {
    if (file == kStandardStream) return ReadToEnd(STDIN_FILENO, file);
    Descriptor input(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (!input.IsOpen() || fstat(input.Get(), &status) != 0) return nullptr;
    if (!S_ISREG(status.st_mode)) return ReadToEnd(input.Get(), file);
    return std::make_unique<ProgressStream>(input.Release(), file,
                                            static_cast<unsigned long long>(status.st_size));
}

ExitCode DumpMovie(VXFlintFile& movie, const std::string& file, CVXStreamReadWrite& stream) {
    stream.SetMode(IVXStream::kWrite);
    const VXErrorCodeEnum result = movie.DumpToStream(&stream);
    stream.Flush();
    EraseProgress();
    // A full disk fails the dump as well, or is seen in the flush alone.
    if (stream.GetStreamState() == kVXStreamFailed) return ReportUnusable(file, "cannot be written");
    return result == kVXSuccess ? kDone : ReportFailure(file, "dump", result);
}

/// For what can only be written once, from front to end.
ExitCode SaveThrough(VXFlintFile& movie, const std::string& file, int descriptor) {
    CVXStreamReadWrite memory;
    if (const ExitCode code = DumpMovie(movie, file, memory); code != kDone) return code;
    constexpr std::size_t kStep = 1 << 20;
    const std::size_t size = memory.GetMemorySize();
    for (std::size_t done = 0; done < size;) {
        const ssize_t count = write(descriptor, memory.GetMemory() + done, std::min(size - done, kStep));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ReportUnusable(file);
        done += static_cast<std::size_t>(count);
        ShowProgress("writing", file, done, size);
    }
    EraseProgress();
    return kDone;
}

/// The file that `file` leads to; a link may lead to a name that is still free.
std::filesystem::path FollowLinks(const std::string& file) {
    std::filesystem::path path = file;
    std::error_code error;
    for (int hops = 0; hops < 40 && std::filesystem::is_symlink(path, error); ++hops) {
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        path = path.parent_path() / target;
    }
    return path;
}

/// What `open` would give to a new file.
mode_t ModeOfNewFile() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/// A file without contents in a directory, unlinked in the end unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::filesystem::path& directory)
        : m_Path((directory / ".vxswf-XXXXXX").string()), m_File(mkostemp(m_Path.data(), O_CLOEXEC)) {
        if (!m_File.IsOpen()) m_Path.clear();
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!m_Path.empty()) unlink(m_Path.c_str());
    }

    /// The open file, which the caller closes, or −1 with the reason in `errno`.
    int TakeDescriptor() { return m_File.Release(); }
    bool RenameTo(const std::filesystem::path& place) {
        if (rename(m_Path.c_str(), place.c_str()) != 0) return false;
        m_Path.clear();
        return true;
    }

private:
    std::string m_Path;
    Descriptor m_File;
};

/// `old` is what the file was until now, or null for a new one.
ExitCode SaveBeside(VXFlintFile& movie, const std::string& file, const struct stat* old) {
    const std::filesystem::path place = FollowLinks(file);
    // The directory alone would let a file be replaced that must not be written.
    if (old != nullptr && access(place.c_str(), W_OK) != 0) return ReportUnusable(file);
    TemporaryFile temporary(place.parent_path());
    const int descriptor = temporary.TakeDescriptor();
    if (descriptor < 0) return ReportUnusable(file);
    ProgressStream stream(descriptor, file, 0);
    if (const ExitCode code = DumpMovie(movie, file, stream); code != kDone) return code;
    const mode_t mode = old != nullptr ? old->st_mode & 07777 : ModeOfNewFile();
    // A system that writes late tells of a full disk only when it is asked.
    if (fsync(descriptor) != 0 || fchmod(descriptor, mode) != 0 || !temporary.RenameTo(place)) {
        return ReportUnusable(file);
    }
    return kDone;
}

}  // namespace

ExitCode LoadMovie(const std::string& file, bool isRaw, VXFlintFile& movie) {
    ForgetLibraryMessage();
    const std::unique_ptr<CVXStreamReadWrite> stream = OpenInput(file);
    if (stream == nullptr) return ReportUnusable(file);
    movie.SetParsingMode(isRaw ? 1 : 0);
    const VXErrorCodeEnum result = movie.LoadFromStream(stream.get());
    EraseProgress();
    if (stream->GetStreamState() == kVXStreamFailed) return ReportUnusable(file, "cannot be read");
    return result == kVXSuccess ? kDone : ReportFailure(file, "load", result);
}

ExitCode SaveMovie(VXFlintFile& movie, const std::string& file) {
    ForgetLibraryMessage();
    if (file == kStandardStream) return SaveThrough(movie, file, STDOUT_FILENO);
    struct stat old = {};
    if (stat(file.c_str(), &old) != 0) {
        return errno == ENOENT ? SaveBeside(movie, file, nullptr) : ReportUnusable(file);
    }
    if (S_ISREG(old.st_mode)) return SaveBeside(movie, file, &old);
    const Descriptor output(open(file.c_str(), O_WRONLY | O_CLOEXEC));
    return output.IsOpen() ? SaveThrough(movie, file, output.Get()) : ReportUnusable(file);
}

ExitCode ReadFile(const std::string& file, std::size_t longest, std::vector<unsigned char>& bytes) {
    const Descriptor input(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!input.IsOpen()) return ReportUnusable(file);
    constexpr std::size_t kChunk = 1 << 16;
    std::size_t size = 0;
    while (size <= longest) {
        bytes.resize(size + kChunk);
        const ssize_t count = read(input.Get(), bytes.data() + size, kChunk);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ReportUnusable(file);
        size += static_cast<std::size_t>(count);
        bytes.resize(size);
        if (count == 0) return kDone;
    }
    return ReportUnusable(file, "is larger than " + std::to_string(longest) + " bytes");
}

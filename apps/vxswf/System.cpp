#include "System.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

constexpr int kEndingSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

// Of the temporary file that a signal removes; changed only while the ending signals are blocked.
std::string g_TemporaryPath;

extern "C" void RemoveTemporaryFile(int signal) {
    if (!g_TemporaryPath.empty()) unlink(g_TemporaryPath.c_str());
    raise(signal);  // the default action is in force again
}

/// Keeps the ending signals waiting.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t ending;
        sigemptyset(&ending);
        for (const int signal : kEndingSignals) sigaddset(&ending, signal);
        sigprocmask(SIG_BLOCK, &ending, &m_Before);
    }
    ~SignalsBlocked() { sigprocmask(SIG_SETMASK, &m_Before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t m_Before;
};

/// What `open` would give to a new file.
mode_t ModeOfNewFile() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

fs::path ParentOf(const fs::path& path) { return path.has_parent_path() ? path.parent_path() : "."; }

bool IsOfSystem(const fs::path& directory) {
    const std::string text = directory.string() + '/';
    return text.starts_with("/dev/") || text.starts_with("/proc/");
}

/// The number of an open descriptor, or −1.
int ReadDescriptor(const std::string& name) {
    int number = -1;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    return error == std::errc() && end == name.data() + name.size() ? number : -1;
}

}  // namespace

void PrepareProcess() {
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    for (const int signal : kEndingSignals) {
        struct sigaction action = {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN) continue;  // as nohup wants it
        action.sa_handler = RemoveTemporaryFile;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

bool IsErrorATerminal() { return isatty(STDERR_FILENO) != 0; }

OutputFile::~OutputFile() {
    if (m_Target >= 0) close(m_Target);
    if (m_Descriptor < 0) return;
    close(m_Descriptor);
    const SignalsBlocked blocked;
    if (!g_TemporaryPath.empty()) unlink(g_TemporaryPath.c_str());
    g_TemporaryPath.clear();
}

bool OutputFile::Open(const std::string& name) {
    if (name == "-") {
        m_Borrowed = STDOUT_FILENO;
        return true;
    }
    struct stat old = {};
    m_IsNew = stat(name.c_str(), &old) != 0;
    if (m_IsNew && errno != ENOENT) return false;

    // The end of a chain of links may still be free, and a chain may pass through the system's directories.
    fs::path place = name;
    std::error_code error;
    const fs::path descriptors = fs::canonical("/dev/fd", error);
    bool isOfSystem = false;
    for (int hops = 0; hops < 40; ++hops) {
        const fs::path parent = fs::canonical(ParentOf(place), error);
        if (!error && IsOfSystem(parent)) isOfSystem = true;
        if (isOfSystem && parent == descriptors) m_Borrowed = ReadDescriptor(place.filename().string());
        if (m_Borrowed >= 0 || !fs::is_symlink(place, error)) break;
        place = ParentOf(place) / fs::read_symlink(place, error);
    }
    m_Place = isOfSystem ? name : place.string();
    if (isOfSystem || m_Borrowed >= 0 || (!m_IsNew && !S_ISREG(old.st_mode))) return true;

    // The directory alone would let a file be replaced that must not be written.
    if (!m_IsNew && access(m_Place.c_str(), W_OK) != 0) return false;
    m_OldUser = old.st_uid;
    m_OldGroup = old.st_gid;
    m_Mode = m_IsNew ? ModeOfNewFile() : old.st_mode & 07777;
    m_HasOtherNames = !m_IsNew && old.st_nlink > 1;

    std::string path = (place.parent_path() / ".vxswf-XXXXXX").string();
    const SignalsBlocked blocked;
    m_Descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (m_Descriptor < 0) return false;
    g_TemporaryPath = path;
    return true;
}

int OutputFile::TakeDescriptor() const { return fcntl(m_Descriptor, F_DUPFD_CLOEXEC, 0); }

bool OutputFile::Commit() {
    unsigned int mode = m_Mode;
    struct stat made = {};
    if (fstat(m_Descriptor, &made) != 0) return false;
    if (!m_IsNew) {
        constexpr auto kAsItIs = static_cast<unsigned int>(-1);
        const bool keepsUser = made.st_uid == m_OldUser || fchown(m_Descriptor, m_OldUser, kAsItIs) == 0;
        const bool keepsGroup = made.st_gid == m_OldGroup || fchown(m_Descriptor, kAsItIs, m_OldGroup) == 0;
        if (!keepsUser || !keepsGroup) mode &= 0777;
        // Another group may do what everybody may.
        if (!keepsGroup) mode = (mode & ~070u) | (mode & 07) << 3;
    }
    // A system that writes late tells of a full disk only when it is asked.
    if (fchmod(m_Descriptor, mode) != 0 || fsync(m_Descriptor) != 0) return false;
    {
        const SignalsBlocked blocked;
        if (rename(g_TemporaryPath.c_str(), m_Place.c_str()) != 0) return false;
        g_TemporaryPath.clear();
    }
    // The file has its name. Not every file system brings a directory to the disk, and not every user may ask.
    const int directory = open(ParentOf(m_Place).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory < 0) return true;
    fsync(directory);
    close(directory);
    return true;
}

bool OutputFile::OpenTarget() {
    // A descriptor opened by its name anew would write from the start and over what a file holds.
    m_Target = m_Borrowed >= 0 ? fcntl(m_Borrowed, F_DUPFD_CLOEXEC, 0)
                               : open(m_Place.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    return m_Target >= 0;
}

bool OutputFile::Write(const unsigned char* data, std::size_t size) {
    if (m_Target < 0 && !OpenTarget()) return false;
    for (std::size_t done = 0; done < size;) {
        const ssize_t count = write(m_Target, data + done, size - done);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

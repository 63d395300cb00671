#include "kit/VXMovieIO.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <system_error>
#include <utility>

#include "framework/VXSwfTag.h"
#include "platform/CVXStreamReadWrite.h"

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40;

fs::path ToPath(const std::string& path) { return std::u8string(path.begin(), path.end()); }

std::string ToText(const fs::path& path) {
    const std::u8string units = path.u8string();
    return std::string(units.begin(), units.end());
}

/// Where a movie goes; a link may lead to a name that is still free.
fs::path FollowLinks(fs::path path) {
    std::error_code error;
    for (int i = 0; i < kMostLinks && fs::is_symlink(path, error); ++i)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

/// A name in the same directory that nobody guesses.
fs::path NameBeside(const fs::path& place) {
    const auto now =
        static_cast<unsigned long long>(std::chrono::steady_clock::now().time_since_epoch().count());
    unsigned int random = 0;
    try {
        random = std::random_device()();
    } catch (const std::exception&) {
        // There is no source of such numbers; the time is left.
    }
    char digits[40];
    std::snprintf(digits, sizeof digits, ".%08x%llx", random, now);
    fs::path beside = place;
    beside.replace_filename(digits);
    beside += ".tmp";
    return beside;
}

/// Takes a file away again unless it was renamed.
struct Beside {
    fs::path path;
    ~Beside() {
        std::error_code error;
        if (!path.empty()) fs::remove(path, error);
    }
};

/// Where and why a `VXFlintFile` does not load, as far as a movie of bytes knows it.
std::string Explain(VXFlintFile& movie, IVXStream& stream, VXErrorCodeEnum code) {
    VXWholeMovie whole;
    if (whole.LoadFromStream(&stream) != kVXSuccess) return "cannot be loaded: " + whole.GetErrorText();
    if (whole.GetPacking() == VXWholeMovie::Packing::kLzma)
        return "is compressed with LZMA (ZWS), which VXWholeMovie alone can read";
    std::string text = "cannot be loaded: ";
    const unsigned int numRead = movie.GetNumTags();
    if (numRead < whole.GetNumTags()) {
        VXString name;
        (*std::next(whole.begin(), numRead))->GetTextInfo(name);
        text += "damaged inside tag " + std::to_string(numRead + 1) + ", " + name.GetUTF8String() + ": ";
    }
    return text + VXErrorText(code);
}

}  // namespace

const char* VXErrorText(VXErrorCodeEnum code) {
    switch (code) {
        case kVXSuccess:
            return "no error";
        case kVXFailure:
            return "data ended early, a write did not fit, or memory ran out";
        case kVXCompressionFailed:
            return "the movie could not be compressed";
    }
    return "an error of the host's own";
}

VXMovieIO::VXMovieIO() = default;
VXMovieIO::~VXMovieIO() = default;

void VXMovieIO::SetProgress(VXProgress progress) { m_Progress = std::move(progress); }

VXErrorCodeEnum VXMovieIO::Fail(const std::string& path, const std::string& text, VXErrorCodeEnum code) {
    m_ErrorText = path + ": " + text;
    return code;
}

VXErrorCodeEnum VXMovieIO::FailForSystem(const std::string& path, const std::string& text) {
    const int reason = errno;
    return Fail(path, reason == 0 ? text : text + ": " + std::generic_category().message(reason));
}

/// `read` gives the text of its failure, or an empty one.
template <typename Read>
VXErrorCodeEnum VXMovieIO::ReadFile(const std::string& path, const Read& read) {
    m_ErrorText.clear();
    std::error_code error;
    if (fs::is_directory(ToPath(path), error)) return Fail(path, "is a directory");
    errno = 0;
    CVXStreamReadWrite file(path.c_str(), CVXStreamReadWrite::kOpenExisting);
    if (file.Open() == 0) return FailForSystem(path, "cannot be opened");
    VXProgressStream stream(file, m_Progress);
    errno = 0;
    std::string reason;
    const VXErrorCodeEnum code = read(stream, reason);
    if (stream.IsStopped()) return Fail(path, "the load was stopped");
    if (file.GetStreamState() == kVXStreamFailed) return FailForSystem(path, "cannot be read");
    return code == kVXSuccess ? code : Fail(path, reason, code);
}

VXErrorCodeEnum VXMovieIO::Load(VXFlintFile& movie, const std::string& path) {
    return ReadFile(path, [&](IVXStream& stream, std::string& reason) {
        if (auto* whole = dynamic_cast<VXWholeMovie*>(&movie)) {
            const VXErrorCodeEnum code = whole->LoadFromStream(&stream);
            reason = "cannot be loaded: " + whole->GetErrorText();
            return code;
        }
        const VXErrorCodeEnum code = movie.LoadFromStream(&stream);
        if (code != kVXSuccess) reason = Explain(movie, stream, code);
        return code;
    });
}

VXErrorCodeEnum VXMovieIO::Combine(VXMovieCombiner& combiner, const std::string& path,
                                   const VXMovieCombiner::Options& options) {
    return ReadFile(path, [&](IVXStream& stream, std::string& reason) {
        const VXErrorCodeEnum code = combiner.Combine(&stream, options);
        reason = "cannot be combined: " + combiner.GetErrorText();
        return code;
    });
}

VXErrorCodeEnum VXMovieIO::Dump(VXFlintFile& movie, const std::string& path, IVXStream& stream) {
    VXProgressStream reporting(stream, m_Progress);
    reporting.SetMode(IVXStream::kWrite);
    errno = 0;
    auto* whole = dynamic_cast<VXWholeMovie*>(&movie);
    const VXErrorCodeEnum code =
        whole != nullptr ? whole->DumpToStream(&reporting) : movie.DumpToStream(&reporting);
    reporting.Flush();
    if (reporting.IsStopped()) return Fail(path, "the save was stopped");
    // A full disk fails the dump as well, or is seen in the flush alone.
    if (stream.GetStreamState() == kVXStreamFailed) return FailForSystem(path, "cannot be written");
    if (code == kVXSuccess) return code;
    return Fail(path, "cannot be made: " + (whole != nullptr ? whole->GetErrorText() : VXErrorText(code)),
                code);
}

VXErrorCodeEnum VXMovieIO::Save(VXFlintFile& movie, const std::string& path) {
    m_ErrorText.clear();
    std::error_code error;
    const fs::path place = FollowLinks(ToPath(path));
    const fs::file_status status = fs::status(place, error);
    if (fs::is_directory(status)) return Fail(path, "is a directory");
    if (fs::exists(status)) {
        // The directory alone would let a file be replaced that must not be written.
        errno = 0;
        std::ofstream old(place, std::ios::binary | std::ios::app);
        if (!old) return FailForSystem(path, "cannot be written");
        if (!fs::is_regular_file(status)) {
            CVXStreamReadWrite memory;
            VX_RETURN_IF_FAILED(Dump(movie, path, memory));
            old.write(reinterpret_cast<const char*>(memory.GetMemory()),
                      static_cast<std::streamsize>(memory.GetMemorySize()));
            return old.flush() ? kVXSuccess : FailForSystem(path, "cannot be written");
        }
        old.close();  // systems differ in what may be renamed over an open file
    }
    Beside beside;
    const fs::path name = NameBeside(place);
    errno = 0;
    CVXStreamReadWrite file(ToText(name).c_str(), CVXStreamReadWrite::kCreateOrEmpty);
    if (file.Open() == 0) return FailForSystem(path, "cannot be written");
    beside.path = name;
    VX_RETURN_IF_FAILED(Dump(movie, path, file));
    errno = 0;
    file.Close();
    if (file.GetStreamState() == kVXStreamFailed) return FailForSystem(path, "cannot be written");
    if (fs::exists(status)) fs::permissions(name, status.permissions(), error);
    fs::rename(name, place, error);
    if (error) return Fail(path, "cannot be replaced: " + error.message());
    beside.path.clear();
    return kVXSuccess;
}

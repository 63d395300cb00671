#include "Extraction.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "ExtractPage.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostItems = 100000;
constexpr std::size_t kMostNotes = 1000;
constexpr unsigned int kMostPixels = 1 << 24;  // of one picture, which is what players show

/// What is left of a name that may hold anything.
std::string SafePart(const std::string& name) {
    constexpr std::size_t kLongest = 40;
    std::string safe;
    for (const char c : name) {
        const bool isSafe = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (isSafe) {
            safe += c;
        } else if (!safe.empty() && safe.back() != '_') {
            safe += '_';
        }
        if (safe.size() == kLongest) break;
    }
    return safe;
}

}  // namespace

// More than any movie takes that was made to be seen: a large one has large pictures.
Extraction::Extraction(std::string movie, std::string directory, std::size_t size)
    : m_Movie(std::move(movie)),
      m_Directory(std::move(directory)),
      m_PixelsLeft((std::uint64_t{1} << 26) + std::uint64_t{64} * size),
      m_BytesLeft((std::uint64_t{1} << 27) + std::uint64_t{64} * size) {}

bool Extraction::Begin(const std::set<std::string>& only) {
    m_Only = only;
    std::error_code error;
    fs::create_directories(m_Directory, error);
    if (error) m_Code = ReportUnusable(m_Directory, error.message());
    return GoesOn();
}

bool Extraction::Admit() {
    if (m_Items.size() < kMostItems || !GoesOn()) return GoesOn();
    m_Code =
        ReportFailure(m_Movie, "holds more than " + std::to_string(kMostItems) + " things; the rest is left");
    return false;
}

OpenFile Extraction::Open(const std::string& path) {
    const fs::path place = fs::path(m_Directory) / path;
    std::error_code error;
    // A link in place of a folder would lead elsewhere.
    if (path.find('/') != std::string::npos && fs::is_symlink(place.parent_path(), error)) {
        errno = ENOTDIR;
    } else {
        fs::create_directory(place.parent_path(), error);
        fs::remove(place, error);
        OpenFile file(std::fopen(place.c_str(), "wbx"));
        if (file != nullptr) return file;
    }
    m_Code = ReportUnusable(place.string());
    return nullptr;
}

OpenFile Extraction::Create(const char* kind, const std::string& stem, const std::string& ending, Json item) {
    if (!Admit()) return nullptr;
    std::string path = std::string(kind) + '/' + stem;
    // A movie may define an ID twice.
    if (const unsigned int number = ++m_Paths[path]; number > 1) path += "-no" + std::to_string(number);
    path += ending;
    OpenFile file = Open(path);
    item["file"] = path;
    if (file != nullptr) Add(kind, std::move(item));
    return file;
}

void Extraction::Add(const char* kind, Json item) {
    if (!Admit()) return;
    Json whole = {{"kind", kind}};
    whole.update(item);
    constexpr std::size_t kLongestText = 1 << 16;
    for (Json& value : whole) {
        if (value.is_string() && value.get_ref<std::string&>().size() > kLongestText)
            value.get_ref<std::string&>().resize(kLongestText);
    }
    m_Items.push_back(std::move(whole));
}

void Extraction::Save(const char* kind, const std::string& stem, const std::string& ending, Json item,
                      std::initializer_list<ByteSpan> contents) {
    std::size_t size = 0;
    for (const ByteSpan part : contents) size += part.size();
    if (size > m_BytesLeft) {
        m_Code = ReportFailure(m_Movie, "holds more than can be taken out; the rest is left");
        return;
    }
    m_BytesLeft -= size;
    OpenFile file = Create(kind, stem, ending, std::move(item));
    if (file == nullptr) return;
    for (const ByteSpan part : contents) std::fwrite(part.data(), 1, part.size(), file.get());
    Finish(std::move(file));
}

void Extraction::SaveText(const char* kind, const std::string& stem, Json item, const std::string& text) {
    Save(kind, stem, ".txt", std::move(item),
         {ByteSpan(reinterpret_cast<const unsigned char*>(text.data()), text.size())});
}

void Extraction::Finish(OpenFile file) {
    const bool isWritten = std::ferror(file.get()) == 0;
    if (std::fclose(file.release()) != 0 || !isWritten) m_Code = ReportUnusable(m_Directory);
}

void Extraction::Note(const std::string& text) {
    if (m_Notes.size() == kMostNotes) return;
    m_Notes.push_back(text);
    ReportNote(m_Movie, text);
}

bool Extraction::AdmitPicture(unsigned int width, unsigned int height) {
    const std::uint64_t pixels = std::uint64_t{width} * height;
    if (pixels == 0 || pixels > kMostPixels || pixels > m_PixelsLeft) return false;
    m_PixelsLeft -= pixels;
    return true;
}

std::string Extraction::StemOf(unsigned short id) const {
    const auto found = exports.find(id);
    const std::string name = found == exports.end() ? "" : SafePart(found->second);
    return std::to_string(id) + (name.empty() ? "" : "-") + name;
}

void Extraction::WriteIndex(Json header) {
    std::stable_sort(m_Items.begin(), m_Items.end(),
                     [](const Json& a, const Json& b) { return a["kind"] < b["kind"]; });
    header["items"] = m_Items;
    header["notes"] = m_Notes;
    if (OpenFile file = Open("index.json"); file != nullptr) {
        const std::string text = header.dump(1, ' ', true, Json::error_handler_t::replace) + '\n';
        std::fwrite(text.data(), 1, text.size(), file.get());
        Finish(std::move(file));
    }
    OpenFile file = Open("index.html");
    if (file == nullptr) return;
    WritePage(header, file.get());
    Finish(std::move(file));
}

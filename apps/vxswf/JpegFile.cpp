#include "JpegFile.h"

#include <cstdio>  // for the header of libjpeg, which takes FILE and size_t from here

#include <jpeglib.h>

#include <csetjmp>

namespace {

constexpr unsigned char kStart = 0xD8;
constexpr unsigned char kEnd = 0xD9;
constexpr unsigned char kScan = 0xDA;

bool IsFrameHeader(unsigned int marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Copies segments, without starts and ends of images, up to the first end behind a scan.
class Segments {
public:
    explicit Segments(std::vector<unsigned char>& out) : m_Out(out) {}

    void Copy(ByteSpan bytes) {
        std::size_t at = 0;
        while (at + 1 < bytes.size()) {
            if (bytes[at] != 0xFF || bytes[at + 1] == 0xFF || bytes[at + 1] == 0) {
                ++at;  // fill bytes, and what is no marker
                continue;
            }
            const unsigned char marker = bytes[at + 1];
            at += 2;
            if (marker == kEnd && m_HasScan) return;
            if (marker == kStart || marker == kEnd || (marker >= 0xD0 && marker <= 0xD7) || marker == 1)
                continue;
            if (bytes.size() - at < 2) return;
            const std::size_t length = static_cast<std::size_t>(bytes[at] << 8 | bytes[at + 1]);
            if (length < 2 || length > bytes.size() - at) return;
            std::size_t end = at + length;
            if (marker == kScan) {
                m_HasScan = true;
                end = FindMarker(bytes, end);
            }
            if (IsFrameHeader(marker)) m_HasFrame = true;
            Append({0xFF, marker});
            m_Out.insert(m_Out.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
                         bytes.begin() + static_cast<std::ptrdiff_t>(end));
            at = end;
        }
    }
    bool HasImage() const { return m_HasFrame && m_HasScan; }
    void Append(std::initializer_list<unsigned char> bytes) { m_Out.insert(m_Out.end(), bytes); }

private:
    /// The end of the coded data that begin at `at`. Restarts and stuffed zeros belong to them.
    static std::size_t FindMarker(ByteSpan bytes, std::size_t at) {
        for (; at + 1 < bytes.size(); ++at) {
            const unsigned char next = bytes[at + 1];
            if (bytes[at] == 0xFF && next != 0 && next != 0xFF && (next < 0xD0 || next > 0xD7)) return at;
        }
        return bytes.size();
    }

    std::vector<unsigned char>& m_Out;
    bool m_HasFrame = false;
    bool m_HasScan = false;
};

/// How libjpeg tells of an error: it must not come back to where the error was found.
struct Errors {
    jpeg_error_mgr manager;
    jpeg_progress_mgr progress;
    std::jmp_buf wayOut;
    char message[JMSG_LENGTH_MAX];
};

void Leave(j_common_ptr info) {
    auto* errors = reinterpret_cast<Errors*>(info->err);
    errors->manager.format_message(info, errors->message);
    std::longjmp(errors->wayOut, 1);
}

/// A scan takes time for every pixel, and hardly a byte.
void LimitScans(j_common_ptr info) {
    constexpr int kMostScans = 100;
    if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number <= kMostScans) return;
    auto* errors = reinterpret_cast<Errors*>(info->err);
    std::snprintf(errors->message, sizeof errors->message, "it has more than %d scans", kMostScans);
    std::longjmp(errors->wayOut, 1);
}

/// False with a message in `errors`. Nothing in here has a destructor that the way out would pass by. With
/// `rows` the whole image is decoded to them, four bytes a pixel.
bool Decode(const unsigned char* bytes, unsigned long size, jpeg_decompress_struct& info, Errors& errors,
            unsigned char* rows) {
    info.err = jpeg_std_error(&errors.manager);
    errors.manager.error_exit = Leave;
    errors.manager.output_message = [](j_common_ptr) {};
    if (setjmp(errors.wayOut) != 0) return false;
    jpeg_create_decompress(&info);
    errors.progress.progress_monitor = LimitScans;
    info.progress = &errors.progress;
    jpeg_mem_src(&info, bytes, size);
    jpeg_read_header(&info, TRUE);
    if (rows == nullptr) return true;
    info.out_color_space = JCS_EXT_RGBA;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        unsigned char* row = rows + std::size_t{4} * info.output_width * info.output_scanline;
        jpeg_read_scanlines(&info, &row, 1);
    }
    return true;
}

}  // namespace

std::vector<unsigned char> JoinJpeg(ByteSpan tables, ByteSpan image) {
    std::vector<unsigned char> jpeg;
    jpeg.reserve(tables.size() + image.size() + 4);
    Segments segments(jpeg);
    segments.Append({0xFF, kStart});
    segments.Copy(tables);
    segments.Copy(image);
    segments.Append({0xFF, kEnd});
    if (!segments.HasImage()) jpeg.clear();
    return jpeg;
}

bool ReadJpegSize(const std::vector<unsigned char>& jpeg, unsigned int& width, unsigned int& height) {
    jpeg_decompress_struct info = {};
    Errors errors = {};
    const bool isRead = Decode(jpeg.data(), jpeg.size(), info, errors, nullptr);
    width = info.image_width;
    height = info.image_height;
    jpeg_destroy_decompress(&info);
    return isRead;
}

std::string DecodeJpeg(const std::vector<unsigned char>& jpeg, Pixels& pixels) {
    if (!ReadJpegSize(jpeg, pixels.width, pixels.height)) return "it has no header";
    pixels.bytes.assign(std::size_t{4} * pixels.width * pixels.height, 0);
    jpeg_decompress_struct info = {};
    Errors errors = {};
    const bool isDecoded = Decode(jpeg.data(), jpeg.size(), info, errors, pixels.bytes.data());
    jpeg_destroy_decompress(&info);
    return isDecoded ? "" : errors.message;
}

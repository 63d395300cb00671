#include "DemoAssets.h"

#include <cstdio>  // for the header of libjpeg, which takes FILE and size_t from here

#include <jpeglib.h>
#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <utility>

#include "Assets.h"
#include "Files.h"

namespace {

// What players show at most.
constexpr unsigned int kLongestSide = 8191;    // pixels
constexpr unsigned int kMostPixels = 1 << 24;  // of one picture
constexpr std::size_t kLongestFile = 1 << 26;  // bytes

ExitCode CheckSize(const std::string& file, unsigned int width, unsigned int height) {
    if (width <= kLongestSide && height <= kLongestSide && width * height < kMostPixels) return kDone;
    return ReportUnusable(file, "has " + std::to_string(width) + " x " + std::to_string(height) +
                                    " pixels, which is more than players show");
}

ExitCode LoadPicture(const std::string& file, const std::vector<unsigned char>& bytes, DemoAssets& assets) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0)
        return ReportUnusable(file, std::string("is no PNG: ") + image.message);
    if (const ExitCode code = CheckSize(file, image.width, image.height); code != kDone) {
        png_image_free(&image);
        return code;
    }
    image.format = PNG_FORMAT_RGBA;
    assets.pictureWidth = image.width;
    assets.pictureHeight = image.height;
    assets.picture.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, assets.picture.data(), 0, nullptr) == 0)
        return ReportUnusable(file, std::string("is a damaged PNG: ") + image.message);
    return kDone;
}

/// How libjpeg tells of an error: it must not come back to where the error was found.
struct JpegErrors {
    jpeg_error_mgr manager;
    std::jmp_buf wayOut;
    char message[JMSG_LENGTH_MAX];
};

void LeaveJpeg(j_common_ptr info) {
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    errors->manager.format_message(info, errors->message);
    std::longjmp(errors->wayOut, 1);
}

/// False with a message in `errors`. Nothing in here has a destructor that the way out would pass by.
bool ReadJpegHeader(const unsigned char* bytes, unsigned long size, jpeg_decompress_struct& info,
                    JpegErrors& errors) {
    info.err = jpeg_std_error(&errors.manager);
    errors.manager.error_exit = LeaveJpeg;
    errors.manager.output_message = [](j_common_ptr) {};
    if (setjmp(errors.wayOut) != 0) return false;
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, bytes, size);
    jpeg_read_header(&info, TRUE);
    return true;
}

ExitCode LoadPhoto(const std::string& file, std::vector<unsigned char> bytes, DemoAssets& assets) {
    jpeg_decompress_struct info = {};
    JpegErrors errors = {};
    const bool isRead = ReadJpegHeader(bytes.data(), bytes.size(), info, errors);
    const int numComponents = info.num_components;
    const bool isArithmetic = info.arith_code != 0;
    assets.photoWidth = info.image_width;
    assets.photoHeight = info.image_height;
    jpeg_destroy_decompress(&info);
    if (!isRead) return ReportUnusable(file, std::string("is no JPEG: ") + errors.message);
    if (isArithmetic || (numComponents != 1 && numComponents != 3))
        return ReportUnusable(file,
                              "is a JPEG that players do not show: it is not Huffman-coded grey or colour");
    assets.photo = std::move(bytes);
    return CheckSize(file, assets.photoWidth, assets.photoHeight);
}

/// Where the sound begins: an ID3 tag in front may hold what looks like a frame, such as the head of a
/// picture.
std::size_t SkipId3(const std::vector<unsigned char>& bytes) {
    constexpr std::size_t kHeader = 10;
    if (bytes.size() < kHeader || bytes[0] != 'I' || bytes[1] != 'D' || bytes[2] != '3') return 0;
    std::size_t size = kHeader;
    for (std::size_t i = 0; i < 4; ++i) size += static_cast<std::size_t>(bytes[6 + i] & 0x7F) << 7 * (3 - i);
    return std::min(size, bytes.size());
}

ExitCode LoadSound(const std::string& file, std::vector<unsigned char> bytes, DemoAssets& assets) {
    bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(SkipId3(bytes)));
    VXSwfMP3FrameHeader frame;
    if (bytes.size() > VXSwfMP3FrameHeader::kSize) frame.Unpack(bytes.data());
    const int rate = frame.GetSampleRate();
    if (frame.Sync != 0x7FF || frame.GetLayer() != 3 || frame.GetKilobits() <= 0 || rate < 0)
        return ReportUnusable(file, "is no MP3: it does not begin with a frame of Layer III");
    if (rate != 11025 && rate != 22050 && rate != 44100)
        return ReportUnusable(file, "has " + std::to_string(rate) +
                                        " samples a second, and players take 11025, 22050 or 44100");
    assets.sound = std::move(bytes);
    return kDone;
}

/// The bytes of `file`, or of `own` for an empty name.
ExitCode ReadAsset(const std::string& file, const Asset& own, std::vector<unsigned char>& bytes) {
    if (file.empty()) {
        bytes.assign(own.bytes, own.bytes + own.size);
        return kDone;
    }
    const ExitCode code = ReadFile(file, kLongestFile, bytes);
    return code == kDone && bytes.empty() ? ReportUnusable(file, "is empty") : code;
}

}  // namespace

ExitCode LoadDemoAssets(const DemoFiles& files, DemoAssets& assets) {
    std::vector<unsigned char> bytes;
    if (const ExitCode code = ReadAsset(files.png, kRings, bytes); code != kDone) return code;
    if (const ExitCode code = LoadPicture(files.png, bytes, assets); code != kDone) return code;
    if (const ExitCode code = ReadAsset(files.jpeg, kPhoto, bytes); code != kDone) return code;
    if (const ExitCode code = LoadPhoto(files.jpeg, std::move(bytes), assets); code != kDone) return code;
    if (const ExitCode code = ReadAsset(files.mp3, kChime, bytes); code != kDone) return code;
    if (const ExitCode code = LoadSound(files.mp3, std::move(bytes), assets); code != kDone) return code;
    assets.font = VXString(files.font.c_str());
    if (VXInstalledFonts::Has(assets.font)) return kDone;
    std::string nearest;
    for (const VXString& name : VXInstalledFonts::FindNearest(assets.font, 3))
        nearest += (nearest.empty() ? " such as " : ", ") + name.GetUTF8String();
    return ReportUnusable(files.font, "no font has this name; --font takes one that fc-list shows" + nearest);
}

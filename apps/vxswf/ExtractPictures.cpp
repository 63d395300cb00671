#include <png.h>

#include <algorithm>

#include "Extraction.h"
#include "JpegFile.h"

namespace {

/// `colour` without the alpha that it is multiplied by.
unsigned char Divide(unsigned int colour, unsigned int alpha) {
    if (alpha == 0) return 0;
    return static_cast<unsigned char>(std::min((colour * 255 + alpha / 2) / alpha, 255u));
}

void PutMultiplied(unsigned char* pixel, unsigned int red, unsigned int green, unsigned int blue,
                   unsigned int alpha) {
    pixel[0] = Divide(red, alpha);
    pixel[1] = Divide(green, alpha);
    pixel[2] = Divide(blue, alpha);
    pixel[3] = static_cast<unsigned char>(alpha);
}

void PutOpaque(unsigned char* pixel, unsigned char red, unsigned char green, unsigned char blue) {
    const unsigned char colours[] = {red, green, blue, 255};
    std::copy(std::begin(colours), std::end(colours), pixel);
}

void SavePng(Extraction& extraction, unsigned short id, Json item, const Pixels& pixels) {
    item["width"] = pixels.width;
    item["height"] = pixels.height;
    OpenFile file = extraction.Create("pictures", extraction.StemOf(id), ".png", std::move(item));
    if (file == nullptr) return;
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.format = PNG_FORMAT_RGBA;
    image.width = pixels.width;
    image.height = pixels.height;
    // What the file does not take shows when it is closed.
    png_image_write_to_stdio(&image, file.get(), 0, pixels.bytes.data(), 0, nullptr);
    extraction.Finish(std::move(file));
}

/// The bytes of a pixel, or of its index, in a row.
std::size_t BytesPerPixel(unsigned int format) { return format == 3 ? 1 : format == 4 ? 2 : 4; }

void DecodeLossless(const std::vector<unsigned char>& block, unsigned int format, bool hasAlpha,
                    std::size_t numColours, Pixels& pixels) {
    const std::size_t table = numColours * (hasAlpha ? 4 : 3);
    const std::size_t stride = (pixels.width * BytesPerPixel(format) + 3) / 4 * 4;
    const unsigned char* colours = block.data();
    unsigned char* pixel = pixels.bytes.data();
    for (unsigned int y = 0; y < pixels.height; ++y) {
        const unsigned char* from = block.data() + table + y * stride;
        for (unsigned int x = 0; x < pixels.width; ++x, from += BytesPerPixel(format), pixel += 4) {
            if (format == 4) {
                const unsigned int word = static_cast<unsigned int>(from[0] << 8 | from[1]);
                const auto scale = [](unsigned int five) {
                    return static_cast<unsigned char>((five & 31) << 3 | (five & 31) >> 2);
                };
                PutOpaque(pixel, scale(word >> 10), scale(word >> 5), scale(word));
            } else if (format == 5) {
                if (hasAlpha) {
                    PutMultiplied(pixel, from[1], from[2], from[3], from[0]);
                } else {
                    PutOpaque(pixel, from[1], from[2], from[3]);
                }
            } else if (*from < numColours) {  // any other index shows nothing
                const unsigned char* colour = colours + *from * std::size_t{hasAlpha ? 4u : 3u};
                if (hasAlpha) {
                    PutMultiplied(pixel, colour[0], colour[1], colour[2], colour[3]);
                } else {
                    PutOpaque(pixel, colour[0], colour[1], colour[2]);
                }
            }
        }
    }
}

/// What a message calls the picture.
std::string Describe(const FramedTag& tag, unsigned short id) {
    return tag.Describe() + " of character " + std::to_string(id) + ": ";
}

void ExtractLossless(const FramedTag& tag, Extraction& extraction) {
    ByteReader in(tag.body);
    const unsigned short id = in.U16();
    const unsigned int format = in.U8();
    Pixels pixels;
    pixels.width = in.U16();
    pixels.height = in.U16();
    const std::size_t numColours = format == 3 ? in.U8() + std::size_t{1} : 0;
    if (in.HasFailed() || format < 3 || format > 5)
        return extraction.Note(Describe(tag, id) + "its header is damaged");
    if (!extraction.AdmitPicture(pixels.width, pixels.height)) {
        return extraction.Note(Describe(tag, id) + std::to_string(pixels.width) + " x " +
                               std::to_string(pixels.height) + " pixels are left out");
    }
    const bool hasAlpha = tag.type == 36;
    const std::size_t stride = (pixels.width * BytesPerPixel(format) + 3) / 4 * 4;
    const std::size_t size = numColours * (hasAlpha ? 4 : 3) + stride * pixels.height;
    std::vector<unsigned char> block;
    bool isDamaged = false;
    InflateTo(in.GetRest(), size, block, isDamaged);
    if (block.size() < size) {
        extraction.Note(Describe(tag, id) + "its data end early, at byte " + std::to_string(block.size()) +
                        " of " + std::to_string(size));
        block.resize(size);
    }
    pixels.bytes.assign(std::size_t{4} * pixels.width * pixels.height, 0);
    DecodeLossless(block, format, hasAlpha, numColours, pixels);
    SavePng(extraction, id, {{"id", id}, {"type", tag.type}, {"format", format}}, pixels);
}

bool BeginsWith(ByteSpan bytes, std::string_view signature) {
    return bytes.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), bytes.begin(),
                      [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; });
}

/// Puts the alpha plane on pixels whose colours are multiplied by it. False when it is not all there.
bool ApplyAlpha(ByteSpan deflated, Pixels& pixels) {
    std::vector<unsigned char> alpha;
    const std::size_t size = std::size_t{pixels.width} * pixels.height;
    bool isDamaged = false;
    InflateTo(deflated, size, alpha, isDamaged);
    if (alpha.size() < size) return false;
    for (std::size_t i = 0; i < size; ++i) {
        unsigned char* pixel = pixels.bytes.data() + 4 * i;
        PutMultiplied(pixel, pixel[0], pixel[1], pixel[2], alpha[i]);
    }
    return true;
}

void ExtractJpeg(const FramedTag& tag, Extraction& extraction) {
    ByteReader in(tag.body);
    const unsigned short id = in.U16();
    const bool hasAlpha = tag.type == 35 || tag.type == 90;
    std::size_t size = hasAlpha ? in.U32() : in.GetRemaining();
    if (tag.type == 90) in.U16();  // the strength of a filter
    if (size > in.GetRemaining()) {
        extraction.Note(Describe(tag, id) + "its data end early");
        size = in.GetRemaining();
    }
    const ByteSpan image = in.Take(size);
    Json item = {{"id", id}, {"type", tag.type}};
    const std::string stem = extraction.StemOf(id);
    if (BeginsWith(image, "\x89PNG\r\n\x1A\n"))
        return extraction.Save("pictures", stem, ".png", item, {image});
    if (BeginsWith(image, "GIF89a")) return extraction.Save("pictures", stem, ".gif", item, {image});
    const std::vector<unsigned char> jpeg =
        JoinJpeg(tag.type == 6 ? extraction.jpegTables : ByteSpan(), image);
    if (jpeg.empty()) {
        extraction.Note(Describe(tag, id) + "there is no JPEG image in it");
        return extraction.Save("pictures", stem, ".bin", item, {image});
    }
    Pixels pixels;
    const bool hasSize = ReadJpegSize(jpeg, pixels.width, pixels.height);
    if (!in.IsAtEnd()) {
        std::string reason = "it has too many pixels";
        if (hasSize && extraction.AdmitPicture(pixels.width, pixels.height)) {
            reason = DecodeJpeg(jpeg, pixels);
            if (reason.empty() && !ApplyAlpha(in.GetRest(), pixels)) reason = "its alpha ends early";
        }
        if (reason.empty()) return SavePng(extraction, id, item, pixels);
        extraction.Note(Describe(tag, id) + "without its alpha: " + reason);
    }
    item["width"] = pixels.width;
    item["height"] = pixels.height;
    extraction.Save("pictures", stem, ".jpg", item, {jpeg});
}

}  // namespace

void ExtractPicture(const FramedTag& tag, Extraction& extraction) {
    switch (tag.type) {
        case 20:
        case 36:
            return ExtractLossless(tag, extraction);
        case 6:
        case 21:
        case 35:
        case 90:
            return ExtractJpeg(tag, extraction);
        default:
            return;
    }
}

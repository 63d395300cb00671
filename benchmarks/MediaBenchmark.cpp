// Pictures against plain deflate, level 6, over the block that they become; the colour tree for each pixel;
// and an hour of sound.

#include <zlib.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "support/ColdRun.h"
#include "vxswf.h"

namespace {

constexpr unsigned int kSide = 2048;
constexpr std::size_t kPixels = std::size_t{kSide} * kSide;
constexpr int kLevel = 6;

enum Kind { kPhotograph, kFlatArt };

void Require(bool holds) {
    if (!holds) std::abort();
}

/// Gradients with noise as a camera adds it, or squares and discs of one colour each; opaque.
std::vector<unsigned char> MakePixels(Kind kind) {
    std::vector<unsigned char> pixels(kPixels * 4);
    std::uint32_t random = 7;
    const auto noise = [&random] {
        random = random * 1664525u + 1013904223u;
        return random >> 28;
    };
    unsigned char* pixel = pixels.data();
    for (unsigned int y = 0; y < kSide; ++y) {
        for (unsigned int x = 0; x < kSide; ++x, pixel += 4) {
            unsigned int colors[3] = {x / 9, y / 9, (x + y) / 18};
            if (kind == kPhotograph) {
                for (unsigned int& color : colors) color += noise();
            } else {
                const int dx = static_cast<int>(x % 256) - 128;
                const int dy = static_cast<int>(y % 256) - 128;
                const unsigned int shade =
                    (x / 256 * 5 + y / 256 * 3 + (dx * dx + dy * dy < 10000 ? 7 : 0)) % 16;
                for (unsigned int i = 0; i < 3; ++i) colors[i] = shade * (13 + 2 * i) + 10 * i;
            }
            for (unsigned int i = 0; i < 3; ++i) pixel[i] = static_cast<unsigned char>(colors[i]);
            pixel[3] = 0xFF;
        }
    }
    return pixels;
}

void TrueColor(benchmark::State& state, Kind kind) {
    const std::vector<unsigned char> pixels = MakePixels(kind);
    std::vector<unsigned char> block(pixels.size());
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        block[i] = pixels[i + 3];
        for (std::size_t j = 0; j < 3; ++j)
            block[i + 1 + j] = static_cast<unsigned char>(pixels[i + j] * 255 >> 8);
    }
    const auto reference = [&block](ColdClock& clock) {
        clock.Start();
        uLongf size = compressBound(block.size());
        const std::unique_ptr<unsigned char[]> room(new unsigned char[size]);
        Require(compress2(room.get(), &size, block.data(), block.size(), kLevel) == Z_OK);
        clock.Stop();
    };
    const auto work = [&pixels](ColdClock& clock) {
        const VXImage image(kSide, kSide, pixels.data());
        auto* tag = dynamic_cast<VXSwfDefineBitsLossless2Tag*>(
            VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, 0, 0));
        clock.Start();
        Require(tag->CreateImage(image, kVXBitmapQualityTrueColor) == kVXSuccess);
        clock.Stop();
        Require(tag->GetZlibBitmapDataSize() != 0);
        VXSwfTagFactory::DeleteTag(tag);
    };
    CompareCold(state, reference, work, pixels.size());
}

void Quantize(benchmark::State& state, Kind kind) {
    const std::vector<unsigned char> pixels = MakePixels(kind);
    std::vector<unsigned char> indices(kPixels);
    for (auto _ : state) {
        CQuantizer quantizer;
        quantizer.AddPixels(pixels.data(), kPixels);
        Require(quantizer.MakePalette().size() <= 256);
        quantizer.MapPixels(pixels.data(), kPixels, indices.data());
        benchmark::ClobberMemory();
    }
    const double count = static_cast<double>(state.iterations()) * static_cast<double>(kPixels);
    // Seconds divided by 10^9 pixels are nanoseconds a pixel.
    state.counters["ns_per_pixel"] =
        benchmark::Counter(count / 1e9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// 33 blocks that begin with a frame that is none, so that the quick measure gives up, then frames of 128
/// kbit/s.
std::vector<unsigned char> MakeHour() {
    constexpr unsigned int kFrames = 3600u * 44100 / 1152;
    std::vector<unsigned char> sound;
    const auto append = [&sound](const char* header, std::size_t size) {
        sound.resize(sound.size() + size, 0x55);
        std::memcpy(sound.data() + sound.size() - size, header, 4);
    };
    for (unsigned int i = 0; i < 33; ++i) append("\xFF\xFB\xF0\x00", VXSwfMP3Info::kBlockSize);
    for (unsigned int i = 0; i < kFrames; ++i) append("\xFF\xFB\x90\x00", 417);
    return sound;
}

void MeasureSound(benchmark::State& state) {
    const std::vector<unsigned char> sound = MakeHour();
    CVXStreamReadWrite stream(sound.data(), sound.size());
    for (auto _ : state) {
        VXSwfMP3Info info(&stream);
        unsigned int samples = 0;
        Require(!info.MeasureQuickly(samples));
        samples = info.MeasureSlowly();
        Require(samples != 0);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(sound.size()));
}

}  // namespace

// The bound: a ratio of 1.15.
BENCHMARK_CAPTURE(TrueColor, photograph, kPhotograph)->Apply(ColdRuns)->Iterations(5);
BENCHMARK_CAPTURE(TrueColor, flat_art, kFlatArt)->Apply(ColdRuns)->Iterations(15);
// The bounds: 25 ns a pixel for a photograph, 5 ns for flat art.
BENCHMARK_CAPTURE(Quantize, photograph, kPhotograph)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Quantize, flat_art, kFlatArt)->Unit(benchmark::kMillisecond);
BENCHMARK(MeasureSound)->Unit(benchmark::kMillisecond);

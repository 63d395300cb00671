// Bit fields, words and bytes in warm memory, beside the plainest loop over the same number of bytes.

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "vxswf.h"

namespace {

constexpr unsigned int kBytes = 1u << 20;

void SetBytes(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * kBytes);
}

void ReadBits(benchmark::State& state) {
    const auto width = static_cast<unsigned int>(state.range(0));
    const std::vector<unsigned char> bytes(kBytes, 0x5A);
    for (auto _ : state) {
        VXBitStream in;
        in.LoadFromAllocedMem(bytes.data(), kBytes);
        unsigned int sum = 0;
        for (unsigned int left = kBytes * 8; left >= width; left -= width) {
            unsigned int value = 0;
            VXIgnore(in.ReadBits(width, value));  // the loop stays within the data
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    SetBytes(state);
}

void WriteBits(benchmark::State& state) {
    const auto width = static_cast<unsigned int>(state.range(0));
    std::vector<unsigned char> bytes(kBytes);
    for (auto _ : state) {
        VXBitStream out;
        out.LoadFromAllocedMem(bytes.data(), kBytes);
        for (unsigned int left = kBytes * 8; left >= width; left -= width) VXIgnore(out.WriteBits(1, width));
        benchmark::ClobberMemory();
    }
    SetBytes(state);
}

void ReadWords(benchmark::State& state) {
    const std::vector<unsigned char> bytes(kBytes, 0x5A);
    for (auto _ : state) {
        VXBitStream in;
        in.LoadFromAllocedMem(bytes.data(), kBytes);
        unsigned int sum = 0;
        unsigned short word = 0;
        while (in.ReadWord(word) == kVXSuccess) sum += word;
        benchmark::DoNotOptimize(sum);
    }
    SetBytes(state);
}

void WriteWords(benchmark::State& state) {
    std::vector<unsigned char> bytes(kBytes);
    for (auto _ : state) {
        VXBitStream out;
        out.LoadFromAllocedMem(bytes.data(), kBytes);
        unsigned short word = 0;
        while (out.WriteWord(word) == kVXSuccess) ++word;
        benchmark::ClobberMemory();
    }
    SetBytes(state);
}

void PlainBytes(benchmark::State& state) {
    const std::vector<unsigned char> bytes(kBytes, 0x5A);
    for (auto _ : state) {
        const unsigned char* end = bytes.data() + kBytes;
        unsigned int sum = 0;
        for (const unsigned char* at = bytes.data(); at != end; ++at) {
            sum += *at;
            benchmark::DoNotOptimize(sum);
        }
    }
    SetBytes(state);
}

void PlainCopy(benchmark::State& state) {
    const std::vector<unsigned char> bytes(kBytes, 0x5A);
    std::vector<unsigned char> copy(kBytes);
    for (auto _ : state) {
        std::memcpy(copy.data(), bytes.data(), kBytes);
        benchmark::ClobberMemory();
    }
    SetBytes(state);
}

}  // namespace

BENCHMARK(PlainBytes);
BENCHMARK(PlainCopy);
BENCHMARK(ReadBits)->Arg(1)->Arg(5)->Arg(11)->Arg(17)->Arg(32);
BENCHMARK(WriteBits)->Arg(1)->Arg(5)->Arg(11)->Arg(17)->Arg(32);
BENCHMARK(ReadWords);
BENCHMARK(WriteWords);

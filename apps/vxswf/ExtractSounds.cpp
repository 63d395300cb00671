#include <algorithm>
#include <array>
#include <cstdint>

#include "Extraction.h"

namespace {

constexpr unsigned int kPlain = 0;
constexpr unsigned int kAdpcm = 1;
constexpr unsigned int kMp3 = 2;
constexpr unsigned int kPlainLittleEndian = 3;

struct SoundFormat {
    unsigned int coding;
    unsigned int rate;  // samples a second
    bool is16Bit;
    unsigned int numChannels;

    /// As `flags` of a sound or of the head of a stream say it.
    explicit SoundFormat(unsigned int flags)
        : coding(flags >> 4),
          rate(std::array{5512u, 11025u, 22050u, 44100u}[flags >> 2 & 3]),
          is16Bit((flags & 2) != 0),
          numChannels((flags & 1) != 0 ? 2 : 1) {}

    std::string GetCodingName() const {
        static constexpr const char* kNames[] = {"pcm",          "adpcm",       "mp3",       "pcm",
                                                 "nellymoser16", "nellymoser8", "nellymoser"};
        return coding < std::size(kNames) ? kNames[coding]
               : coding == 11             ? "speex"
                                          : "format" + std::to_string(coding);
    }
};

void Put(std::vector<unsigned char>& bytes, unsigned int value, int size) {
    for (int i = 0; i < size; ++i) bytes.push_back(static_cast<unsigned char>(value >> 8 * i));
}

/// The header of a RIFF file with one chunk of uncompressed samples behind it.
std::vector<unsigned char> WaveHeader(const SoundFormat& format, unsigned int bits, std::size_t size) {
    std::vector<unsigned char> header;
    const auto putName = [&](const char* name) { header.insert(header.end(), name, name + 4); };
    const auto dataSize = static_cast<unsigned int>(size);
    const unsigned int frameSize = format.numChannels * bits / 8;
    putName("RIFF");
    Put(header, 36 + dataSize, 4);
    putName("WAVE");
    putName("fmt ");
    Put(header, 16, 4);
    Put(header, 1, 2);
    Put(header, format.numChannels, 2);
    Put(header, format.rate, 4);
    Put(header, format.rate * frameSize, 4);
    Put(header, frameSize, 2);
    Put(header, bits, 2);
    putName("data");
    Put(header, dataSize, 4);
    return header;
}

/// One channel of a sound in the format's own ADPCM, which follows that of the IMA.
class AdpcmChannel {
public:
    void Start(ByteReader& in) {
        m_Sample = in.SignedBits(16);
        m_Index = static_cast<int>(in.Bits(6));
        m_Index = std::min(m_Index, kLastStep);
    }
    int GetSample() const { return m_Sample; }
    void Step(unsigned int code, unsigned int width) {
        static constexpr signed char kTables[4][16] = {
            {-1, 2},
            {-1, -1, 2, 4},
            {-1, -1, -1, -1, 2, 4, 6, 8},
            {-1, -1, -1, -1, -1, -1, -1, -1, 1, 2, 4, 6, 8, 10, 13, 16}};
        const unsigned int sign = 1u << (width - 1);
        int step = kSteps[m_Index];
        int delta = 0;
        for (unsigned int bit = sign >> 1; bit != 0; bit >>= 1, step >>= 1) {
            if ((code & bit) != 0) delta += step;
        }
        delta += step;
        m_Sample = std::clamp((code & sign) != 0 ? m_Sample - delta : m_Sample + delta, -32768, 32767);
        m_Index = std::clamp(m_Index + kTables[width - 2][code & (sign - 1)], 0, kLastStep);
    }

private:
    static constexpr int kLastStep = 88;
    static constexpr short kSteps[kLastStep + 1] = {
        7,    8,     9,     10,    11,    12,    13,    14,    16,    17,    19,    21,    23,    25,   28,
        31,   34,    37,    41,    45,    50,    55,    60,    66,    73,    80,    88,    97,    107,  118,
        130,  143,   157,   173,   190,   209,   230,   253,   279,   307,   337,   371,   408,   449,  494,
        544,  598,   658,   724,   796,   876,   963,   1060,  1166,  1282,  1411,  1552,  1707,  1878, 2066,
        2272, 2499,  2749,  3024,  3327,  3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845, 8630,
        9493, 10442, 11487, 12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};

    int m_Sample = 0;
    int m_Index = 0;
};

/// Appends the samples of `data`, 16 bits each, `most` of a channel at most.
void DecodeAdpcm(ByteSpan data, unsigned int numChannels, std::size_t most, std::vector<unsigned char>& out) {
    constexpr unsigned int kPacket = 4096;  // samples of a channel, the first of them as it is
    constexpr unsigned int kFirst = 16 + 6;
    ByteReader in(data);
    const unsigned int width = in.Bits(2) + 2;
    AdpcmChannel channels[2];
    for (std::size_t done = 0; done < most; ++done) {
        const bool isFirst = done % kPacket == 0;
        if (in.GetRemainingBits() < std::size_t{isFirst ? kFirst : width} * numChannels) return;
        for (unsigned int i = 0; i < numChannels; ++i) {
            if (isFirst) {
                channels[i].Start(in);
            } else {
                channels[i].Step(in.Bits(width), width);
            }
            Put(out, static_cast<unsigned int>(channels[i].GetSample()), 2);
        }
    }
}

Json DescribeFormat(const SoundFormat& format) {
    return {{"coding", format.GetCodingName()}, {"rate", format.rate}, {"channels", format.numChannels}};
}

std::string RawEnding(const SoundFormat& format) {
    return "-" + format.GetCodingName() + "-" + std::to_string(format.rate) +
           (format.numChannels == 2 ? "-stereo.bin" : "-mono.bin");
}

void SaveWave(Extraction& extraction, const std::string& stem, Json item, const SoundFormat& format,
              unsigned int bits, ByteSpan samples) {
    extraction.Save("sounds", stem, ".wav", std::move(item),
                    {WaveHeader(format, bits, samples.size()), samples});
}

}  // namespace

void ExtractSound(const FramedTag& tag, Extraction& extraction) {
    if (tag.type != 14) return;
    ByteReader in(tag.body);
    const unsigned short id = in.U16();
    const SoundFormat format(in.U8());
    const std::uint32_t numSamples = in.U32();
    Json item = {{"id", id}, {"samples", numSamples}};
    item.update(DescribeFormat(format));
    const std::string stem = extraction.StemOf(id);
    switch (format.coding) {
        case kPlain:
        case kPlainLittleEndian:
            return SaveWave(extraction, stem, item, format, format.is16Bit ? 16 : 8, in.GetRest());
        case kAdpcm: {
            std::vector<unsigned char> samples;
            // One more than may be saved, so that it is told.
            const std::uint64_t most = extraction.GetBytesLeft() / 2 + 1;
            DecodeAdpcm(in.GetRest(), format.numChannels, std::min<std::uint64_t>(numSamples, most), samples);
            return SaveWave(extraction, stem, item, format, 16, samples);
        }
        case kMp3:
            in.U16();  // samples to skip
            return extraction.Save("sounds", stem, ".mp3", item, {in.GetRest()});
        default:
            return extraction.Save("sounds", stem, RawEnding(format), item, {in.GetRest()});
    }
}

void StreamedSound::Take(const FramedTag& tag, Extraction& extraction) {
    ByteReader in(tag.body);
    if (tag.type == 18 || tag.type == 45) {
        Finish(extraction);
        in.U8();  // how it is best played
        m_Format = in.U8();
        m_SamplesPerBlock = in.U16();
    } else if (tag.type == 19 && m_Data.size() <= extraction.GetBytesLeft()) {
        ++m_NumBlocks;
        const SoundFormat format(m_Format);
        if (format.coding == kAdpcm) {
            // Each block begins anew. What is left of its last byte may look like samples.
            const std::size_t before = m_Data.size();
            DecodeAdpcm(tag.body, format.numChannels, extraction.GetBytesLeft() / 2 + 1, m_Data);
            const std::size_t size = m_Data.size() - before;
            const std::size_t stated = std::size_t{2} * format.numChannels * m_SamplesPerBlock;
            if (stated != 0 && size > stated && size - stated <= 6) m_Data.resize(before + stated);
            return;
        }
        if (format.coding == kMp3) in.Take(4);  // samples in it, samples to skip
        const ByteSpan data = in.GetRest();
        m_Data.insert(m_Data.end(), data.begin(), data.end());
    }
}

void StreamedSound::Finish(Extraction& extraction) {
    if (m_NumBlocks == 0) return;
    const SoundFormat format(m_Format);
    std::string stem = "stream-" + m_Timeline;
    if (++m_NumStreams > 1) stem += '-' + std::to_string(m_NumStreams);
    Json item = {{"timeline", m_Timeline}, {"blocks", m_NumBlocks}};
    item.update(DescribeFormat(format));
    switch (format.coding) {
        case kPlain:
        case kPlainLittleEndian:
        case kAdpcm:
            SaveWave(extraction, stem, item, format, format.is16Bit || format.coding == kAdpcm ? 16 : 8,
                     m_Data);
            break;
        case kMp3:
            extraction.Save("sounds", stem, ".mp3", item, {m_Data});
            break;
        default:
            extraction.Save("sounds", stem, RawEnding(format), item, {m_Data});
    }
    m_NumBlocks = 0;
    m_Data.clear();
}

#include "support/MovieFile.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "support/ColdRun.h"

namespace {

// Types without a class.
constexpr unsigned int kRawTypes[] = {18, 19, 45, 77, 255};
constexpr std::size_t kHeaderSize = 8 + 7 + 4;
constexpr unsigned char kHeader[kHeaderSize] = {'F',  'W',  'S',  8,    0,    0,    0,  0, 0x60, 0,
                                                0x3E, 0x80, 0x00, 0x1F, 0x40, 0x00, 12, 1, 0};

class Random {
public:
    std::uint32_t Next() {
        m_State = m_State * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>(m_State >> 33);
    }

private:
    std::uint64_t m_State = 7;
};

}  // namespace

MovieFile::MovieFile(const std::function<std::vector<unsigned char>()>& make) {
    const char* directory = std::getenv("TMPDIR");
    m_Path = std::string(directory != nullptr ? directory : "/tmp") + "/vxswf-benchmark-XXXXXX";
    const int descriptor = mkstemp(m_Path.data());
    Require(descriptor >= 0);
    RunCold([&](ColdClock&) {
        const std::vector<unsigned char> tags = make();
        const std::size_t size = kHeaderSize + tags.size() + 2;
        std::vector<unsigned char> header(kHeader, kHeader + kHeaderSize);
        for (unsigned int i = 0; i < 4; ++i) header[4 + i] = static_cast<unsigned char>(size >> 8 * i);
        std::FILE* file = fdopen(descriptor, "wb");
        Require(file != nullptr);
        std::fwrite(header.data(), 1, header.size(), file);
        std::fwrite(tags.data(), 1, tags.size(), file);
        std::fwrite("\0", 1, 2, file);
        Require(std::fclose(file) == 0);
    });
    const off_t end = lseek(descriptor, 0, SEEK_END);
    Require(end > 0 && close(descriptor) == 0);
    m_Size = static_cast<std::size_t>(end);
}

MovieFile::~MovieFile() { unlink(m_Path.c_str()); }

std::vector<unsigned char> MovieFile::Read() const {
    std::vector<unsigned char> movie(m_Size);
    std::FILE* file = std::fopen(GetPath(), "rb");
    Require(file != nullptr && std::fread(movie.data(), 1, m_Size, file) == m_Size);
    std::fclose(file);
    return movie;
}

MovieFile MovieFile::OfSmallTags(std::size_t count) {
    return MovieFile([count] {
        std::vector<unsigned char> tags;
        Random random;
        unsigned char body[20];
        for (unsigned char& byte : body) byte = static_cast<unsigned char>(random.Next());
        for (std::size_t i = 0; i < count; ++i) {
            AppendTag(tags, kRawTypes[random.Next() % std::size(kRawTypes)], body, random.Next() % 21);
        }
        return tags;
    });
}

MovieFile MovieFile::OfLargeTags(std::size_t count, std::size_t size, bool isText) {
    return MovieFile([=] {
        std::vector<unsigned char> tags;
        tags.reserve(count * (size + 6));
        std::vector<unsigned char> body(size);
        Random random;
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t at = 0; at < size; ++at) {
                const std::uint32_t value = random.Next();
                // Half of the letters of a text follow from their place.
                const std::size_t letter = 'a' + (value % 2 == 0 ? at % 23 : value / 2 % 16);
                body[at] = static_cast<unsigned char>(isText ? letter : value);
            }
            AppendTag(tags, 77, body.data(), size);
        }
        return tags;
    });
}

void AppendTag(std::vector<unsigned char>& tags, unsigned int type, const unsigned char* body,
               std::size_t size) {
    const bool isLong = size >= 63;
    const unsigned int word = type << 6 | (isLong ? 63u : static_cast<unsigned int>(size));
    tags.push_back(static_cast<unsigned char>(word));
    tags.push_back(static_cast<unsigned char>(word >> 8));
    for (unsigned int i = 0; isLong && i < 4; ++i) tags.push_back(static_cast<unsigned char>(size >> 8 * i));
    tags.insert(tags.end(), body, body + size);
}

std::size_t TagCopy(const unsigned char* movie, std::size_t size) {
    std::size_t count = 0;
    for (std::size_t at = kHeaderSize; at + 2 <= size;) {
        std::uint16_t word;
        std::memcpy(&word, movie + at, sizeof word);
        at += 2;
        std::uint32_t length = word & 63;
        if (length == 63) {
            std::memcpy(&length, movie + at, sizeof length);
            at += 4;
        }
        if (word >> 6 == 0) break;
        void* copy = std::malloc(length);
        std::memcpy(copy, movie + at, length);
        benchmark::DoNotOptimize(copy);
        at += length;
        ++count;
    }
    return count;
}

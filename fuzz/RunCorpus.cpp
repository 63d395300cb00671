// Runs one fuzzer's function without libFuzzer: over each file of a corpus, and over damaged forms of it that
// are the same in every run. Whatever goes wrong ends the process.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kDamagedForms = 300;

class Random {
public:
    /// Below `limit`, which must not be 0.
    std::size_t Below(std::size_t limit) {
        m_State = m_State * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::size_t>(m_State >> 33) % limit;
    }

private:
    std::uint64_t m_State = 1;
};

void Damage(Bytes& bytes, Random& random) {
    if (bytes.empty()) return;
    constexpr std::uint8_t kOdd[] = {0x00, 0x01, 0x3F, 0x7F, 0x80, 0xBF, 0xFF};
    const std::size_t at = random.Below(bytes.size());
    const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    const std::size_t count = 1 + random.Below(std::min<std::size_t>(8, bytes.size() - at));
    const auto end = place + static_cast<std::ptrdiff_t>(count);
    switch (random.Below(6)) {
        case 0:
            *place ^= static_cast<std::uint8_t>(1u << random.Below(8));
            break;
        case 1:
            std::fill(place, end, kOdd[random.Below(std::size(kOdd))]);
            break;
        case 2:
            bytes.resize(at);
            break;
        case 3:
            bytes.erase(place, end);
            break;
        case 4: {
            const Bytes again(place, end);
            bytes.insert(place, again.begin(), again.end());
            break;
        }
        default:
            *place = static_cast<std::uint8_t>(random.Below(256));
    }
}

void Run(const Bytes& bytes) {
    // A block of just that size, so that a sanitizer sees a read behind the end.
    const Bytes exact(bytes);
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || !std::filesystem::is_directory(argv[1])) {
        std::fprintf(stderr, "usage: %s CORPUS\n", argv[0]);
        return 2;
    }
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        const Bytes original{std::istreambuf_iterator<char>(file), {}};
        Run(original);
        Random random;
        for (int form = 0; form < kDamagedForms; ++form) {
            Bytes damaged = original;
            for (std::size_t i = 0; i <= random.Below(4); ++i) Damage(damaged, random);
            Run(damaged);
        }
    }
    std::printf("%zu files\n", paths.size());
    return paths.empty() ? 1 : 0;
}

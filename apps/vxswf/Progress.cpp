#include "Progress.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>

#include "Report.h"
#include "System.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kInterval{100};
constexpr std::size_t kLongestName = 40;  // bytes, so that the line stays one line

Clock::time_point g_NextTime = Clock::now() + std::chrono::seconds(1);
bool g_IsShown = false;
const bool g_IsTerminal = IsErrorATerminal();

}  // namespace

void ShowProgress(const char* step, const std::string& file, unsigned long long done,
                  unsigned long long all) {
    if (!g_IsTerminal) return;
    const Clock::time_point now = Clock::now();
    if (now < g_NextTime) return;
    g_NextTime = now + kInterval;
    g_IsShown = true;
    const std::string amount =
        all != 0 ? std::to_string(done * 100 / all) + " %" : std::to_string(done >> 20) + " MiB";
    const std::string name = std::filesystem::path(file).filename().string().substr(0, kLongestName);
    std::cerr << "\rvxswf: " + std::string(step) + ' ' + Printable(name) + ": " + amount + "\x1B[K";
}

void EraseProgress() {
    if (g_IsShown) std::cerr << "\r\x1B[K";
    g_IsShown = false;
}

int ProgressStream::XferByte(unsigned char* data, int count) {
    constexpr int kStep = 1 << 20;
    int done = 0;
    while (done < count && data != nullptr) {
        const int wanted = std::min(count - done, kStep);
        const int got = CVXStreamReadWrite::XferByte(data + done, wanted);
        done += got;
        ShowProgress("writing", m_File, Tell(), 0);
        if (got != wanted) break;
    }
    return done;
}

#include "support/ColdRun.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <vector>

namespace {

/// Of the processor, so that what else the machine does is not measured along.
double Now() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// A line of /proc/self/status that counts in KiB.
std::size_t StatusBytes(const char* name) {
    std::size_t kibibytes = 0;
    std::FILE* status = std::fopen("/proc/self/status", "r");
    char line[256];
    while (status != nullptr && std::fgets(line, sizeof line, status) != nullptr) {
        if (std::strncmp(line, name, std::strlen(name)) == 0) {
            kibibytes = std::strtoul(line + std::strlen(name), nullptr, 10);
        }
    }
    if (status != nullptr) std::fclose(status);
    return kibibytes * 1024;
}

void ResetPeak() {
    if (std::FILE* file = std::fopen("/proc/self/clear_refs", "w"); file != nullptr) {
        std::fputs("5", file);
        std::fclose(file);
    }
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

}  // namespace

void Require(bool holds) {
    if (holds) return;
    std::perror("benchmark");
    std::abort();
}

ColdClock::ColdClock() : m_Begin(Now()), m_BytesAtStart(StatusBytes("VmRSS:")) {}

void ColdClock::Start() {
    ResetPeak();
    m_BytesAtStart = StatusBytes("VmRSS:");
    m_IsRunning = true;
    m_Begin = Now();
}

void ColdClock::Stop() {
    m_End = Now();
    m_IsRunning = false;
}

ColdSample RunCold(const ColdWork& work) {
    int ends[2];
    if (pipe(ends) != 0) std::abort();
    const pid_t child = fork();
    if (child < 0) std::abort();
    if (child == 0) {
        ColdClock clock;
        work(clock);
        if (clock.IsRunning()) clock.Stop();
        const std::size_t peak = StatusBytes("VmHWM:");
        const ColdSample sample{clock.Seconds(), peak, peak - std::min(peak, clock.BytesAtStart())};
        const bool isSent = write(ends[1], &sample, sizeof sample) == sizeof sample;
        _exit(isSent ? 0 : 1);
    }
    close(ends[1]);
    ColdSample sample;
    const bool isReceived = read(ends[0], &sample, sizeof sample) == sizeof sample;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!isReceived || status != 0) {
        std::fprintf(stderr, "a measured process failed\n");
        std::abort();
    }
    return sample;
}

void CompareCold(benchmark::State& state, const ColdWork& reference, const ColdWork& work,
                 std::size_t bodyBytes) {
    std::vector<double> referenceTimes;
    std::vector<double> times;
    std::size_t peak = 0;
    std::size_t grown = 0;
    for (auto _ : state) {
        referenceTimes.push_back(RunCold(reference).seconds);
        const ColdSample sample = RunCold(work);
        times.push_back(sample.seconds);
        peak = std::max(peak, sample.peakBytes);
        grown = std::max(grown, sample.grownBytes);
        state.SetIterationTime(sample.seconds);
    }
    state.counters["ratio"] = Median(times) / Median(referenceTimes);
    state.counters["reference"] = Median(referenceTimes) * 1e3;
    state.counters["peak"] = static_cast<double>(peak) / static_cast<double>(bodyBytes);
    state.counters["grown_MiB"] = static_cast<double>(grown) / (1024.0 * 1024.0);
}

void ColdRuns(benchmark::internal::Benchmark* benchmark) {
    benchmark->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
}

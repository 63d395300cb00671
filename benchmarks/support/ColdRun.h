#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>

/// Ends the program when a step of a benchmark failed.
void Require(bool holds);

/// The clock of one measured run. It counts the time that the process keeps the processor. What is to be
/// timed stands between `Start` and `Stop`; without a call the whole run counts.
class ColdClock {
public:
    ColdClock();
    /// Also lets the peak of memory begin anew, at what the process holds now.
    void Start();
    void Stop();
    double Seconds() const { return m_End - m_Begin; }
    /// Bytes that the process held when the clock started.
    std::size_t BytesAtStart() const { return m_BytesAtStart; }
    bool IsRunning() const { return m_IsRunning; }

private:
    double m_Begin;
    double m_End = 0.0;
    std::size_t m_BytesAtStart;
    bool m_IsRunning = true;
};

using ColdWork = std::function<void(ColdClock&)>;

/// What one run took in a process of its own, where no page of memory had been touched before.
struct ColdSample {
    double seconds = 0.0;
    std::size_t peakBytes =
        0;  ///< most that was resident since the clock started, the program itself included
    std::size_t grownBytes = 0;  ///< the same beyond what was resident when the clock started
};

/// Forks, runs `work` in the child and hands its figures back. The process must have one thread. Ends the
/// program when the child fails.
ColdSample RunCold(const ColdWork& work);

/// Runs `reference` and `work` by turns, each time in a fresh process, and reports:
///
///     time       of `work`
///     ratio      median of `work` over median of `reference`
///     reference  median of `reference`, in milliseconds
///     peak       most memory of `work`, the program and its input included, over `bodyBytes`
///     grown_MiB  most memory of `work` beyond what it held when the clock started
void CompareCold(benchmark::State& state, const ColdWork& reference, const ColdWork& work,
                 std::size_t bodyBytes);

/// The settings of a benchmark that calls `CompareCold`, for `Apply`.
void ColdRuns(benchmark::internal::Benchmark* benchmark);

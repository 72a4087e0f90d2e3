#ifndef BENCH_CCPUTIMER_H
#define BENCH_CCPUTIMER_H

#include <bench/BenchMemory.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <utility>

/// CPU time of the parts of a run that count.
class CCpuTimer
{
public:
    CCpuTimer() = default;

    /// @param nBytes  memory that is touched and given back right before the first measurement. A virtual
    ///                machine may hand free large pages back to its host after some seconds; getting them
    ///                again costs up to 25 times as much, and would fall on the side that comes later.
    explicit CCpuTimer(std::size_t nBytes) : m_nBytes(nBytes) {}

    /// Runs `fn` and adds the CPU time of this process to what has been measured.
    template <class TFn>
    void Measure(TFn&& fn)
    {
        if (m_nBytes > 0)
            TouchMemory(std::exchange(m_nBytes, 0));
        const double dStart = Now();
        fn();
        m_dSeconds += Now() - dStart;
    }

    /// From here on what was measured counts as the work of `n` equal pieces: the time of one is told.
    void DivideBy(std::int64_t n) noexcept { m_dSeconds /= static_cast<double>(n); }

    double GetSeconds() const noexcept { return m_dSeconds; }

private:
    static double Now() noexcept
    {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    }

    std::size_t m_nBytes = 0;
    double m_dSeconds = 0.0;
};

#endif

#ifndef BENCH_BENCHTABLE_H
#define BENCH_BENCHTABLE_H

#include <ctime>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// CPU time of the parts of a run that count.
class CCpuTimer
{
public:
    /// Runs `fn` and adds the CPU time of this process to what has been measured.
    template <class TFn>
    void Measure(TFn&& fn)
    {
        const double dStart = Now();
        fn();
        m_dSeconds += Now() - dStart;
    }

    double GetSeconds() const noexcept { return m_dSeconds; }

private:
    static double Now() noexcept
    {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    }

    double m_dSeconds = 0.0;
};

/// One side of a comparison: prepares, measures what counts, and returns a checksum of its result.
using CBenchSide = std::function<std::uint64_t(CCpuTimer&)>;

/// One row of the table.
struct CBenchRow
{
    std::string sGroup; ///< "build", "traversal", "ply", …
    std::string sItem;
    std::int64_t nNum; ///< points, cells or bytes: what the item's N is
    std::string sPeer; ///< whom the product is compared with; empty for a row of one value
    double dBar;       ///< highest ratio, or value, that counts as held; 0: no bar
    CBenchSide product;
    CBenchSide peer;
    bool bSameResult = true; ///< both sides must return the same checksum before a time counts
    double dPerUnits = 0.0;  ///< above 0: the row's value is nanoseconds per unit, of so many units
    int nRounds = 0;         ///< above 0: so many rounds, for a peer that takes minutes
};

/// A row whose product returns a value itself (bytes per point, say) instead of being timed.
struct CBenchValue
{
    std::string sGroup;
    std::string sItem;
    std::int64_t nNum;
    std::string sUnit;
    double dBar;
    std::function<double()> value;
};

/// Options that the benchmarks look at when they register.
struct CBenchOptions
{
    std::int64_t nMaxPnts = 0; ///< --points: the largest cloud, 0 for the default of each row
    bool bQuick = false;       ///< --quick: small clouds and few rounds, to see that all works
};

CBenchOptions& GetBenchOptions();

/// @return the sizes of a row, cut to what the options allow.
std::vector<std::int64_t> BenchSizes(std::vector<std::int64_t> vecDefault);

void AddRow(CBenchRow row);
void AddValue(CBenchValue value);

/// Made once in each file of benchmarks: `fn` adds the file's rows, once the options are known and only
/// when the group is wanted.
struct CBenchGroup
{
    CBenchGroup(const char* pName, void (*fn)());
};

/// Runs the rows of the group that the arguments name (none: all), prints the table and writes every
/// round as JSON. @return exit status: 1 when results differed or a bar was not held.
int RunBench(int argc, char** argv);

#endif

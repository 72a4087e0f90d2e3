#ifndef BENCH_BENCHTABLE_H
#define BENCH_BENCHTABLE_H

#include <bench/BenchMemory.h>

#include <ctime>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

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

/// One side of a comparison: prepares, measures what counts, and returns a checksum of its result.
using CBenchSide = std::function<std::uint64_t(CCpuTimer&)>;

/// What a ratio, or a value, may be at most. 0: no bar.
struct CBenchBar
{
    // One figure stands for a bar without an aim.
    CBenchBar(double dMustHold, double dAimAt = 0.0) : dMust(dMustHold), dAim(dAimAt) {}

    double dMust; ///< above it the row is not held
    double dAim;  ///< where the work on speed goes
};

/// What is done with the checksums of the two sides.
enum enumBenchResult
{
    BenchResult_Same,   ///< they must be equal before a time counts
    BenchResult_Counts, ///< they are numbers of points that differ by nature: the table tells both
    BenchResult_Ignored ///< the sides do different work (ten times the points, say)
};

/// One row of the table.
struct CBenchRow
{
    std::string sGroup; ///< "build", "traversal", "ply", …
    std::string sItem;
    std::int64_t nNum; ///< points, cells or bytes: what the item's N is
    std::string sPeer; ///< whom the product is compared with; empty for a row of one value
    CBenchBar bar;     ///< for the ratio of the medians
    CBenchSide product;
    CBenchSide peer;
    enumBenchResult eResult = BenchResult_Same;
    double dPerUnits = 0.0; ///< above 0: the row's value is nanoseconds per unit, of so many units
    int nRounds = 0;        ///< above 0: so many rounds, for a peer that takes minutes
};

/// A row whose sides return values themselves (bytes per point, say) instead of being timed.
struct CBenchValue
{
    std::string sGroup;
    std::string sItem;
    std::int64_t nNum;
    std::string sUnit;
    CBenchBar bar; ///< for the product's value
    std::function<double()> value;
    std::string sPeer = {};
    std::function<double()> peer = {};
};

/// Options that the benchmarks look at when they register.
struct CBenchOptions
{
    std::int64_t nMaxPnts = 0; ///< --points: the largest cloud, 0 for the default of each row
    bool bQuick = false;       ///< --quick: small clouds and few rounds, to see that all works
    bool bFull = false;        ///< --full: also the rows whose peer takes many minutes
};

CBenchOptions& GetBenchOptions();

/// @return the sizes of a row, cut to what the options allow.
std::vector<std::int64_t> BenchSizes(std::vector<std::int64_t> vecDefault);

void AddRow(CBenchRow row);
void AddValue(CBenchValue value);

/// A sentence that is printed below the table, once: what was left out and why.
void AddNote(const std::string& sNote);

/// Made once in each file of benchmarks: `fn` adds the file's rows, once the options are known and only
/// when the group is wanted. The groups' names and order are a list in BenchTable.cpp.
struct CBenchGroup
{
    CBenchGroup(const char* pName, void (*fn)());
};

/// Runs the rows of the group that the arguments name (none: all), prints the table and writes it, with
/// every round, as JSON. A row that misses its bar is run a second time, which then counts and is told with
/// the figure of the first. @return exit status: 1 when results differed or, without --quick, a bar was not
/// held.
int RunBench(int argc, char** argv);

#endif

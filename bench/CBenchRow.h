#ifndef BENCH_CBENCHROW_H
#define BENCH_CBENCHROW_H

#include <bench/CCpuTimer.h>

#include <cstdint>
#include <functional>
#include <string>

/// One side of a comparison: prepares, measures what counts, and returns a checksum of its result.
using TBenchSide = std::function<std::uint64_t(CCpuTimer&)>;

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
    TBenchSide product;
    TBenchSide peer;
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

#endif

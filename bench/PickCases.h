#ifndef BENCH_PICKCASES_H
#define BENCH_PICKCASES_H

#include <bench/BenchClouds.h>
#include <zor3geom/PNT_3D.h>

#include <cstdint>
#include <vector>

/// Places about the terrain: some of its points, moved by up to two metres each way. Fixed seed.
std::vector<zor::geom::PNT_3D> MakePlaces(std::int64_t nNum, int nNumPlaces);

/// The terrain's points as its cloud has them, in the order of their indices: what a host would scan.
const std::vector<zor::geom::PNT_3D>& GetCldPnts(std::int64_t nNum);

/// What is compared of nearest points: of several at the same distance either side may take another.
class CDistSum
{
public:
    /// @param dSquare  of the distance, as the sum of the squares in the order of the axes.
    void Add(double dSquare) noexcept { m_n = m_n * 31U + static_cast<std::uint64_t>(dSquare * 1e9); }

    std::uint64_t Get() const noexcept { return m_n; }

private:
    std::uint64_t m_n = 0;
};

#endif

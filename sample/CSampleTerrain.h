#ifndef SAMPLE_CSAMPLETERRAIN_H
#define SAMPLE_CSAMPLETERRAIN_H

#include <cstdint>
#include <vector>

/// One point of the synthetic terrain: coordinates in metres, colour 0 to 255 a channel.
struct CSamplePnt
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
};

/// Synthetic airborne scan: hills with small-scale roughness, roads, buildings with flat and gabled
/// roofs, single trees and woods, in natural colours.
///
/// 8 points a square metre over a square whose lower left corner is (500000, 4000000); coordinates in
/// whole millimetres. Points come in scan-line order: rows of growing y, every other row backwards.
/// The same count and seed give the same points on every machine: hashes of integers, and no floating
/// operation beyond + - * / floor and the square root.
class CSampleTerrain
{
public:
    static constexpr double c_dOrgX = 500000.0;  ///< lower left corner, metres
    static constexpr double c_dOrgY = 4000000.0; ///< lower left corner, metres
    static constexpr double c_dDensity = 8.0;    ///< points a square metre

    /// @param nNumPnts  number of points; below 0 counts as 0.
    /// @param nSeed     any value; another seed is another landscape.
    explicit CSampleTerrain(std::int64_t nNumPnts, std::uint64_t nSeed = 1);

    std::int64_t GetNumPnts() const noexcept { return m_nNumPnts; }

    /// Edge of the square, metres.
    double GetSide() const noexcept;

    /// @param i  0 ≤ i < GetNumPnts(), not checked. Cost: some 200 ns, whatever the order of calls.
    CSamplePnt CalcPnt(std::int64_t i) const;

    /// Hands every point to `fn(const CSamplePnt&)`, in order.
    template <class TFn>
    void ForEachPnt(TFn&& fn) const
    {
        for (std::int64_t i = 0; i < m_nNumPnts; ++i)
            fn(CalcPnt(i));
    }

    /// All points at once, in order.
    std::vector<CSamplePnt> CalcPnts() const;

private:
    std::int64_t m_nNumPnts = 0;
    std::int64_t m_nRow = 1; // points a scan line
    std::uint64_t m_nSeed = 0;
};

#endif

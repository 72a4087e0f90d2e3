#ifndef HOST_TILE_CTILETABLE_H
#define HOST_TILE_CTILETABLE_H

#include <host/tile/CTileGrid.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zorcld
{

/// A tile and how many points it gets.
struct CTileCount
{
    CCell cell;
    std::int64_t nNumCore = 0; ///< in its core
    std::int64_t nNumAll = 0;  ///< these and those in its buffer
};

/// Finds the tiles that points belong to.
///
/// The borders of cores and buffers cut the plane into rectangles, all points of which belong to the same
/// tiles. Points that follow each other mostly lie in one, so that it is looked up once for many of them.
class CTileTable
{
public:
    static constexpr std::size_t c_nNone = static_cast<std::size_t>(-1);

    /// The tiles of points that lie in one rectangle.
    struct CZone
    {
        std::vector<std::size_t> vecTiles; ///< positions in GetTiles
        std::size_t nCore = c_nNone;       ///< the one of them whose core it is, if that is there
    };

    /// Tiles are added as points ask for them. @param grid  must outlive the object.
    explicit CTileTable(const CTileGrid& grid) : m_grid(grid), m_bGrows(true) {}

    /// No tile but these. @param grid  must outlive the object.
    CTileTable(const CTileGrid& grid, std::vector<CTileCount> vecTiles);

    const std::vector<CTileCount>& GetTiles() const { return m_vecTiles; }

    /// Counts the points for each of their tiles. @throws CUsageError where there are too many tiles.
    void Count(const std::vector<CTilePnt>& vecPnts);

    /// Counts the points of a run. @return what the fullest of their tiles has now.
    std::int64_t CountRun(const CZone& zone, std::size_t nNum);

    /// `fn(zone, index of the first point, number)` for each run of points in one rectangle.
    template <class TFn>
    void ForEachRun(const std::vector<CTilePnt>& vecPnts, const TFn& fn)
    {
        for (std::size_t nFirst = 0; nFirst < vecPnts.size();)
        {
            FindZone(vecPnts[nFirst]);
            std::size_t nEnd = nFirst + 1;
            while (nEnd < vecPnts.size() && IsInZone(vecPnts[nEnd]))
                ++nEnd;
            fn(m_zone, nFirst, nEnd - nFirst);
            nFirst = nEnd;
        }
    }

private:
    /// Steps along an axis that lie in one column or row, and in the reach of the same ones.
    struct CSpan
    {
        std::int64_t nFirst = 0;
        std::int64_t nEnd = 0; // behind the last; none yet
        std::int64_t nCell = 0;
        std::int64_t nMin = 0; // in reach
        std::int64_t nMax = 0;

        bool Has(std::int64_t nStep) const { return nStep >= nFirst && nStep < nEnd; }
    };

    struct CHash
    {
        std::size_t operator()(const CCell& cell) const
        {
            return static_cast<std::size_t>(static_cast<std::uint32_t>(cell.nRow)) * 0x9E3779B97F4A7C15U ^
                   static_cast<std::uint32_t>(cell.nColumn);
        }
    };

    bool IsInZone(const CTilePnt& pnt) const
    {
        return m_aSpans[0].Has(pnt.anSteps[0]) && m_aSpans[1].Has(pnt.anSteps[1]);
    }

    void FindZone(const CTilePnt& pnt);
    CSpan FindSpan(std::size_t nAxis, std::int64_t nStep) const;
    std::size_t Find(std::int64_t nColumn, std::int64_t nRow);

    const CTileGrid& m_grid;
    bool m_bGrows;
    std::vector<CTileCount> m_vecTiles;
    std::size_t m_nNumCores = 0; // of these, with a point counted in the core
    std::unordered_map<CCell, std::size_t, CHash> m_mapTiles;
    std::array<CSpan, 2> m_aSpans; // of the last point
    CZone m_zone;                  // where they cross
};

} // namespace zorcld

#endif

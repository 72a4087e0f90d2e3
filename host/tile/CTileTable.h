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

/// Finds the tiles that a point belongs to.
class CTileTable
{
public:
    static constexpr std::size_t c_nNone = static_cast<std::size_t>(-1);

    /// Tiles are added as points ask for them. @param grid  must outlive the object.
    explicit CTileTable(const CTileGrid& grid) : m_grid(grid), m_bGrows(true) {}

    /// No tile but these. @param grid  must outlive the object.
    CTileTable(const CTileGrid& grid, std::vector<CTileCount> vecTiles);

    const std::vector<CTileCount>& GetTiles() const { return m_vecTiles; }

    /// Counts a point for each of its tiles. @throws CUsageError where there are too many tiles.
    void Count(const CTilePnt& pnt)
    {
        ForEachTileOf(pnt,
                      [this](std::size_t nTile, bool bCore)
                      {
                          ++m_vecTiles[nTile].nNumAll;
                          m_vecTiles[nTile].nNumCore += bCore ? 1 : 0;
                      });
    }

    /// `fn(position, bool in its core)` for each tile that the point belongs to and that is there.
    template <class TFn>
    void ForEachTileOf(const CTilePnt& pnt, const TFn& fn)
    {
        const std::int64_t x = pnt.anSteps[0];
        const std::int64_t y = pnt.anSteps[1];
        if (x >= m_inner.nXMin && x < m_inner.nXMax && y >= m_inner.nYMin && y < m_inner.nYMax)
        {
            if (m_nInner != c_nNone)
                fn(m_nInner, true);
            return;
        }
        const CRange range = FindRange(x, y);
        for (std::int64_t nRow = range.nRowMin; nRow <= range.nRowMax; ++nRow)
            for (std::int64_t nColumn = range.nColumnMin; nColumn <= range.nColumnMax; ++nColumn)
                if (const std::size_t nTile = Find(nColumn, nRow); nTile != c_nNone)
                    fn(nTile, nRow == range.nRow && nColumn == range.nColumn);
        if (range.nRowMin == range.nRowMax && range.nColumnMin == range.nColumnMax)
            SetInner(range);
    }

private:
    struct CRange
    {
        std::int64_t nColumn = 0; // whose core it is
        std::int64_t nRow = 0;
        std::int64_t nColumnMin = 0;
        std::int64_t nColumnMax = 0;
        std::int64_t nRowMin = 0;
        std::int64_t nRowMax = 0;
    };

    /// Steps inside a core and out of reach of all others.
    struct CInner
    {
        std::int64_t nXMin = 0;
        std::int64_t nXMax = 0;
        std::int64_t nYMin = 0;
        std::int64_t nYMax = 0;
    };

    struct CHash
    {
        std::size_t operator()(const CCell& cell) const
        {
            return static_cast<std::size_t>(static_cast<std::uint32_t>(cell.nRow)) * 0x9E3779B97F4A7C15U ^
                   static_cast<std::uint32_t>(cell.nColumn);
        }
    };

    /// A column or row with its steps, and those within reach of a step in it.
    struct CSpan
    {
        std::int64_t nCell = 0;
        std::int64_t nFirst = 0;
        std::int64_t nNext = 0; // none yet
        std::int64_t nMin = 0;
        std::int64_t nMax = 0;
    };

    CSpan FindSpan(std::size_t nAxis, std::int64_t nStep);
    CRange FindRange(std::int64_t x, std::int64_t y);
    std::size_t Find(std::int64_t nColumn, std::int64_t nRow);

    /// Most points lie where the last one did.
    void SetInner(const CRange& range);

    const CTileGrid& m_grid;
    bool m_bGrows;
    std::vector<CTileCount> m_vecTiles;
    std::unordered_map<CCell, std::size_t, CHash> m_mapTiles;
    std::array<CSpan, 2> m_aSpans;  // of the last point
    CInner m_inner;                 // of the last such point's core
    std::size_t m_nInner = c_nNone; // its tile
};

} // namespace zorcld

#endif

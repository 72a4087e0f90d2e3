#ifndef HOST_TILE_CTILEGRID_H
#define HOST_TILE_CTILEGRID_H

#include <host/tile/CTilePnt.h>
#include <zor3geom/RECT_2D.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace zorcld
{

/// Which tile: column and row, counted from 0 of the coordinates.
struct CCell
{
    std::int32_t nColumn = 0;
    std::int32_t nRow = 0;

    bool operator==(const CCell& other) const { return nColumn == other.nColumn && nRow == other.nRow; }
    bool operator<(const CCell& other) const
    {
        return nRow != other.nRow ? nRow < other.nRow : nColumn < other.nColumn;
    }
};

/// Where the borders of the tiles' cores lie: on the half steps next below the multiples of the size.
class CTileGrid
{
public:
    /// @throws CUsageError where the size is too small for coordinates as large as the origin's.
    /// @param dPlanMetres  of a unit; 0: not known.
    CTileGrid(double dSize, double dBuffer, const TOrigin& origin, double dPlanMetres);

    /// @return the first step of a column (axis 0) or row (axis 1); the step before it belongs to the one
    ///         before.
    std::int64_t GetFirstStep(std::size_t nAxis, std::int64_t nCell) const;

    /// @return the column or row that a step lies in.
    std::int64_t FindCell(std::size_t nAxis, std::int64_t nStep) const;

    /// Borders in coordinate units, to be compared with `ChooseInCore`.
    zor::geom::RECT_2D GetCore(const CCell& cell) const;

    /// @return how many steps beside its core a tile has points.
    std::int64_t GetReach() const { return m_nReach; }

    /// @return what is added to the buffer: what floats may round in the windows of the ground filter.
    double GetMargin() const { return m_dMargin; }

private:
    double m_dSize;
    TOrigin m_origin;
    double m_dMargin = 0.0;
    std::int64_t m_nReach = 0;
};

} // namespace zorcld

#endif

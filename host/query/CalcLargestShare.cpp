#include <host/query/CalcLargestShare.h>

#include <host/query/Query.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

namespace zorcld
{

namespace
{

constexpr std::int64_t c_nMaxPerCell = 200; // looked at, of those of one cell

struct CPlacedPnt
{
    std::int32_t nRow; // of its cell
    std::int32_t nCol;
    double x;
    double y;
};

/// Points of one cell: all of them hang together.
struct CCell
{
    std::int32_t nRow;
    std::int32_t nCol;
    std::size_t nFirst;
    std::size_t nEnd;
};

class CCellParts
{
public:
    CCellParts(const CPntCld& cloud, const zor::geom::RECT_3D& box, double dDistance)
        : m_dSquare(dDistance * dDistance)
    {
        const double dEdge = dDistance / std::sqrt(2.0);
        m_vecPnts.reserve(static_cast<std::size_t>(cloud.GetNumPnts()));
        ForEachPnt(cloud, CQuery(),
                   [&](const CCldCadPnt& pnt)
                   {
                       const auto cellOf = [&](double d)
                       { return static_cast<std::int32_t>(std::clamp(std::floor(d / dEdge), 0.0, 2e9)); };
                       m_vecPnts.push_back({cellOf(pnt.m_pnt.y - box.ymin), cellOf(pnt.m_pnt.x - box.xmin),
                                            pnt.m_pnt.x, pnt.m_pnt.y});
                   });
        MakeCells();
        // The nearer ones first: most pairs farther apart then belong together already.
        for (const std::int32_t nReach : {1, 2})
            for (std::int32_t nRows = 0; nRows <= nReach; ++nRows)
                JoinWithRow(nRows, nReach);
    }

    std::size_t CountLargest()
    {
        std::vector<std::size_t> vecNum(m_vecCells.size());
        for (std::size_t i = 0; i < m_vecCells.size(); ++i)
            vecNum[FindRoot(i)] += m_vecCells[i].nEnd - m_vecCells[i].nFirst;
        return vecNum.empty() ? 0 : *std::max_element(vecNum.begin(), vecNum.end());
    }

private:
    void MakeCells()
    {
        std::sort(m_vecPnts.begin(), m_vecPnts.end(),
                  [](const CPlacedPnt& a, const CPlacedPnt& b)
                  { return a.nRow != b.nRow ? a.nRow < b.nRow : a.nCol < b.nCol; });
        for (std::size_t i = 0; i < m_vecPnts.size(); ++i)
        {
            const CPlacedPnt& pnt = m_vecPnts[i];
            if (m_vecCells.empty() || m_vecCells.back().nRow != pnt.nRow ||
                m_vecCells.back().nCol != pnt.nCol)
                m_vecCells.push_back({pnt.nRow, pnt.nCol, i, i});
            m_vecCells.back().nEnd = i + 1;
        }
        m_vecParents.resize(m_vecCells.size());
        std::iota(m_vecParents.begin(), m_vecParents.end(), std::size_t{0});
    }

    /// Joins each cell with those so many rows above it and up to `nReach` columns beside it. Both rise
    /// together, so that the first of them is found by going on from the last one's.
    void JoinWithRow(std::int32_t nRows, std::int32_t nReach)
    {
        std::size_t nOther = 0;
        for (std::size_t i = 0; i < m_vecCells.size(); ++i)
        {
            const CCell& cell = m_vecCells[i];
            const std::int64_t nRow = std::int64_t{cell.nRow} + nRows;
            const std::int64_t nCol = std::int64_t{cell.nCol} - nReach;
            const auto isBefore = [&](const CCell& other)
            { return other.nRow != nRow ? other.nRow < nRow : other.nCol < nCol; };
            while (nOther < m_vecCells.size() && isBefore(m_vecCells[nOther]))
                ++nOther;
            for (std::size_t k = nOther; k < m_vecCells.size() && m_vecCells[k].nRow == nRow &&
                                         m_vecCells[k].nCol <= nCol + 2 * std::int64_t{nReach};
                 ++k)
                if (k > i && FindRoot(i) != FindRoot(k) && AreNear(cell, m_vecCells[k]))
                    m_vecParents[FindRoot(k)] = FindRoot(i);
        }
    }

    bool AreNear(const CCell& a, const CCell& b) const
    {
        const auto stepOf = [](const CCell& cell)
        { return (cell.nEnd - cell.nFirst + c_nMaxPerCell - 1) / c_nMaxPerCell; };
        for (std::size_t i = a.nFirst; i < a.nEnd; i += stepOf(a))
            for (std::size_t k = b.nFirst; k < b.nEnd; k += stepOf(b))
            {
                const double dx = m_vecPnts[i].x - m_vecPnts[k].x;
                const double dy = m_vecPnts[i].y - m_vecPnts[k].y;
                if (dx * dx + dy * dy <= m_dSquare)
                    return true;
            }
        return false;
    }

    std::size_t FindRoot(std::size_t i)
    {
        while (m_vecParents[i] != i)
            i = m_vecParents[i] = m_vecParents[m_vecParents[i]];
        return i;
    }

    double m_dSquare;
    std::vector<CPlacedPnt> m_vecPnts; // by cell
    std::vector<CCell> m_vecCells;     // by row, then column
    std::vector<std::size_t> m_vecParents;
};

} // namespace

double CalcLargestShare(const CPntCld& cloud, double dDistance)
{
    zor::geom::RECT_3D box;
    if (cloud.GetNumPnts() == 0 || !cloud.GetBdry(box))
        return 0.0;
    return static_cast<double>(CCellParts(cloud, box, dDistance).CountLargest()) / cloud.GetNumPnts();
}

} // namespace zorcld

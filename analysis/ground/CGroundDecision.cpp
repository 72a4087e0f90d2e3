#include <analysis/ground/CGroundDecision.h>

#include <algorithm>
#include <limits>

using zor::geom::TPlanBox;

CGroundDecision::CGroundDecision(CWindowCells& cells, const TPlanBox<float>& boxOwn, float fMaxDiff,
                                 CMorphBuffers& buffers)
    : m_cells(cells), m_boxOwn(boxOwn), m_fMaxDiff(fMaxDiff), m_buffers(buffers), m_blocks(cells),
      m_bounds(cells, m_blocks)
{
}

void CGroundDecision::Decide(std::vector<unsigned char>& vecStays, CMorphProgress& progress)
{
    COpeningBounds::CRow row;
    for (int nRow = 0; nRow < m_cells.GetNumRows(); ++nRow)
    {
        m_bounds.CalcRow(nRow, row);
        for (int nCol = 0; nCol < m_cells.GetNumCols(); ++nCol)
        {
            const std::size_t nCell = m_cells.GetCell(nRow, nCol);
            const auto i = static_cast<std::size_t>(nCol);
            if (!m_cells.IsEmpty(nCell))
                progress.AddPnts(DecideCell(nCell, nCol, row.vecLow[i], row.vecHigh[i], vecStays));
        }
    }
}

bool CGroundDecision::IsOpen(const CCellPnt& pnt, float fLow, float fHigh) const noexcept
{
    return !IsBelow(pnt.z, fLow) && IsBelow(pnt.z, fHigh);
}

std::uint32_t CGroundDecision::DecideCell(std::size_t nCell, int nCol, float fLow, float fHigh,
                                          std::vector<unsigned char>& vecStays)
{
    std::uint32_t nNumDone = 0;
    bool bOpen = false;
    for (std::uint32_t i = m_cells.GetStart(nCell); i < m_cells.GetStart(nCell + 1); ++i)
    {
        const CCellPnt& pnt = m_cells.GetPnt(i);
        if (!m_boxOwn.Contains(pnt))
            continue;
        ++nNumDone;
        vecStays[pnt.nPos] = IsBelow(pnt.z, fLow) ? 1 : 0;
        bOpen = bOpen || IsOpen(pnt, fLow, fHigh);
    }
    if (!bOpen)
        return nNumDone;

    // From here on the cell's points keep their order: the loop meets each of them once, whatever it asks
    // for.
    EnsureHeights(nCell);
    for (std::uint32_t i = m_cells.GetStart(nCell); i < m_cells.GetStart(nCell + 1); ++i)
    {
        const CCellPnt& pnt = m_cells.GetPnt(i);
        if (m_boxOwn.Contains(pnt) && IsOpen(pnt, fLow, fHigh))
            vecStays[pnt.nPos] = (IsBelow(pnt.z, m_heights->GetHeight(i)) || FindSupport(pnt, nCol)) ? 1 : 0;
    }
    return nNumDone;
}

void CGroundDecision::EnsureHeights(std::size_t nCell)
{
    if (!m_heights)
        m_heights.emplace(m_cells, m_blocks, m_buffers);
    if (!m_heights->IsDone(nCell))
        m_bounds.LowerErodedMax(nCell, m_heights->CalcCell(nCell));
}

bool CGroundDecision::FindSupport(const CCellPnt& pnt, int nCol)
{
    const TPlanBox<float> box = m_cells.CalcBox(pnt.x, pnt.y);
    const CWindowRing ring = m_cells.CalcRing(box);

    // The row with the greatest bound first: on a slope the answer is mostly there.
    int nBest = ring.nRowMin;
    for (int i = ring.nRowMin; i <= ring.nRowMax; ++i)
        nBest = m_bounds.GetReachedMax(i, nCol) > m_bounds.GetReachedMax(nBest, nCol) ? i : nBest;
    if (FindSupportInRow(pnt, box, ring, nBest, nCol))
        return true;
    for (int i = ring.nRowMin; i <= ring.nRowMax; ++i)
        if (i != nBest && IsBelow(pnt.z, m_bounds.GetReachedMax(i, nCol)) &&
            FindSupportInRow(pnt, box, ring, i, nCol))
            return true;
    return false;
}

bool CGroundDecision::FindSupportInRow(const CCellPnt& pnt, const TPlanBox<float>& box,
                                       const CWindowRing& ring, int nRow, int nCol)
{
    const CWindowReach& reach = m_cells.GetAxisX().GetReach(nCol);
    const bool bRowInside = nRow > ring.nRowMin && nRow < ring.nRowMax;
    float fReached = -std::numeric_limits<float>::infinity();
    for (int i = reach.nOuterMin; i <= reach.nOuterMax; ++i)
    {
        const std::size_t nCell = m_cells.GetCell(nRow, i);
        const bool bTouched = i >= ring.nColMin && i <= ring.nColMax;
        if (bTouched && IsBelow(pnt.z, m_bounds.GetErodedMax(nCell)))
        {
            const bool bInside = bRowInside && i > ring.nColMin && i < ring.nColMax;
            if (FindSupportInCell(pnt, box, bInside, nCell))
                return true;
        }
        fReached = std::max(fReached, m_bounds.GetErodedMax(nCell));
    }
    m_bounds.LowerReachedMax(nRow, nCol, fReached);
    return false;
}

bool CGroundDecision::FindSupportInCell(const CCellPnt& pnt, const TPlanBox<float>& box, bool bInside,
                                        std::size_t nCell)
{
    EnsureHeights(nCell);
    if (!IsBelow(pnt.z, m_bounds.GetErodedMax(nCell)))
        return false; // the bound was close enough, the greatest height that is really there is not
    if (bInside)
        return true; // the point with that height is in the window, like every point of the cell
    for (std::uint32_t i = m_cells.GetStart(nCell); i < m_cells.GetStart(nCell + 1); ++i)
        if (IsBelow(pnt.z, m_heights->GetHeight(i)) && box.Contains(m_cells.GetPnt(i)))
            return true;
    return false;
}

#include <analysis/ground/COpeningBounds.h>

#include <algorithm>
#include <limits>

namespace
{

constexpr float c_fNone = -std::numeric_limits<float>::infinity();

// Greatest value of each run of `nBlock` values, at its first place; what lies beyond the end counts as none.
void MakeBlockMaxima(std::vector<float>& vecRow, int nBlock)
{
    for (std::size_t nHalf = 1; nHalf < static_cast<std::size_t>(nBlock); nHalf *= 2)
        for (std::size_t i = 0; i + nHalf < vecRow.size(); ++i)
            vecRow[i] = std::max(vecRow[i], vecRow[i + nHalf]);
}

float CalcMax(const float* pValues, const std::vector<float>& vecBlocks, int nBlock, int nMin, int nMax)
{
    float fMax = c_fNone;
    int i = nMin;
    for (; i + nBlock <= nMax + 1; i += nBlock)
        fMax = std::max(fMax, vecBlocks[static_cast<std::size_t>(i)]);
    if (i > nMin && i <= nMax) // the rest, with a block that overlaps the one before
    {
        const int nLast = nMax - nBlock + 1;
        return std::max(fMax, vecBlocks[static_cast<std::size_t>(nLast)]);
    }
    for (; i <= nMax; ++i)
        fMax = std::max(fMax, pValues[i]);
    return fMax;
}

void RaiseRow(std::vector<float>& vecMax, const float* pRow)
{
    for (std::size_t i = 0; i < vecMax.size(); ++i)
        vecMax[i] = std::max(vecMax[i], pRow[i]);
}

} // namespace

COpeningBounds::COpeningBounds(const CWindowCells& cells, const CBlockMin& blocks)
    : m_cells(cells), m_vecErodedMin(cells.GetNumCells(), c_fNone),
      m_vecErodedMax(cells.GetNumCells(), c_fNone), m_vecCoreMax(cells.GetNumCells(), c_fNone),
      m_vecReachedMax(cells.GetNumCells(), c_fNone)
{
    CalcEroded(blocks);
    CalcReached();
}

void COpeningBounds::CalcEroded(const CBlockMin& blocks)
{
    for (int nRow = 0; nRow < m_cells.GetNumRows(); ++nRow)
    {
        const CWindowReach& reachY = m_cells.GetAxisY().GetReach(nRow);
        for (int nCol = 0; nCol < m_cells.GetNumCols(); ++nCol)
        {
            const std::size_t nCell = m_cells.GetCell(nRow, nCol);
            if (m_cells.IsEmpty(nCell))
                continue;
            const CWindowReach& reachX = m_cells.GetAxisX().GetReach(nCol);
            m_vecErodedMin[nCell] =
                blocks.CalcRectMin(reachY.nOuterMin, reachY.nOuterMax, reachX.nOuterMin, reachX.nOuterMax);
            m_vecErodedMax[nCell] =
                blocks.CalcRectMin(reachY.nCoreMin, reachY.nCoreMax, reachX.nCoreMin, reachX.nCoreMax);
        }
    }
}

void COpeningBounds::CalcReached()
{
    const CWindowAxis& axis = m_cells.GetAxisX();
    const int nBlock = axis.GetBlock();
    const auto nNumCols = static_cast<std::ptrdiff_t>(m_cells.GetNumCols());
    std::vector<float> vecMin;
    std::vector<float> vecMax;
    for (int nRow = 0; nRow < m_cells.GetNumRows(); ++nRow)
    {
        const std::size_t nFirst = m_cells.GetCell(nRow, 0);
        const float* pMin = m_vecErodedMin.data() + nFirst;
        const float* pMax = m_vecErodedMax.data() + nFirst;
        vecMin.assign(pMin, pMin + nNumCols);
        vecMax.assign(pMax, pMax + nNumCols);
        MakeBlockMaxima(vecMin, nBlock);
        MakeBlockMaxima(vecMax, nBlock);
        for (int nCol = 0; nCol < m_cells.GetNumCols(); ++nCol)
        {
            const CWindowReach& reach = axis.GetReach(nCol);
            const std::size_t nCell = nFirst + static_cast<std::size_t>(nCol);
            m_vecCoreMax[nCell] = CalcMax(pMin, vecMin, nBlock, reach.nCoreMin, reach.nCoreMax);
            m_vecReachedMax[nCell] = CalcMax(pMax, vecMax, nBlock, reach.nOuterMin, reach.nOuterMax);
        }
    }
}

void COpeningBounds::CalcRow(int nRow, CRow& row) const
{
    // A point is in its own window: its own cell counts for the lower bound even where no whole cell fits
    // into the window.
    const float* pOwn = m_vecErodedMin.data() + m_cells.GetCell(nRow, 0);
    row.vecLow.assign(pOwn, pOwn + m_cells.GetNumCols());
    row.vecHigh.assign(row.vecLow.size(), c_fNone);
    const CWindowReach& reach = m_cells.GetAxisY().GetReach(nRow);
    for (int i = reach.nCoreMin; i <= reach.nCoreMax; ++i)
        RaiseRow(row.vecLow, m_vecCoreMax.data() + m_cells.GetCell(i, 0));
    for (int i = reach.nOuterMin; i <= reach.nOuterMax; ++i)
        RaiseRow(row.vecHigh, m_vecReachedMax.data() + m_cells.GetCell(i, 0));
}

#include <analysis/ground/CBlockMin.h>

#include <algorithm>
#include <limits>

namespace
{

constexpr float c_fInfinity = std::numeric_limits<float>::infinity();

// Replaces every value by the least of the block that begins with it, `nStride` apart. A block that would
// go on beyond the end holds the least of the values up to there.
void MakeBlocks(std::vector<float>& vecMin, int nBlock, std::size_t nStride)
{
    for (int nHalf = 1; nHalf < nBlock; nHalf *= 2)
    {
        const std::size_t nShift = static_cast<std::size_t>(nHalf) * nStride;
        for (std::size_t i = 0; i + nShift < vecMin.size(); ++i) // ascending: what is read is still old
            vecMin[i] = std::min(vecMin[i], vecMin[i + nShift]);
    }
}

// Calls `fn` with starts of blocks that together cover [nMin, nMax], at least one block long.
template <class TFn>
void ForBlocks(int nMin, int nMax, int nBlock, TFn&& fn)
{
    const int nLast = nMax - nBlock + 1;
    for (int i = nMin; i < nLast; i += nBlock)
        fn(i);
    fn(nLast);
}

} // namespace

// Blocks along x run over the end of a row into the next: no rectangle asks for these.
CBlockMin::CBlockMin(const CWindowCells& cells)
    : m_cells(cells), m_nBlockX(cells.GetAxisX().GetBlock()), m_nBlockY(cells.GetAxisY().GetBlock()),
      m_vecRect(cells.GetMins())
{
    MakeBlocks(m_vecRect, m_nBlockX, 1);
    MakeBlocks(m_vecRect, m_nBlockY, static_cast<std::size_t>(cells.GetNumCols()));
}

void CBlockMin::AddLines()
{
    if (!m_vecRow.empty())
        return;
    m_vecRow = m_cells.GetMins();
    MakeBlocks(m_vecRow, m_nBlockX, 1);
    m_vecCol = m_cells.GetMins();
    MakeBlocks(m_vecCol, m_nBlockY, static_cast<std::size_t>(m_cells.GetNumCols()));
}

float CBlockMin::ScanCells(int nRowMin, int nRowMax, int nColMin, int nColMax) const noexcept
{
    float fMin = c_fInfinity;
    for (int nRow = nRowMin; nRow <= nRowMax; ++nRow)
        for (int nCol = nColMin; nCol <= nColMax; ++nCol)
            fMin = std::min(fMin, m_cells.GetMin(m_cells.GetCell(nRow, nCol)));
    return fMin;
}

float CBlockMin::CalcRectMin(int nRowMin, int nRowMax, int nColMin, int nColMax) const noexcept
{
    if (nRowMax - nRowMin + 1 < m_nBlockY || nColMax - nColMin + 1 < m_nBlockX)
        return ScanCells(nRowMin, nRowMax, nColMin, nColMax);
    float fMin = c_fInfinity;
    ForBlocks(nRowMin, nRowMax, m_nBlockY,
              [&](int nRow)
              {
                  const float* pRow = m_vecRect.data() + m_cells.GetCell(nRow, 0);
                  ForBlocks(nColMin, nColMax, m_nBlockX,
                            [&](int nCol) { fMin = std::min(fMin, pRow[nCol]); });
              });
    return fMin;
}

float CBlockMin::CalcRowMin(int nRow, int nColMin, int nColMax) const noexcept
{
    if (nColMax - nColMin + 1 < m_nBlockX)
        return ScanCells(nRow, nRow, nColMin, nColMax);
    float fMin = c_fInfinity;
    const float* pRow = m_vecRow.data() + m_cells.GetCell(nRow, 0);
    ForBlocks(nColMin, nColMax, m_nBlockX, [&](int nCol) { fMin = std::min(fMin, pRow[nCol]); });
    return fMin;
}

float CBlockMin::CalcColMin(int nCol, int nRowMin, int nRowMax) const noexcept
{
    if (nRowMax - nRowMin + 1 < m_nBlockY)
        return ScanCells(nRowMin, nRowMax, nCol, nCol);
    float fMin = c_fInfinity;
    ForBlocks(nRowMin, nRowMax, m_nBlockY,
              [&](int nRow) { fMin = std::min(fMin, m_vecCol[m_cells.GetCell(nRow, nCol)]); });
    return fMin;
}

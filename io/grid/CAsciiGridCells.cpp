#include <io/grid/CAsciiGridCells.h>

#include <octree/ZeroedArray.h>

void CAsciiGridCells::AddPiece()
{
    const std::size_t nSize = GetPieceSize(m_vecPieces.size());
    m_vecPieces.push_back(std::unique_ptr<double[]>(new double[nSize]));
    m_pNext = m_vecPieces.back().get();
    m_pPieceEnd = m_pNext + nSize;
    AdviseLargePages(m_pNext, nSize * sizeof(double));
}

void CAsciiGridCells::AddRun(std::int32_t nRow, std::int32_t nCol)
{
    m_vecRuns.push_back({nRow, nCol, 0});
    m_nRunRow = nRow;
    m_nRunEnd = nCol;
}

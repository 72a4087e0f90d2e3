#include <io/CAsciiGridCells.h>

void CAsciiGridCells::AddPiece()
{
    m_vecPieces.push_back(std::unique_ptr<double[]>(new double[c_nPiece]));
    m_nUsed = 0;
}

void CAsciiGridCells::AddRun(std::int32_t nRow, std::int32_t nCol)
{
    m_vecRuns.push_back({nRow, nCol, 0});
    m_nRunRow = nRow;
    m_nRunEnd = nCol;
}

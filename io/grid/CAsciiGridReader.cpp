#include <io/grid/CAsciiGridReader.h>

#include <formats/AsciiGridCells.h>
#include <formats/CAsciiGridHeader.h>
#include <formats/CAsciiGridText.h>
#include <formats/CFilePtr.h>
#include <formats/Compact.h>
#include <io/grid/CAsciiGridCells.h>
#include <zor4data/IPntCldReadListener.h>

#include <cstdio>

namespace
{

/// Reads header and cells from the start of the file, which is left behind them.
///
/// @param take  is called with row, column and value of each cell that holds data.
/// @return false when the header is refused.
template <class F>
bool ReadGrid(std::FILE* pFile, CAsciiGridHeader& header, F take)
{
    CAsciiGridText text(pFile);
    if (!header.Read(text))
        return false;
    ForEachAsciiGridCell(text, header,
                         [&](std::int32_t nRow, std::int32_t nCol, double dValue)
                         {
                             take(nRow, nCol, dValue);
                             return true;
                         });
    return true;
}

} // namespace

bool CAsciiGridReader::Read(const zor::String& sPath)
{
    CFilePtr pFile(std::fopen(sPath.c_str(), "r"));
    if (pFile == nullptr)
        return false;
    std::setvbuf(pFile.get(), nullptr, _IONBF, 0);
    CAsciiGridHeader header;
    CAsciiGridCells cells;
    std::int64_t nNumCells = 0;
    // A copy of its own stays in a register: through the object, 2 % of the whole reading.
    const auto keep = [&, nMax = m_nMaxWaiting](std::int32_t nRow, std::int32_t nCol, double dValue)
    {
        if (nNumCells++ < nMax)
            cells.Add(nRow, nCol, dValue);
    };
    if (!ReadGrid(pFile.get(), header, keep) || nNumCells == 0)
        return false;

    m_listener.OnReadType(PntCldType_Pnt);
    m_listener.OnReadNumPnts(SaturateToInt32(nNumCells));
    // KEPT: the point is the upper left corner of the cell, not its centre
    // (Read_PointsOnUpperLeftCorners_Kept).
    const auto deliver = [&](std::int32_t nRow, std::int32_t nCol, double dValue)
    {
        m_listener.OnReadPnt(nCol * header.dCellSize + header.dXCorner,
                             (header.nNumRows - nRow) * header.dCellSize + header.dYCorner, dValue);
    };
    if (nNumCells <= m_nMaxWaiting)
    {
        pFile.reset();
        cells.Take(deliver);
    }
    else
    {
        cells = CAsciiGridCells();
        CAsciiGridHeader sameHeader;
        if (fseeko(pFile.get(), 0, SEEK_SET) != 0 || !ReadGrid(pFile.get(), sameHeader, deliver))
            return false;
    }
    m_listener.OnReadEnd();
    return true;
}

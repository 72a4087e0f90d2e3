#include <io/grid/CAsciiGridReader.h>

#include <formats/CAsciiGridHeader.h>
#include <formats/CAsciiGridText.h>
#include <formats/CFilePtr.h>
#include <formats/Compact.h>
#include <io/grid/CAsciiGridCells.h>
#include <zor4data/IPntCldReadListener.h>

bool CAsciiGridReader::Read(const zor::String& sPath)
{
    CAsciiGridHeader header;
    CAsciiGridCells cells;
    {
        const CFilePtr pFile(std::fopen(sPath.c_str(), "r"));
        if (pFile == nullptr)
            return false;
        std::setvbuf(pFile.get(), nullptr, _IONBF, 0);
        CAsciiGridText text(pFile.get());
        if (!header.Read(text))
            return false;
        ReadCells(text, header, cells);
    }
    if (cells.GetNumCells() == 0)
        return false;

    m_listener.OnReadType(PntCldType_Pnt);
    m_listener.OnReadNumPnts(SaturateToInt32(cells.GetNumCells()));
    // KEPT: the point is the upper left corner of the cell, not its centre
    // (Read_PointsOnUpperLeftCorners_Kept).
    cells.Take(
        [&](std::int32_t nRow, std::int32_t nCol, double dValue)
        {
            m_listener.OnReadPnt(nCol * header.dCellSize + header.dXCorner,
                                 (header.nNumRows - nRow) * header.dCellSize + header.dYCorner, dValue);
        });
    m_listener.OnReadEnd();
    return true;
}

/// Reads the rows behind the header. Empty lines, with a carriage return or without, do not count as rows,
/// lines of blanks do.
void CAsciiGridReader::ReadCells(CAsciiGridText& text, const CAsciiGridHeader& header, CAsciiGridCells& cells)
{
    for (std::int32_t nRow = 0; nRow < header.nNumRows && text.FindLine(); ++nRow)
    {
        for (std::int32_t nCol = 0; nCol < header.nNumCols && text.FindToken(); ++nCol)
        {
            const double dValue = text.GetNumber();
            if (dValue != header.dNoData) // true for what is not a number
                cells.Add(nRow, nCol, dValue);
        }
        text.SkipLine();
    }
}

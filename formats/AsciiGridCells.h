#ifndef FORMATS_ASCIIGRIDCELLS_H
#define FORMATS_ASCIIGRIDCELLS_H

#include <formats/CAsciiGridHeader.h>
#include <formats/CAsciiGridText.h>

/// Reads the rows behind the header as the library takes them. Empty lines, with a carriage return or
/// without, do not count as rows, lines of blanks do.
///
/// @param take  is called with row, column and value of each cell that holds data; false: no more are wanted.
template <class F>
void ForEachAsciiGridCell(CAsciiGridText& text, const CAsciiGridHeader& header, F take)
{
    for (std::int32_t nRow = 0; nRow < header.nNumRows && text.FindLine(); ++nRow)
    {
        for (std::int32_t nCol = 0; nCol < header.nNumCols && text.FindToken(); ++nCol)
        {
            const double dValue = text.GetNumber();
            if (dValue != header.dNoData && !take(nRow, nCol, dValue)) // true for what is not a number
                return;
        }
        text.SkipLine();
    }
}

#endif

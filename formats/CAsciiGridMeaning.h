#ifndef FORMATS_CASCIIGRIDMEANING_H
#define FORMATS_CASCIIGRIDMEANING_H

#include <formats/CAsciiGridHeader.h>
#include <formats/CFileCause.h>

#include <cstdint>
#include <optional>
#include <string>

class CByteReader;

/// The header of an ESRI ASCII grid by what its words mean, beside what the library takes it for: keys in any
/// spelling, blanks or tabs, with or without a no-data value, corner or centre for each axis.
struct CAsciiGridMeaning
{
    /// @return size of a cell. REQUIRES: FindCause() is empty, as for the corner.
    double GetCellWidth() const { return cellWidth ? *cellWidth : *cellSize; }
    double GetCellHeight() const { return cellHeight ? *cellHeight : *cellSize; }

    /// @return x and y of the lower left corner, from the centre where there is no corner.
    double GetXCorner() const { return xCorner ? *xCorner : *xCentre - 0.5 * GetCellWidth(); }
    double GetYCorner() const { return yCorner ? *yCorner : *yCentre - 0.5 * GetCellHeight(); }

    /// @return why it is no header of a grid, by the words; its number means the same.
    CFileCause FindCause() const;

    /// @return why the library refuses it, or takes it for another one than it is.
    CFileCause FindTakenCause() const;

    /// @return whether the library puts every point at 1.7e200: the corner is 0, 0 without a centre, or not
    /// given.
    bool IsPlaceLost() const
    {
        return !CAsciiGridHeader::IsGiven(taken.dXCorner) || !CAsciiGridHeader::IsGiven(taken.dYCorner);
    }

    std::int64_t nNumRows = 0;
    std::int64_t nNumCols = 0;
    std::optional<double> cellSize;
    std::optional<double> xCentre; ///< of the lower left cell
    std::optional<double> yCentre;
    std::optional<double> xCorner; ///< lower left, of the grid
    std::optional<double> yCorner;
    std::optional<double> noData;    ///< may be not-a-number
    std::optional<double> cellWidth; ///< where it is given apart from the height
    std::optional<double> cellHeight;

    std::string sOddKey;     ///< the first one that the library does not take, as written
    bool bTabs = false;      ///< a key and its value are separated by a tab
    bool bTabsInRow = false; ///< values of the first row are separated by tabs, as far as it is looked at
    std::int64_t nDataOffset = 0; ///< position of the first byte behind the header

    CAsciiGridHeader taken;             ///< as the library takes it
    std::int64_t nTakenDataOffset = -1; ///< where its data begin to the library; -1: it refuses the header

private:
    CFileCause FindDifference() const;
};

/// Reads lines while they begin with a key.
/// @param reader  at the start of the file; left behind the last of those lines.
CAsciiGridMeaning ReadAsciiGridMeaning(CByteReader& reader);

#endif

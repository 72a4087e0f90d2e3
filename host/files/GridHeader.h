#ifndef HOST_FILES_GRIDHEADER_H
#define HOST_FILES_GRIDHEADER_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zorcld
{

class CByteReader;

/// The header of an ESRI ASCII grid by what its words mean: keys in any spelling, blanks or tabs, with or
/// without a no-data value, corner or centre for each axis.
struct CGridHeader
{
    std::int64_t nNumRows = 0;
    std::int64_t nNumCols = 0;
    std::optional<double> cellSize;
    std::optional<double> xCentre; ///< of the lower left cell
    std::optional<double> yCentre;
    std::optional<double> xCorner; ///< lower left, of the grid
    std::optional<double> yCorner;
    std::optional<double> noData; ///< may be not-a-number
    std::string sNoDataKey;       ///< as written

    std::vector<std::string> vecOddKeys; ///< those that the library does not take, as written
    bool bTabs = false;                  ///< a key and its value are separated by a tab
    bool bBadValue = false;              ///< a value is no number
    std::int64_t nPosData = 0;

    /// @return x and y of the lower left corner, from the centre where there is no corner.
    double GetXCorner() const { return xCorner ? *xCorner : *xCentre - 0.5 * *cellSize; }
    double GetYCorner() const { return yCorner ? *yCorner : *yCentre - 0.5 * *cellSize; }

    /// @return why it is no header of a grid, by the words; empty: it is one.
    std::string FindCause() const;

    /// @return why the library refuses it; empty: it does not.
    std::string FindLibraryCause() const;

    /// @return the library puts every point at 1.7e200: a corner without its centre, at 0, 0, or the centre
    /// alone.
    bool IsPlaceLost() const;
};

/// Reads lines while they begin with a key; leaves the reader behind the last of them.
CGridHeader ReadGridHeader(CByteReader& reader);

} // namespace zorcld

#endif

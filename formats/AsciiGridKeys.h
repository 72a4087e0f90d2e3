#ifndef FORMATS_ASCIIGRIDKEYS_H
#define FORMATS_ASCIIGRIDKEYS_H

#include <array>
#include <cstdint>
#include <string_view>

/// The keys of an ESRI ASCII grid's header.
enum enumAsciiGridKey : std::uint8_t
{
    AsciiGridKey_NumRows,
    AsciiGridKey_NumCols,
    AsciiGridKey_CellSize,
    AsciiGridKey_XCentre, ///< of the lower left cell
    AsciiGridKey_YCentre,
    AsciiGridKey_XCorner, ///< of the lower left cell and of the grid
    AsciiGridKey_YCorner,
    AsciiGridKey_NoData,
    AsciiGridKey_CellWidth,  ///< instead of the cell size, where cells are not square; the library takes
                             ///< neither
    AsciiGridKey_CellHeight, ///< that nor this
    AsciiGridKey_None,
};

/// The two spellings of a key that the library takes, up to the no-data value.
struct CAsciiGridKey
{
    std::string_view sLower;
    std::string_view sOther;
};

/// In the order of enumAsciiGridKey.
inline constexpr std::array<CAsciiGridKey, AsciiGridKey_None> c_aAsciiGridKeys = {
    {{"nrows", "NROWS"},
     {"ncols", "NCOLS"},
     {"cellsize", "CELLSIZE"},
     {"xllcenter", "XLLCENTER"},
     {"yllcenter", "YLLCENTER"},
     {"xllcorner", "XLLCORNER"},
     {"yllcorner", "YLLCORNER"},
     {"NODATA_value", "NODATA_VALUE"},
     {"dx", "DX"},
     {"dy", "DY"}}};

/// The key that a word is to the library: one of its two spellings.
enumAsciiGridKey FindTakenAsciiGridKey(std::string_view sWord) noexcept;

/// The key that a word means: in any spelling, "nodata" included.
enumAsciiGridKey FindAsciiGridKey(std::string_view sWord) noexcept;

/// @return whether a file with these first bytes is a grid by its first key.
bool IsAsciiGridStart(std::string_view sFirstBytes) noexcept;

#endif

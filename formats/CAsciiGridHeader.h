#ifndef FORMATS_CASCIIGRIDHEADER_H
#define FORMATS_CASCIIGRIDHEADER_H

#include <zor3geom/Undefined.h>

#include <cstdint>
#include <string>

class CAsciiGridText;

/// The header of an ESRI ASCII grid as the library takes it: size and place of the raster. Fill it with
/// `Read` or line by line, then ask.
///
/// Fields that the file did not give hold 1.7e200. The corner is that of the raster's lower left cell;
/// where only its centre was given it is not derived, see `TakeLine`.
struct CAsciiGridHeader
{
    /// Reads lines until the header is complete, and leaves `text` behind the last.
    /// @return false at a line that is refused, or the end of the file.
    bool Read(CAsciiGridText& text);

    /// Takes the next line of key and value, without its line feed; an empty one, or one of a carriage return
    /// alone, is passed over. Sets `bComplete` with the last one that is needed: rows, columns, cell size,
    /// corner or centre, no-data value. Of a key given twice the last counts. REQUIRES: not complete.
    ///
    /// KEPT: the corner is derived from the centre only where the file gives it as 0, 0 and the centre is not
    /// 0, 0. Without corner keys it stays undefined; without centre keys a corner of 0, 0 becomes so
    /// (Read_CornerFromCentreWhereItIsZero_Kept, Read_CentreAloneLeavesTheCornerUndefined_Kept,
    /// Read_ZeroCornerWithoutCentreBecomesUndefined_Kept).
    ///
    /// @return false at an unknown key or a key without a value.
    bool TakeLine(std::string sLine);

    /// @return whether a field was given a number: not its start value, and not too large.
    static bool IsGiven(double d) noexcept { return d <= zor::geom::c_dUndefined / 2; }

    bool bComplete = false;
    std::int32_t nNumRows = 0;
    std::int32_t nNumCols = 0;
    double dCellSize = zor::geom::c_dUndefined; ///< coordinate units
    double dXCentre = zor::geom::c_dUndefined;
    double dYCentre = zor::geom::c_dUndefined;
    double dXCorner = zor::geom::c_dUndefined;
    double dYCorner = zor::geom::c_dUndefined;
    double dNoData = zor::geom::c_dUndefined; ///< height of the cells that hold none
};

#endif

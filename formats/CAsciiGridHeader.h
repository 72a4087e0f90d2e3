#ifndef FORMATS_CASCIIGRIDHEADER_H
#define FORMATS_CASCIIGRIDHEADER_H

#include <zor3geom/Undefined.h>

#include <cstdint>
#include <string>

class CAsciiGridText;

/// The header of an ESRI ASCII grid: size and place of the raster. Fill it with `Read`, then ask.
///
/// Fields that the file did not give hold 1.7e200. The corner is that of the raster's lower left cell;
/// where only its centre was given it is not derived, see `Read`.
class CAsciiGridHeader
{
public:
    /// Reads lines of key and value until the header is complete, and leaves `text` behind the last.
    /// Complete: rows, columns, cell size, corner or centre, no-data value; of a key given twice the last.
    ///
    /// KEPT: the corner is derived from the centre only where the file gives it as 0, 0 and the centre is not
    /// 0, 0. Without corner keys it stays undefined; without centre keys a corner of 0, 0 becomes so
    /// (Read_CornerFromCentreWhereItIsZero_Kept, Read_CentreAloneLeavesTheCornerUndefined_Kept,
    /// Read_ZeroCornerWithoutCentreBecomesUndefined_Kept).
    ///
    /// @return false at an unknown key, a key without a value, or the end of the file.
    bool Read(CAsciiGridText& text);

    std::int32_t m_nNumRows = 0;
    std::int32_t m_nNumCols = 0;
    double m_dCellSize = zor::geom::c_dUndefined; ///< coordinate units
    double m_dXCentre = zor::geom::c_dUndefined;
    double m_dYCentre = zor::geom::c_dUndefined;
    double m_dXCorner = zor::geom::c_dUndefined;
    double m_dYCorner = zor::geom::c_dUndefined;
    double m_dNoData = zor::geom::c_dUndefined; ///< height of the cells that hold none

private:
    bool AddLine(std::string& sLine);
    bool Set(const std::string& sKey, const std::string& sValue);
    bool IsComplete() const noexcept;
    void DeriveCorner() noexcept;
};

#endif

#ifndef FORMATS_CCOORDSYSTEM_H
#define FORMATS_CCOORDSYSTEM_H

#include <string>

/// A unit of coordinates as a file states it.
struct CCoordUnit
{
    std::string sName;   ///< in the file's words; empty: not stated
    double dSize = 0.0;  ///< metres, of an angle radians; 0: not known
    bool bAngle = false; ///< degrees, for instance

    bool IsStated() const { return !sName.empty(); }

    /// @return whether it is a length whose size in metres is known.
    bool IsLength() const { return dSize > 0.0 && !bAngle; }
};

/// Which coordinate system a file states, and in what.
enum class enumCoordSource
{
    None,
    Wkt,    ///< well-known text
    GeoKeys ///< numbered keys, as in GeoTIFF
};

/// The coordinate system of a file in the file's own words. Nothing is looked up but units.
struct CCoordSystem
{
    enumCoordSource eSource = enumCoordSource::None;
    std::string sName; ///< empty: not stated
    std::string sCode; ///< "EPSG:2903"; empty: not stated
    CCoordUnit plan;   ///< of x and y
    CCoordUnit height; ///< of z; not stated where x and y have angles or a unit that holds for z, too
    std::string sWkt;  ///< the text as it stands in the file

    bool IsStated() const { return eSource != enumCoordSource::None; }

    /// @return metres of a unit of x and y; 0: not known, or an angle.
    double GetPlanMetres() const { return plan.IsLength() ? plan.dSize : 0.0; }

    /// @return metres of a unit of z, which has that of x and y where none is stated; 0: not known.
    double GetHeightMetres() const { return height.IsLength() ? height.dSize : GetPlanMetres(); }
};

#endif

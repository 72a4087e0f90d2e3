#ifndef HOST_SHAPES_SHAPES_H
#define HOST_SHAPES_SHAPES_H

#include <zor3geom/PNT_2D.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorcld
{

class COutFile;

using TRing = std::vector<zor::geom::PNT_2D>;

/// Regions and lines in plan view, in the cloud's own coordinates.
struct CShapes
{
    std::vector<zor::geom::TMultiPartPolygon> vecPolygons;
    std::vector<TRing> vecLines;

    /// The polygons, and those lines that end where they begin.
    /// @throws CFailure naming `sPath` when there is none.
    std::vector<zor::geom::TMultiPartPolygon> GetRegions(const std::string& sPath) const;
};

/// Reads GeoJSON, well-known text, or CSV (x and y first in each line, or where a header names them: the
/// corners of one polygon), told apart by the extension. Heights and whatever else is in the file are left
/// out.
///
/// @param sOption  the option that the file was given to, for the message.
/// @throws CUsageError for an unknown extension, CFailure when the file cannot be read or understood.
CShapes ReadShapes(const std::string& sPath, const std::string& sOption);

/// @throws std::runtime_error when the ring has fewer than three corners, the first one again at the end not
/// counted.
void ExpectCorners(const TRing& ring);

// The readers of one kind. They throw std::runtime_error with the cause.
CShapes ParseGeoJson(const std::string& sText);
CShapes ParseWkt(std::string_view sText);
CShapes ParseCsvRing(std::string_view sText);

/// A number that belongs to a shape, with its name.
using TProperty = std::pair<std::string, double>;

/// Writes one polygon without holes, coordinates to 1/10000. The ring is written closed and, for GeoJSON,
/// counter-clockwise as the format has it.
void WriteGeoJson(COutFile& out, const TRing& ring, const std::vector<TProperty>& vecProperties);
void WriteWkt(COutFile& out, const TRing& ring);

/// Length of a ring with its closing edge, and its area: negative when it runs clockwise.
double CalcLength(const TRing& ring);
double CalcSignedArea(const TRing& ring);

} // namespace zorcld

#endif

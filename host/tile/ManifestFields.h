#ifndef HOST_TILE_MANIFESTFIELDS_H
#define HOST_TILE_MANIFESTFIELDS_H

#include <host/tile/CJsonField.h>
#include <host/tile/CManifest.h>

namespace zorcld
{

// What is read of a manifest, and of the notes beside unfinished tiles. All throw CFieldError: for what is
// missing, of another type, out of range, or contradicts the rest.

CManifest ManifestFromJson(const CJsonField& json);
CTileEntry TileFromJson(const CJsonField& json);
CTiledFile FileFromJson(const CJsonField& json);
CTileOptions OptionsFromJson(const CJsonField& json);
CTileUnits UnitsFromJson(const CJsonField& json);
TOrigin OriginFromJson(const CJsonField& json);
CCell CellFromJson(const CJsonField& column, const CJsonField& row);

} // namespace zorcld

#endif

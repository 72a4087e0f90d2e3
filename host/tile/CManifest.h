#ifndef HOST_TILE_CMANIFEST_H
#define HOST_TILE_CMANIFEST_H

#include <host/tile/CTileGrid.h>
#include <zor3geom/RECT_2D.h>
#include <zor3geom/RECT_3D.h>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zorcld
{

/// How the files are cut, as the user says it.
struct CTileOptions
{
    double dSize = 0.0;
    double dBuffer = 67.0; // of the ground filter: docs/tiles.md
    bool bDedupe = false;
    std::optional<CTileUnits> units; ///< that the user gives, whatever the files state
    bool bForGround = false; ///< nothing is cut where the tiles would not give the ground of the whole

    bool operator==(const CTileOptions& other) const
    {
        return dSize == other.dSize && dBuffer == other.dBuffer && bDedupe == other.bDedupe &&
               units == other.units;
    }
};

/// A file that was cut.
struct CTiledFile
{
    std::string sPath; ///< as given
    std::int64_t nNumBytes = 0;
    std::string sHash;
    std::int64_t nNumPnts = 0;
};

/// A tile that is there.
struct CTileEntry
{
    std::string sFile; ///< beside the manifest
    CCell cell;
    zor::geom::RECT_2D core;
    std::int64_t nNumPnts = 0;   ///< in its core
    std::int64_t nNumBuffer = 0; ///< around it
    zor::geom::RECT_3D box;      ///< of those in its core
    std::int64_t nNumBytes = 0;
    std::string sHash;
};

/// What a folder of tiles holds: docs/tiles.md tells the fields to people.
struct CManifest
{
    static constexpr const char* c_pFile = "manifest.json";
    static constexpr const char* c_pFormat = "zor4data-tiles";
    static constexpr int c_nFormatVersion = 1;

    CTileOptions options;
    double dMargin = 0.0;
    TOrigin origin{};
    bool bColor = false;
    CTileUnits units;
    std::int64_t nNumPnts = 0;
    std::int64_t nNumDuplicates = 0;
    zor::geom::RECT_3D box;
    std::vector<CTiledFile> vecFiles;
    std::vector<CTileEntry> vecTiles;

    /// @param sPath  of the manifest, or of its folder.
    static bool IsManifest(const std::string& sPath);

    /// @throws CFailure when it cannot be read, or is none.
    static CManifest Read(const std::string& sPath);

    /// @throws CFailure when it cannot be written; an older one is then as it was.
    void Write(const std::string& sPath) const;
};

/// Path of the manifest that a path names: its own, or that of its folder.
std::string FindManifestPath(const std::string& sPath);

/// Path of a tile.
/// @param sPath  of the manifest, or of its folder.
std::string FindTilePath(const std::string& sPath, const CTileEntry& tile);

nlohmann::ordered_json JsonFromTile(const CTileEntry& tile);
nlohmann::ordered_json JsonFromFile(const CTiledFile& file);
nlohmann::ordered_json JsonFromOptions(const CTileOptions& options);
nlohmann::ordered_json JsonFromUnits(const CTileUnits& units);

} // namespace zorcld

#endif

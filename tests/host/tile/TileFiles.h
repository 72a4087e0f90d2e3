#ifndef TESTS_HOST_TILE_TILEFILES_H
#define TESTS_HOST_TILE_TILEFILES_H

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class CZorcld;

/// A point as a native file stores it: offsets in 1/10000 from the origin.
using TSteps = std::array<std::int32_t, 3>;

/// What a native file holds, read without the library.
struct CNativePntsRead
{
    std::array<float, 3> afOrigin{};
    std::vector<TSteps> vecPnts; ///< sorted
};

CNativePntsRead ReadNativePnts(const std::string& sPath);

/// The manifest of a folder.
nlohmann::json ReadManifest(const std::string& sFolder);

/// The tiles in it.
std::vector<nlohmann::json> GetTiles(const std::string& sFolder);

/// First step of a border that stands on a half step.
std::int64_t StepFromBorder(double dBorder, float fOrigin);

/// Those of the points that lie in a tile's core, or up to so many steps beside it.
std::vector<TSteps> ChooseAround(const CNativePntsRead& pnts, const nlohmann::json& core,
                                 std::int64_t nReach);

/// The points of all cores, sorted.
std::vector<TSteps> JoinCores(const std::string& sFolder);

/// Coordinates of a scan of 300 × 300 units: land with steep edges, buildings, trees, scattered points, on
/// borders and corners of tiles of 16, 50 and 64 units, too. All of them are multiples of 1/2.
std::vector<float> MakeScan(std::uint32_t nSeed, int nNumPnts);

/// The same without points at the x and y of another one, which a cloud that reads a file would remove.
std::vector<float> WithoutStacked(const std::vector<float>& vecCoords);

/// What the commands write that are printed for a folder of tiles, sorted.
/// @param vecMore  options for the printing.
std::vector<TSteps> RunCommands(const CZorcld& zorcld, const std::string& sFolder,
                                const std::vector<std::string>& vecMore = {});

/// Bytes of all files of a folder, names before them, but for what is in folders of it.
std::string ReadFolder(const std::string& sFolder);

#endif

#ifndef HOST_TILE_TILEFOLDER_H
#define HOST_TILE_TILEFOLDER_H

#include <host/tile/CTileTable.h>

#include <set>
#include <string>
#include <vector>

namespace zorcld
{

/// Does a path name tiles, by their manifest or its folder? Else it may be a file of points.
/// @throws CFailure for a folder without a manifest, which says what is missing.
bool AreTiles(const std::string& sPath);

/// Removes what a run leaves that was killed. REQUIRES: no other run works there, so that nobody writes to
/// it any more.
void RemoveCutOff(const std::string& sFolder);

/// Files of tiles' names that nothing there tells of are somebody's, maybe those to be cut.
/// @throws CFailure where there is one.
void RefuseOthersTiles(const std::string& sFolder);

/// Behind an interrupted run a file of a planned tile's name may be its own.
/// @param setOwn  tiles that runs there have begun, or a manifest has told of.
/// @throws CFailure where there is one that is not.
void RefuseForeign(const std::string& sFolder, const std::vector<CTileCount>& vecPlanned,
                   const std::set<CCell>& setOwn);

} // namespace zorcld

#endif

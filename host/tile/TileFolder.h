#ifndef HOST_TILE_TILEFOLDER_H
#define HOST_TILE_TILEFOLDER_H

#include <string>

namespace zorcld
{

/// Removes what a run leaves that was killed. REQUIRES: no other run works there, so that nobody writes to
/// it any more.
void RemoveCutOff(const std::string& sFolder);

/// Files of tiles' names that nothing there tells of are somebody's, maybe those to be cut.
/// @throws CFailure where there is one.
void RefuseOthersTiles(const std::string& sFolder);

} // namespace zorcld

#endif

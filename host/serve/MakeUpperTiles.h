#ifndef HOST_SERVE_MAKEUPPERTILES_H
#define HOST_SERVE_MAKEUPPERTILES_H

#include <host/serve/CUpperTiles.h>

namespace zorcld
{

class CByteBudget;
class CCloudVersion;

/// Makes the tiles that a version keeps: as many as the budget and the memory have room for.
///
/// @param budget  what each holds is taken out of it, until the tile is kept nowhere and on no way.
CUpperTiles MakeUpperTiles(const CCloudVersion& version, const CByteBudget& budget);

} // namespace zorcld

#endif

#ifndef HOST_SERVE_MAKETILE_H
#define HOST_SERVE_MAKETILE_H

#include <host/serve/CCloudVersion.h>
#include <host/serve/CReply.h>
#include <host/serve/CTileAddress.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace zorcld
{

class CByteBudget;
struct CAttribute;

/// Is there such a cube on a level that has tiles?
bool IsTile(const CCloudVersion& version, const CTileAddress& address);

/// Makes a tile (docs/serve.md): of the version's level of detail the points of the cube. Large ones come in
/// pieces, and so do all for which the budget has no room otherwise.
///
/// @param pAttribute  that the colours stand for; null: the file's.
/// @param budget      what the reply holds is taken out of it, until the reply is gone.
/// @throws CRefusal where the budget has no room for pieces either.
/// REQUIRES: IsTile.
CReply MakeTile(const TVersion& pVersion, const CTileAddress& address,
                const std::shared_ptr<const CAttribute>& pAttribute, const CByteBudget& budget);

/// The same in the file's colours, as a whole or not at all. What it holds does not hold the version.
/// @return nothing where the tile is too large for that, or the budget has no room.
std::optional<CReply> TryMakeWholeTile(const CCloudVersion& version, const CTileAddress& address,
                                       const CByteBudget& budget);

} // namespace zorcld

#endif

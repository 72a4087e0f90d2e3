#ifndef HOST_SERVE_MAKETILE_H
#define HOST_SERVE_MAKETILE_H

#include <host/serve/CReply.h>
#include <host/serve/CServed.h>

#include <cstdint>
#include <memory>

namespace zorcld
{

class CByteBudget;
struct CAttribute;

/// Which cube of the octree a tile is.
struct CTileAddress
{
    int nLevel = 0; ///< 0: the root cube
    std::int32_t nI = 0;
    std::int32_t nJ = 0;
    std::int32_t nK = 0;
};

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

} // namespace zorcld

#endif

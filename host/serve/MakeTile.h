#ifndef HOST_SERVE_MAKETILE_H
#define HOST_SERVE_MAKETILE_H

#include <host/serve/CTileRun.h>

#include <string>

namespace zorcld
{

class CCloudVersion;
struct CAttribute;

/// Is there such a cube on a level that has tiles?
bool IsTile(const CCloudVersion& version, const CTileAddress& address);

/// Makes the bytes of a tile (docs/serve.md): of the version's level of detail the points of the cube.
///
/// @param pAttribute  that the colours stand for; null: the file's.
/// REQUIRES: IsTile.
std::string MakeTile(const CCloudVersion& version, const CTileAddress& address, const CAttribute* pAttribute);

} // namespace zorcld

#endif

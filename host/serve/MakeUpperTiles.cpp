#include <host/serve/MakeUpperTiles.h>

#include <host/serve/CByteBudget.h>
#include <host/serve/CCloudVersion.h>
#include <host/serve/MakeTile.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>
#include <utility>

namespace zorcld
{

CUpperTiles MakeUpperTiles(const CCloudVersion& version, const CByteBudget& budget)
{
    CUpperTiles tiles;
    const int nNumLevels = std::min(CUpperTiles::c_nNumLevels, version.GetNumLevels() + 1);
    try
    {
        for (int nLevel = 0; nLevel < nNumLevels; ++nLevel)
            for (std::int32_t n = 0; n < 1 << (3 * nLevel); ++n)
            {
                const CTileAddress address = {nLevel, n >> 2, n >> 1 & 1, n & 1};
                if (!IsTile(version, address))
                    continue;
                if (std::optional<CReply> reply = TryMakeWholeTile(version, address, budget))
                    tiles.Keep(address, std::move(*reply));
            }
    }
    catch (const std::bad_alloc&) // the others are made when they are asked for
    {
    }
    return tiles;
}

} // namespace zorcld

#ifndef HOST_SERVE_CUPPERTILES_H
#define HOST_SERVE_CUPPERTILES_H

#include <host/serve/CReply.h>
#include <host/serve/CTileAddress.h>

#include <array>
#include <cstddef>
#include <utility>

namespace zorcld
{

/// Tiles of levels 0 and 1, with which every view begins, in the file's colours: made ahead, since their
/// points lie farthest from each other, and kept as long as their version.
class CUpperTiles
{
public:
    static constexpr int c_nNumLevels = 2;

    /// REQUIRES: a level below c_nNumLevels, and a position on it; a reply with an owner.
    void Keep(const CTileAddress& address, CReply&& reply)
    {
        m_aReplies[GetPlace(address)] = std::move(reply);
    }

    /// @return null where the tile is not kept. REQUIRES: a position that there is on its level.
    const CReply* Find(const CTileAddress& address) const
    {
        if (address.nLevel >= c_nNumLevels)
            return nullptr;
        const CReply& reply = m_aReplies[GetPlace(address)];
        return reply.pOwner != nullptr ? &reply : nullptr;
    }

private:
    static std::size_t GetPlace(const CTileAddress& address)
    {
        const std::int32_t nOnLevel = address.nI * 4 + address.nJ * 2 + address.nK;
        return address.nLevel == 0 ? 0 : static_cast<std::size_t>(1 + nOnLevel);
    }

    std::array<CReply, 1 + 8> m_aReplies; // without an owner: not kept
};

} // namespace zorcld

#endif

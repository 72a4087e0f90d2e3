#include <host/serve/Resources.h>

#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/MakeTile.h>
#include <host/serve/ReadAttribute.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>

namespace zorcld
{

namespace
{

/// VERSION, LEVEL, I, J, K: whole numbers without a sign.
using TTilePath = std::array<std::int64_t, 5>;

std::optional<TTilePath> ParseTilePath(std::string_view sPath)
{
    TTilePath numbers{};
    const char* pPos = sPath.data();
    const char* const pEnd = pPos + sPath.size();
    for (std::size_t i = 0; i < numbers.size(); ++i)
    {
        if (i > 0 && (pPos == pEnd || *pPos++ != '/'))
            return {};
        if (pPos == pEnd || *pPos < '0' || *pPos > '9')
            return {};
        const std::from_chars_result result = std::from_chars(pPos, pEnd, numbers[i]);
        if (result.ec != std::errc() || numbers[i] > std::int64_t{0x7fffffff})
            return {};
        pPos = result.ptr;
    }
    return pPos == pEnd ? std::optional(numbers) : std::nullopt;
}

/// The attribute whose colours are asked for; null: none is.
std::shared_ptr<const CAttribute> FindAttribute(const CRequest& request, const CServed& served)
{
    const std::string* const pColor = request.FindParam("color");
    if (pColor == nullptr || *pColor == "file")
        return nullptr;
    if (ParseAttribute(*pColor) == LasAttribute_None)
        throw CRefusal(400, "color is none of file, class, intensity and return");
    auto pAttribute = served.FindAttribute(*pColor);
    if (pAttribute == nullptr)
        throw CRefusal(404, "these colours have not been made (/api/color)");
    return pAttribute;
}

/// Takes the tile that is kept, or makes it.
CReply GetTile(const TVersion& pVersion, const CTileAddress& address,
               const std::shared_ptr<const CAttribute>& pAttribute, const CServed& served)
{
    const CReply* const pKept = pAttribute == nullptr ? pVersion->FindUpperTile(address) : nullptr;
    return pKept != nullptr ? *pKept : MakeTile(pVersion, address, pAttribute, served.GetTileBudget());
}

/// Does If-None-Match hold a tag? It is a list, whose tags may be marked as weak, or a star for any.
bool HasTag(std::string_view sTags, std::string_view sTag)
{
    while (!sTags.empty())
    {
        std::string_view sOne = sTags.substr(0, sTags.find(','));
        sTags.remove_prefix(std::min(sOne.size() + 1, sTags.size()));
        sOne.remove_prefix(std::min(sOne.find_first_not_of(" \t"), sOne.size()));
        sOne = sOne.substr(0, sOne.find_last_not_of(" \t") + 1);
        if (sOne.substr(0, 2) == "W/")
            sOne.remove_prefix(2);
        if (sOne == sTag || sOne == "*")
            return true;
    }
    return false;
}

} // namespace

CReply AnswerTile(const CRequest& request, CServed& served)
{
    constexpr std::string_view c_sPrefix = "/api/tile/";
    const auto path = ParseTilePath(std::string_view(request.sPath).substr(c_sPrefix.size()));
    if (!path)
        throw CRefusal(400, "a tile is asked for as /api/tile/VERSION/LEVEL/I/J/K");
    const TVersion pVersion = served.FindVersion((*path)[0]);
    if (pVersion == nullptr)
        throw CRefusal(404, "there is no such version of the cloud");
    const CTileAddress address = {static_cast<int>((*path)[1]), static_cast<std::int32_t>((*path)[2]),
                                  static_cast<std::int32_t>((*path)[3]),
                                  static_cast<std::int32_t>((*path)[4])};
    if (!IsTile(*pVersion, address))
        throw CRefusal(404, "there is no such tile");

    const std::shared_ptr<const CAttribute> pAttribute = FindAttribute(request, served);
    const std::string sTag =
        fmt::format("\"{}{}\"", fmt::join(*path, "-"), pAttribute != nullptr ? "-" + pAttribute->sName : "");
    CReply reply;
    if (HasTag(request.sIfNoneMatch, sTag))
        reply.nStatus = 304;
    else
        reply = GetTile(pVersion, address, pAttribute, served);
    reply.vecHeaders.emplace_back("ETag", sTag);
    reply.vecHeaders.emplace_back("Cache-Control", "private, max-age=31536000, immutable");
    return reply;
}

} // namespace zorcld

#include <host/serve/CollectFacts.h>

#include <formats/CCoordSystem.h>
#include <formats/Compact.h>
#include <host/files/CFileKind.h>
#include <host/files/CInputFile.h>
#include <host/files/CLasTally.h>
#include <host/files/CoordSystemFacts.h>
#include <host/files/LoadCloud.h>
#include <host/output/HasColors.h>
#include <host/picture/CPictureUnits.h>
#include <host/picture/PictureOptions.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;
using TOffsets = std::array<std::int32_t, 3>;

TOffsets GetOffsets(const CPntArrays& arrays, std::int32_t i)
{
    TOffsets offsets;
    std::memcpy(offsets.data(),
                arrays.pPnts + static_cast<std::size_t>(i) * static_cast<std::size_t>(arrays.nStride),
                sizeof(offsets));
    return offsets;
}

/// Those of the points themselves: the octree's reach as far as its cubes do.
TJson FindBounds(const CPntArrays& arrays)
{
    if (arrays.nNumPnts == 0)
        return {};
    TOffsets least;
    TOffsets most;
    least.fill(std::numeric_limits<std::int32_t>::max());
    most.fill(std::numeric_limits<std::int32_t>::min());
    for (std::int32_t i = 0; i < arrays.nNumPnts; ++i)
    {
        const TOffsets offsets = GetOffsets(arrays, i);
        for (std::size_t k = 0; k < 3; ++k)
        {
            least[k] = std::min(least[k], offsets[k]);
            most[k] = std::max(most[k], offsets[k]);
        }
    }
    const auto place = [&](const TOffsets& offsets) -> TJson
    {
        return {CoordFromCompact(offsets[0], arrays.fOrgX), CoordFromCompact(offsets[1], arrays.fOrgY),
                CoordFromCompact(offsets[2], arrays.fOrgZ)};
    };
    return {{"min", place(least)}, {"max", place(most)}};
}

/// Percentiles 0 to 100 of the heights, of points spread evenly over the cloud.
TJson FindHeights(const CPntArrays& arrays)
{
    constexpr std::int32_t c_nSample = 100000;
    if (arrays.nNumPnts == 0)
        return {};
    std::vector<std::int32_t> vecHeights;
    const std::int32_t nStep = std::max(arrays.nNumPnts / c_nSample, 1);
    for (std::int64_t i = 0; i < arrays.nNumPnts; i += nStep)
        vecHeights.push_back(GetOffsets(arrays, static_cast<std::int32_t>(i))[2]);
    std::sort(vecHeights.begin(), vecHeights.end());
    TJson percentiles = TJson::array();
    for (std::size_t n = 0; n <= 100; ++n)
        percentiles.push_back(CoordFromCompact(vecHeights[(vecHeights.size() - 1) * n / 100], arrays.fOrgZ));
    return percentiles;
}

TJson TextOrNull(const std::string& sText)
{
    return sText.empty() ? TJson() : TJson(sText);
}

TJson MetresOrNull(double dMetres)
{
    return dMetres > 0.0 ? TJson(dMetres) : TJson();
}

TJson DescribeUnit(const CCoordSystem& coords)
{
    const CPictureUnits units = ChooseUnits(CPictureOptions(), coords);
    return {{"plan", TextOrNull(units.sPlan)},
            {"height", TextOrNull(units.sHeight)},
            {"degrees", units.bDegrees ? TJson(*units.bDegrees) : TJson()},
            {"plan_metres", MetresOrNull(coords.GetPlanMetres())},
            {"height_metres", MetresOrNull(coords.GetHeightMetres())}};
}

} // namespace

TJson CollectFacts(const CPntCld& cloud, CInputFile& file, const CLoadFacts& facts)
{
    const CPntArrays arrays = GetPntArrays(cloud);
    TJson json;
    json["type"] = file.GetKind().pName;
    const std::int64_t nAnnounced = file.GetFileFacts().nAnnounced;
    json["announced"] = nAnnounced >= 0 ? TJson(nAnnounced) : TJson();
    json["bounds"] = FindBounds(arrays);
    json["heights"] = FindHeights(arrays);
    json["colored"] = HasColors(cloud);
    json["unit"] = DescribeUnit(facts.coords);
    json["attributes"] = CanTally(file) ? TJson{"class", "intensity", "return"} : TJson::array();
    json["coordinate_system"] = CollectCoordSystem(facts.coords);
    return json;
}

} // namespace zorcld

#include <host/files/DescribeFacts.h>

#include <nlohmann/json.hpp>

namespace zorcld
{

using TJson = nlohmann::ordered_json;

void DescribeCause(const CFileCause& cause, TJson& info)
{
    info["cause"] = cause.empty() ? TJson() : TJson(cause.sText);
    info["cause_number"] = cause.empty() ? TJson() : TJson(static_cast<std::int32_t>(cause.eCause));
}

void DescribeHead(const CFileFacts& facts, TJson& info)
{
    const zor::geom::RECT_3D& box = facts.bounds;
    info["announced"] = facts.nAnnounced < 0 ? TJson() : TJson(facts.nAnnounced);
    info["color"] = facts.bColor;
    info["bounds"] = TJson();
    if (facts.bBounds)
        info["bounds"] = {{"min", {box.xmin, box.ymin, box.zmin}}, {"max", {box.xmax, box.ymax, box.zmax}}};
}

} // namespace zorcld

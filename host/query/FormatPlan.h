#ifndef HOST_QUERY_FORMATPLAN_H
#define HOST_QUERY_FORMATPLAN_H

#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <string>

namespace zorcld
{

/// Where the points of a cloud lie in plan, for notes on what was looked for elsewhere.
inline std::string FormatPlan(const CPntCld& cloud)
{
    zor::geom::RECT_3D box;
    if (!cloud.GetBdry(box))
        return "the cloud has no points";
    return fmt::format("the cloud has x from {:.4f} to {:.4f}, y from {:.4f} to {:.4f}", box.xmin, box.xmax,
                       box.ymin, box.ymax);
}

} // namespace zorcld

#endif

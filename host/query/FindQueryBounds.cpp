#include <host/query/FindQueryBounds.h>

#include <host/query/ParseNumbers.h>
#include <host/query/Query.h>
#include <host/shapes/ReadShapes.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace zorcld
{

using zor::geom::RECT_2D;

namespace
{

constexpr double c_dEndless = std::numeric_limits<double>::infinity();

// What walks through an octree may take in beside a border, several steps of the cloud.
constexpr double c_dSlack = 0.01;

RECT_2D FindLineBounds(const CPlanLine& line)
{
    const double d = line.dWidth + c_dSlack;
    return {std::min(line.p1.x, line.p2.x) - d, std::min(line.p1.y, line.p2.y) - d,
            std::max(line.p1.x, line.p2.x) + d, std::max(line.p1.y, line.p2.y) + d};
}

RECT_2D FindContourBounds(const std::string& sContour)
{
    RECT_2D rect(c_dEndless, c_dEndless, -c_dEndless, -c_dEndless);
    for (const auto& polygon : ReadShapes(sContour, "--contour").GetRegions(sContour))
        for (const zor::geom::PNT_2D& pnt : polygon.outer)
            rect = {std::min(rect.xmin, pnt.x), std::min(rect.ymin, pnt.y), std::max(rect.xmax, pnt.x),
                    std::max(rect.ymax, pnt.y)};
    return rect;
}

} // namespace

std::optional<RECT_2D> FindQueryBounds(const CQueryOptions& options)
{
    RECT_2D rect(-c_dEndless, -c_dEndless, c_dEndless, c_dEndless);
    if (!options.plan.sRect.empty())
        rect = ParseRect(options.plan.sRect);
    else if (!options.plan.sLine.empty())
        rect = FindLineBounds(ParseLine(options.plan.sLine));
    else if (!options.plan.sContour.empty() && !options.plan.bOutside)
        rect = FindContourBounds(options.plan.sContour);
    if (!options.sBox.empty())
    {
        const std::vector<double> b = ParseNumbers(options.sBox, ',', 6, "--box");
        rect = {std::max(rect.xmin, b[0] - c_dSlack), std::max(rect.ymin, b[1] - c_dSlack),
                std::min(rect.xmax, b[3] + c_dSlack), std::min(rect.ymax, b[4] + c_dSlack)};
    }
    if (rect.xmin == -c_dEndless && rect.xmax == c_dEndless)
        return {};
    return rect;
}

} // namespace zorcld

#include <host/query/PlanQuery.h>

#include <host/output/CFailure.h>
#include <host/query/CEachPnt.h>
#include <host/query/ParseNumbers.h>
#include <host/shapes/ReadShapes.h>
#include <zor4data/CPntCld.h>
#include <zor4data/FindPntsInPolygons.h>

#include <CLI/CLI.hpp>

namespace zorcld
{

using zor::geom::PNT_2D;
using zor::geom::RECT_2D;

namespace
{

/// Runs a query of one cloud and marks what it delivers; a point that comes twice is marked once.
template <class TQuery>
std::vector<bool> Mark(const CPntCld& cloud, TQuery query)
{
    std::vector<bool> vecChosen(static_cast<std::size_t>(cloud.GetNumPnts()));
    const auto mark = [&](const CCldCadPnt& pnt)
    { vecChosen[static_cast<std::size_t>(pnt.m_nIndex)] = true; };
    CEachPnt<decltype(mark)> listener(mark);
    query(listener);
    return vecChosen;
}

} // namespace

void AddPlanOptions(CLI::App& command, CPlanOptions& options)
{
    CLI::Option* const pRect =
        command.add_option("--rect", options.sRect, "Keep what is inside a rectangle, seen from above")
            ->type_name("xmin,ymin,xmax,ymax");
    CLI::Option* const pLine =
        command
            .add_option("--line", options.sLine, "Keep what is at most DIST beside a line, seen from above")
            ->type_name("x1,y1,x2,y2,DIST")
            ->excludes(pRect);
    command.add_flag("--ends", options.bEnds, "With --line: keep what is exactly at its ends too")
        ->needs(pLine);
    CLI::Option* const pContour = command
                                      .add_option("--contour", options.sContour,
                                                  "Keep what is inside the polygons of a file, seen from "
                                                  "above: .geojson, .wkt or .csv")
                                      ->type_name("FILE")
                                      ->excludes(pRect)
                                      ->excludes(pLine);
    command.add_flag("--outside", options.bOutside, "With --contour: keep what is outside instead")
        ->needs(pContour);
}

RECT_2D ParseRect(const std::string& sRect)
{
    const std::vector<double> r = ParseNumbers(sRect, ',', 4, "--rect");
    if (r[0] > r[2] || r[1] > r[3])
        throw CUsageError("--rect: a minimum is above its maximum");
    return {r[0], r[1], r[2], r[3]};
}

std::vector<bool> ChooseInRect(const CPntCld& cloud, const RECT_2D& rect)
{
    std::vector<bool> vecChosen(static_cast<std::size_t>(cloud.GetNumPnts()));
    for (std::size_t i = 0; i < vecChosen.size(); ++i)
    {
        zor::geom::PNT_3D pnt;
        cloud.GetPnt(static_cast<int>(i), pnt);
        vecChosen[i] = pnt.x >= rect.xmin && pnt.x <= rect.xmax && pnt.y >= rect.ymin && pnt.y <= rect.ymax;
    }
    return vecChosen;
}

CPlanLine ParseLine(const std::string& sLine)
{
    const std::vector<double> v = ParseNumbers(sLine, ',', 5, "--line");
    if (v[4] < 0.0)
        throw CUsageError("--line: the last number is below 0");
    return {PNT_2D(v[0], v[1]), PNT_2D(v[2], v[3]), v[4]};
}

TChoosePnts ParsePlan(const CPlanOptions& options)
{
    if (!options.sRect.empty())
        return [rect = ParseRect(options.sRect)](const CPntCld& cloud) { return ChooseInRect(cloud, rect); };
    if (!options.sLine.empty())
        return [line = ParseLine(options.sLine), bEnds = options.bEnds](const CPntCld& cloud)
        {
            return Mark(cloud,
                        [&](IPntCldListener& listener) {
                            cloud.FindPnts2D_NearLine(&listener, line.p1, line.p2, line.dWidth, bEnds, bEnds);
                        });
        };
    if (!options.sContour.empty())
        return [polygons = ReadShapes(options.sContour, "--contour").GetRegions(options.sContour),
                bOutside = options.bOutside](const CPntCld& cloud)
        {
            return Mark(cloud, [&](IPntCldListener& listener)
                        { FindPntsInPolygons(cloud, &listener, polygons, bOutside, c_nBatch); });
        };
    return {};
}

} // namespace zorcld

#ifndef HOST_QUERY_PLANQUERY_H
#define HOST_QUERY_PLANQUERY_H

#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_2D.h>

#include <functional>
#include <string>
#include <vector>

class CPntCld;
namespace CLI
{
class App;
}

namespace zorcld
{

/// What of the plan a command asks for, as the command line gives it.
struct CPlanOptions
{
    std::string sRect;
    std::string sLine;
    bool bEnds = false;
    std::string sContour;
    bool bOutside = false;
};

/// Adds --rect, --line, --ends, --contour and --outside.
void AddPlanOptions(CLI::App& command, CPlanOptions& options);

/// The rectangle that --rect gives, coordinate units.
/// @throws CUsageError
zor::geom::RECT_2D ParseRect(const std::string& sRect);

/// By index, which points of the cloud lie in the rectangle or on its edges: by the coordinates that the
/// cloud gives them, to the last digit, which its own query rounds. Cost: a look at every point.
std::vector<bool> ChooseInRect(const CPntCld& cloud, const zor::geom::RECT_2D& rect);

/// A line with a width, or half of one, behind it.
struct CPlanLine
{
    zor::geom::PNT_2D p1;
    zor::geom::PNT_2D p2;
    double dWidth = 0.0;
};

/// The line that --line gives.
/// @throws CUsageError for a width below 0.
CPlanLine ParseLine(const std::string& sLine);

/// Marks, by index, the points of a cloud that were asked for.
using TChoosePnts = std::function<std::vector<bool>(const CPntCld&)>;

/// The query that the options ask for, its files read; empty when they ask for none.
/// @throws CUsageError, CFailure
TChoosePnts ParsePlan(const CPlanOptions& options);

} // namespace zorcld

#endif

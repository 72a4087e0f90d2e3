#ifndef HOST_QUERY_QUERY_H
#define HOST_QUERY_QUERY_H

#include <host/query/CEachPnt.h>
#include <host/query/PlanQuery.h>
#include <zor3geom/PLANE_3D.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class CPntCld;
namespace CLI
{
class App;
}

namespace zorcld
{

/// What a command asks the cloud for, as the command line gives it.
struct CQueryOptions
{
    double dLod = 0.0;         ///< spacing; 0: not given
    std::int64_t nMaxPnts = 0; ///< the finest level of detail with at most so many; 0: not given
    std::vector<std::string> vecClips;
    std::string sBox;
    CPlanOptions plan;
};

/// Adds --lod, --points, --clip, --box and the options of the plan.
void AddQueryOptions(CLI::App& command, CQueryOptions& options);

/// A query that can be put to a cloud.
struct CQuery
{
    double dLod = 0.0; ///< spacing, coordinate units; 0: every point
    std::vector<zor::geom::PLANE_3D> vecPlanes;
    TChoosePnts choose;                               ///< what of the plan is wanted; may be empty
    std::shared_ptr<const std::vector<bool>> pChosen; ///< by index; null: every point

    /// Answers `choose` for a cloud: to be called between loading it and the first query.
    void Choose(const CPntCld& cloud);

    /// Is the point in front of none of the planes?
    bool IsInside(const zor::geom::PNT_3D& pnt) const;
};

/// The planes of --clip and --box, checked, and the query of the plan; no level of detail yet.
/// @throws CUsageError, CFailure when a file of a contour cannot be read
CQuery ParseQuery(const CQueryOptions& options);

/// Hands what the query delivers to the listener, in batches: with a spacing larger than the cloud one point.
void RunQuery(const CPntCld& cloud, const CQuery& query, IPntCldListener& listener);

/// @return the smallest spacing, of those that are a power of two of the cloud's smallest step, with
///         which the query delivers at most `nMaxPnts` points; 0 when without one it delivers no more.
double FindLod(const CPntCld& cloud, CQuery query, std::int64_t nMaxPnts);

/// Calls `fn(const CCldCadPnt&)` for every point that the query delivers.
template <class TFn>
void ForEachPnt(const CPntCld& cloud, const CQuery& query, TFn fn)
{
    CEachPnt<TFn> listener(fn);
    RunQuery(cloud, query, listener);
}

/// Number of points that the query delivers.
std::int64_t CountPnts(const CPntCld& cloud, const CQuery& query);

} // namespace zorcld

#endif

#ifndef HOST_QUERY_H
#define HOST_QUERY_H

#include <zor3geom/PLANE_3D.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <cstdint>
#include <string>
#include <vector>

class CPntCld;

namespace CLI
{
class App;
}

/// What a command asks the cloud for, as the command line gives it.
struct CQueryOptions
{
    double dLod = 0.0;         ///< spacing; 0: not given
    std::int64_t nMaxPnts = 0; ///< the finest level of detail with at most so many; 0: not given
    std::vector<std::string> vecClips;
    std::string sBox;
};

/// Adds --lod, --points, --clip and --box.
void AddQueryOptions(CLI::App& command, CQueryOptions& options);

/// A query that can be put to a cloud.
struct CQuery
{
    double dLod = 0.0; ///< spacing, coordinate units; 0: every point
    std::vector<zor::geom::PLANE_3D> vecPlanes;

    /// Is the point in front of none of the planes?
    bool IsInside(const zor::geom::PNT_3D& pnt) const;
};

/// The planes of --clip and --box, checked; no level of detail yet.
/// @throws CUsageError
CQuery ParseQuery(const CQueryOptions& options);

/// Hands what the query delivers to the listener, in batches.
void RunQuery(const CPntCld& cloud, const CQuery& query, IPntCldListener& listener);

/// @return the smallest spacing, of those that are a power of two of the cloud's smallest step, with
///         which the query delivers at most `nMaxPnts` points; 0 when the cloud has no more than that.
double FindLod(const CPntCld& cloud, CQuery query, std::int64_t nMaxPnts);

/// Listener that hands point by point to a function, which outlives it.
template <class TFn>
class CEachPnt final : public IPntCldListener
{
public:
    explicit CEachPnt(TFn& fn) : m_fn(fn) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_fn(pPnts[i]);
    }

private:
    TFn& m_fn;
};

/// Calls `fn(const CCldCadPnt&)` for every point that the query delivers.
template <class TFn>
void ForEachPnt(const CPntCld& cloud, const CQuery& query, TFn fn)
{
    CEachPnt<TFn> listener(fn);
    RunQuery(cloud, query, listener);
}

/// Number of points that the query delivers.
std::int64_t CountPnts(const CPntCld& cloud, const CQuery& query);

#endif

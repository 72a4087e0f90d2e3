#ifndef HOST_SERVE_CPNTCHOICE_H
#define HOST_SERVE_CPNTCHOICE_H

#include <host/output/CPntSummary.h>
#include <host/query/Query.h>
#include <host/serve/CServed.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <functional>
#include <vector>

namespace zorcld
{

struct CRequest;

/// Points marked by index, a bit each, and what is known of them.
struct CMarkedPnts
{
    TVersion pVersion; ///< whose points they are
    std::vector<bool> vecMarks;
    CPntSummary summary;
};

/// Which points of which version a request asks for.
class CPntChoice
{
public:
    /// @param request  outlives the choice.
    /// Reads `version`, `clip`, `box`, `polygon` and `outside` (docs/serve.md).
    /// @throws CRefusal, CUsageError
    CPntChoice(const CRequest& request, const CServed& served);

    const TVersion& GetVersion() const { return m_pVersion; }
    /// The planes alone.
    const CQuery& GetQuery() const { return m_query; }

    /// Marks the points chosen.
    /// @throws CRefusal where the client has gone meanwhile; the others too.
    CMarkedPnts Mark() const;

    /// Marks those of the points that a query of the cloud delivers which are in front of none of the planes.
    using TQuery = std::function<void(const CPntCld&, IPntCldListener&)>;
    CMarkedPnts MarkOf(const TQuery& query) const;

private:
    void CheckWanted() const;

    const CRequest& m_request;
    TVersion m_pVersion;
    CQuery m_query; // the planes
    std::vector<zor::geom::TMultiPartPolygon> m_vecPolygons;
    bool m_bOutside = false;
};

} // namespace zorcld

#endif

#ifndef TESTS_HOST_SERVE_SUPPORT_CTESTSERVER_H
#define TESTS_HOST_SERVE_SUPPORT_CTESTSERVER_H

#include <host/serve/CGate.h>
#include <host/serve/CHttpServer.h>
#include <host/serve/CReply.h>
#include <host/serve/CServed.h>
#include <zor3geom/PNT_3D.h>

#include <nlohmann/json.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A cloud of these points. Their colours, where they have any, tell them apart: 24 bits of the position in
/// the array once the octree is built.
std::unique_ptr<CPntCld> MakeShownCloud(const std::vector<zor::geom::PNT_3D>& vecPnts, bool bColor);

/// Points of a hilly ground with steps, n × n.
std::vector<zor::geom::PNT_3D> MakeHills(int nSide);

/// A cloud as the server shows it, asked without a network.
class CTestShow
{
public:
    /// @param cloud  null: it is still being loaded.
    explicit CTestShow(const CPntCld* pCloud, const std::string& sPath = "hill.ply");

    /// @param sTarget  the token is put behind it.
    zorcld::CReply Ask(const std::string& sTarget);
    zorcld::CReply AskRaw(const zorcld::CRequest& request);

    /// All bytes of the answer, which must be status 200.
    std::string GetBytes(const std::string& sTarget);
    nlohmann::ordered_json GetJson(const std::string& sTarget);

    /// Asks until the job is done, or failed.
    nlohmann::ordered_json FinishJob(const std::string& sTarget);

    zorcld::CServed& GetServed() { return m_served; }
    const zorcld::CGate& GetGate() const { return m_gate; }

private:
    zorcld::CServed m_served;
    zorcld::CGate m_gate;
};

/// All bytes of a reply's body.
std::string TakeBody(const zorcld::CReply& reply);

/// A server that waits for its clients long enough on any machine, however much else that has to do.
zorcld::CHttpOptions MakePatient();

/// The same on a port of this machine.
class CTestServer
{
public:
    explicit CTestServer(const CPntCld* pCloud, const zorcld::CHttpOptions& options = MakePatient());

    int GetPort() const { return m_server.GetPort(); }
    zorcld::CServed& GetServed() { return m_served; }

    /// A path with the token.
    std::string WithToken(const std::string& sPath) const;

private:
    zorcld::CServed m_served;
    std::unique_ptr<zorcld::CGate> m_pGate;
    zorcld::CHttpServer m_server;
};

#endif

#include <tests/host/serve/support/CTestServer.h>

#include <host/files/CFileColors.h>
#include <host/serve/Answer.h>
#include <host/serve/CRequest.h>
#include <zor4data/CPntArrays.h>

#include <chrono>
#include <cmath>
#include <stdexcept>
#include <thread>

using zor::geom::PNT_3D;
using namespace zorcld;

namespace
{

constexpr int c_nPort = 4711;
constexpr std::int64_t c_nFirstVersion = 77;

CFileColors g_colors; // holds nothing

std::string AddToken(const std::string& sTarget, const std::string& sToken)
{
    return sTarget + (sTarget.find('?') == std::string::npos ? "?token=" : "&token=") + sToken;
}

} // namespace

std::unique_ptr<CPntCld> MakeShownCloud(const std::vector<PNT_3D>& vecPnts, bool bColor)
{
    auto pCloud = std::make_unique<CPntCld>(&g_colors);
    pCloud->OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
    pCloud->Init(static_cast<int>(vecPnts.size()));
    for (const PNT_3D& pnt : vecPnts)
        pCloud->AddPnt(pnt.x, pnt.y, pnt.z);
    pCloud->ComputeTree();
    const CPntArrays arrays = GetPntArrays(*pCloud);
    for (std::int32_t i = 0; bColor && i < arrays.nNumPnts; ++i)
    {
        auto* const pColor =
            const_cast<unsigned char*>(arrays.pPnts) + std::ptrdiff_t{i} * arrays.nStride + 12;
        for (int k = 0; k < 3; ++k)
            pColor[k] = static_cast<unsigned char>(i >> (8 * k));
    }
    return pCloud;
}

std::vector<PNT_3D> MakeHills(int nSide)
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < nSide; ++i)
        for (int k = 0; k < nSide; ++k)
            vecPnts.emplace_back(500000.0 + 0.37 * i, 4000000.0 + 0.41 * k,
                                 120.0 + 3.0 * std::sin(0.05 * i) + 2.0 * std::cos(0.07 * k) +
                                     ((i / 20 + k / 20) % 3 == 0 ? 6.0 : 0.0));
    return vecPnts;
}

CTestShow::CTestShow(const CPntCld* pCloud, const std::string& sPath)
    : m_served({sPath, ""}, c_nFirstVersion, 0), m_gate("127.0.0.1", c_nPort, MakeToken())
{
    if (pCloud != nullptr)
        m_served.SetReady(*pCloud, {{{"attributes", {"class", "intensity", "return"}}}, {}});
}

CReply CTestShow::AskRaw(const CRequest& request)
{
    return Answer(request, m_gate, m_served);
}

CReply CTestShow::Ask(const std::string& sTarget)
{
    CRequest request;
    request.sMethod = "GET";
    request.sHost = "127.0.0.1:" + std::to_string(c_nPort);
    if (!ParseTarget(AddToken(sTarget, m_gate.GetToken()), request))
        return MakeLineReply(400, "");
    return AskRaw(request);
}

std::string TakeBody(const CReply& reply)
{
    std::string sBytes(reply.sBody);
    std::string sPiece;
    while (reply.pPieces != nullptr && reply.pPieces->MakeNext(sPiece))
        sBytes += sPiece;
    return sBytes;
}

std::string CTestShow::GetBytes(const std::string& sTarget)
{
    const CReply reply = Ask(sTarget);
    if (reply.nStatus != 200)
        throw std::runtime_error(sTarget + ": " + std::to_string(reply.nStatus) + " " +
                                 std::string(reply.sBody));
    return TakeBody(reply);
}

nlohmann::ordered_json CTestShow::GetJson(const std::string& sTarget)
{
    return nlohmann::ordered_json::parse(GetBytes(sTarget));
}

nlohmann::ordered_json CTestShow::FinishJob(const std::string& sTarget)
{
    constexpr int c_nTries = 6000;
    for (int n = 0; n < c_nTries; ++n)
    {
        const nlohmann::ordered_json json = GetJson(sTarget);
        if (json["state"] != "running")
            return json;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::runtime_error(sTarget + ": does not end");
}

CHttpOptions MakePatient()
{
    CHttpOptions options;
    for (auto* const pTime :
         {&options.timeFirst, &options.timeRequest, &options.timePiece, &options.timeToGo})
        *pTime = std::chrono::minutes(5);
    return options;
}

CTestServer::CTestServer(const CPntCld* pCloud, const CHttpOptions& options)
    : m_served({"hill.ply", ""}, c_nFirstVersion, 0),
      m_server(options, {[this](const CRequest& request) { return Answer(request, *m_pGate, m_served); },
                         [](const CRequest& request) { return IsSlow(request); }})
{
    if (pCloud != nullptr)
        m_served.SetReady(*pCloud, {{{"attributes", nlohmann::ordered_json::array()}}, {}});
    m_pGate = std::make_unique<CGate>("127.0.0.1", m_server.GetPort(), MakeToken());
    m_server.Start();
}

std::string CTestServer::WithToken(const std::string& sPath) const
{
    return AddToken(sPath, m_pGate->GetToken());
}

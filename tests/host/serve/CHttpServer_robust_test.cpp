// Damaged and hostile requests: the server answers each with a status of its own or closes the connection,
// and is as good as before. 10,000 of them; ZOR4DATA_SERVE_REQUESTS says another number. Nothing leaves this
// machine.

#include <tests/host/serve/support/CHttpClient.h>
#include <tests/host/serve/support/CTestServer.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace
{

using namespace zorcld;

int GetNumRequests()
{
    const char* const pNumber = std::getenv("ZOR4DATA_SERVE_REQUESTS");
    return pNumber != nullptr ? std::max(std::atoi(pNumber), 1) : 10000;
}

const std::vector<std::string>& GetTargets()
{
    static const std::vector<std::string> c_vecTargets = {
        "/",
        "/page.js",
        "/api/info",
        "/api/tile/77/0/0/0/0",
        "/api/tile/77/1/0/1/0?color=class",
        "/api/pick?ox=500010&oy=4000010&oz=200&dx=0.01&dy=0.02&dz=-1&tan=0.01&clip=1,0,0,-5",
        "/api/nearest?x=500005&y=4000007&z=121&max=3",
        "/api/point?index=5",
        "/api/rect?xmin=500003&ymin=4000003&xmax=500009&ymax=4000011",
        "/api/count?polygon=500002,4000002,500015,4000003,500004,4000017&outside=1",
        "/api/export?format=csv&box=500000,4000000,100,500002,4000002,130",
        "/api/export?format=ply&version=77&polygon=1,2,3,4,5,6",
        "/api/profile?x1=500002&y1=4000002&x2=500015&y2=4000013&width=2&format=csv",
        "/api/profile?x1=500002&y1=4000002&x2=500015&y2=4000013&width=2",
        "/api/outline?distance=2",
        "/api/outline?cancel=1",
        "/api/ground?scale=1",
        "/api/ground?cancel=1",
        "/api/color?by=class",
    };
    return c_vecTargets;
}

/// Words that parsers stumble over.
const std::vector<std::string> c_vecWords = {
    "../",
    "%2e%2e/",
    "%00",
    "%",
    "%zz",
    "nan",
    "inf",
    "-1",
    "1e999",
    "1e-999",
    "99999999999999999999",
    "0x10",
    "",
    "2147483647",
    "2147483648",
    "-2147483649",
    "4294967295",
    "\r\n",
    "\n",
    "\r",
    " ",
    "\t",
    "&",
    "=",
    "?",
    "#",
    "//",
    "\"",
    "'",
    "<script>",
    "\xff\xfe",
    "{}",
    std::string(300, '9'),
    std::string(2000, 'A'),
    std::string(1, '\0'),
    "Content-Length: 99999999999\r\n",
    "Transfer-Encoding: chunked\r\n",
    "Host: evil.example\r\n",
    "Origin: null\r\n",
    "HTTP/1.0",
    "HTTP/2.0",
    "POST",
    "CONNECT",
    ",,,,,,",
    "1,2,3,4,5,6",
    "token=",
    "Expect: 100-continue\r\n",
};

/// Replaces, inserts, removes and repeats bytes and words.
std::string Damage(std::string sRequest, CRandom& random)
{
    const auto pos = [&]
    { return static_cast<std::size_t>(random.Int(0, static_cast<std::int64_t>(sRequest.size()))); };
    for (std::int64_t n = random.Int(0, 4); n > 0; --n)
    {
        const std::size_t nAt = pos();
        switch (random.Int(0, 5))
        {
        case 0:
            sRequest.insert(nAt, random.Pick(c_vecWords));
            break;
        case 1:
            sRequest.erase(nAt, static_cast<std::size_t>(random.Int(1, 30)));
            break;
        case 2:
            if (nAt < sRequest.size())
                sRequest[nAt] = static_cast<char>(random.Int(0, 255));
            break;
        case 3:
            sRequest.replace(nAt, static_cast<std::size_t>(random.Int(0, 12)), random.Pick(c_vecWords));
            break;
        case 4:
            sRequest.insert(nAt, sRequest.substr(pos(), static_cast<std::size_t>(random.Int(1, 60))));
            break;
        default:
            sRequest.resize(nAt); // half a request
        }
    }
    return sRequest;
}

bool IsKnown(int nStatus)
{
    static const std::set<int> c_setStatuses = {200, 304, 400, 403, 404, 405, 413, 503};
    return c_setStatuses.count(nStatus) > 0;
}

/// One client: a connection for some requests, then the next.
class CHostile
{
public:
    CHostile(const CTestServer& server, unsigned nSeed) : m_server(server), m_random(nSeed) {}

    void Run(int nNumRequests)
    {
        for (int n = 0; n < nNumRequests; ++n)
            SendOne();
    }

    int GetNumAnswered() const { return m_nNumAnswered; }
    const std::string& GetFault() const { return m_sFault; }

private:
    void SendOne()
    {
        if (m_pClient == nullptr)
            m_pClient = std::make_unique<CHttpClient>(m_server.GetPort());
        std::string sTarget = m_random.Pick(GetTargets());
        if (m_random.Chance(3))
            sTarget = Damage(sTarget, m_random);
        if (!m_random.Chance(10))
            sTarget = m_server.WithToken(sTarget);
        std::string sRequest = "GET " + sTarget +
                               " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(m_server.GetPort()) +
                               "\r\nAccept: */*\r\n\r\n";
        if (m_random.Chance(2))
            sRequest = Damage(sRequest, m_random);
        const bool bSent = m_pClient->Send(sRequest);
        // Half a request is not waited for: its connection is left as it is.
        const bool bWhole = sRequest.find("\r\n\r\n") != std::string::npos;
        const CHttpReply reply =
            bSent && bWhole && !m_random.Chance(20) ? m_pClient->Receive() : CHttpReply();
        if (reply.nStatus != 0)
        {
            ++m_nNumAnswered;
            if (!IsKnown(reply.nStatus))
                m_sFault = std::to_string(reply.nStatus) + " for " + sRequest;
        }
        if (reply.nStatus != 200 || m_random.Chance(8))
            m_pClient = nullptr;
    }

    const CTestServer& m_server;
    CRandom m_random;
    std::unique_ptr<CHttpClient> m_pClient;
    int m_nNumAnswered = 0;
    std::string m_sFault;
};

TEST(CHttpServer_robust, HostileRequests_AreAnsweredOrClosed)
{
    constexpr int c_nNumClients = 4;
    const auto pCloud = MakeShownCloud(MakeHills(40), true);
    CTestServer server(pCloud.get());
    std::vector<CHostile> vecHostile;
    for (unsigned n = 0; n < c_nNumClients; ++n)
        vecHostile.emplace_back(server, n + 1);
    std::vector<std::thread> vecThreads;
    const int nNumEach = (GetNumRequests() + c_nNumClients - 1) / c_nNumClients;
    for (CHostile& hostile : vecHostile)
        vecThreads.emplace_back([&hostile, nNumEach] { hostile.Run(nNumEach); });
    for (std::thread& thread : vecThreads)
        thread.join();
    int nNumAnswered = 0;
    for (const CHostile& hostile : vecHostile)
    {
        EXPECT_EQ(hostile.GetFault(), "");
        nNumAnswered += hostile.GetNumAnswered();
    }
    EXPECT_GT(nNumAnswered, GetNumRequests() / 3);
    CHttpClient client(server.GetPort());
    EXPECT_EQ(client.Get(server.WithToken("/api/info")).nStatus, 200);
}

// Connections come and go in all states while others are answered.
TEST(CHttpServer_robust, ManyConnections_LeaveNothingBehind)
{
    CTestServer server(nullptr);
    CRandom random(9);
    std::vector<std::unique_ptr<CHttpClient>> vecClients;
    for (int n = 0; n < 600; ++n)
    {
        vecClients.push_back(std::make_unique<CHttpClient>(server.GetPort()));
        if (random.Chance(2))
            vecClients.back()->Send("GET " + server.WithToken("/api/info") + " HTTP/1.1\r\nHost: 127");
        if (vecClients.size() > 100)
            vecClients.erase(vecClients.begin() + random.Int(0, 99));
    }
    vecClients.clear();
    int nStatus = 503;
    for (int n = 0; n < 6000 && nStatus != 200; ++n)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        nStatus = CHttpClient(server.GetPort()).Get(server.WithToken("/api/info")).nStatus;
    }
    EXPECT_EQ(nStatus, 200);
}

} // namespace

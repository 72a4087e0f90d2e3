// The server and its clients: what HTTP asks of it, and the limits that it keeps.

#include <tests/host/serve/support/CHttpClient.h>
#include <tests/host/serve/support/CTestServer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace
{

using namespace zorcld;

class CHttpServer_case : public ::testing::Test
{
public:
    std::string Host() const { return "Host: 127.0.0.1:" + std::to_string(server.GetPort()) + "\r\n"; }

    std::unique_ptr<CPntCld> pCloud = MakeShownCloud(MakeHills(100), true);
    CTestServer server{pCloud.get()};
};

TEST_F(CHttpServer_case, KeepAlive_ManyRequestsOneConnection)
{
    CHttpClient client(server.GetPort());
    for (int n = 0; n < 20; ++n)
    {
        const CHttpReply reply = client.Get(server.WithToken("/api/info"));
        ASSERT_EQ(reply.nStatus, 200);
        EXPECT_EQ(reply.FindHeader("connection"), "keep-alive");
        EXPECT_NE(reply.FindHeader("content-security-policy").find("default-src 'self'"), std::string::npos);
        EXPECT_EQ(reply.FindHeader("access-control-allow-origin"), "");
    }
}

TEST_F(CHttpServer_case, Pipelined_AnsweredInOrder)
{
    CHttpClient client(server.GetPort());
    client.Send("GET " + server.WithToken("/api/info") + " HTTP/1.1\r\n" + Host() +
                "\r\nGET /none HTTP/1.1\r\n" + Host() + "\r\n");
    EXPECT_EQ(client.Receive().nStatus, 200);
    EXPECT_EQ(client.Receive().nStatus, 403);
}

TEST_F(CHttpServer_case, Cookie_LetsInWithoutTheParameter)
{
    CHttpClient client(server.GetPort());
    const std::string sCookie = client.Get(server.WithToken("/")).FindHeader("set-cookie");
    EXPECT_NE(sCookie.find("; HttpOnly; SameSite=Strict"), std::string::npos);
    const std::string sHeader = "Cookie: " + sCookie.substr(0, sCookie.find(';')) + "\r\n";
    EXPECT_EQ(client.Get("/page.js", sHeader).nStatus, 200);
    EXPECT_EQ(client.Get("/page.js").nStatus, 403);
    EXPECT_EQ(client.Get("/api/info", sHeader).nStatus, 200);
    EXPECT_EQ(client.Get("/api/info", sHeader + "Sec-Fetch-Site: same-site\r\n").nStatus, 403);
    EXPECT_EQ(client.Get(server.WithToken("/api/info"), "Sec-Fetch-Site: same-site\r\n").nStatus, 403);
    EXPECT_EQ(client.Get(server.WithToken("/api/info"), "Sec-Fetch-Site: same-origin\r\n").nStatus, 200);
}

TEST_F(CHttpServer_case, TooLarge_Is413)
{
    for (const std::string& sRequest :
         {"GET /" + std::string(9000, 'a') + " HTTP/1.1\r\n" + Host() + "\r\n",
          "GET / HTTP/1.1\r\n" + Host() + "A: " + std::string(9000, 'b') + "\r\n\r\n",
          "GET / HTTP/1.1\r\n" + Host() + "Content-Length: 5\r\n\r\nhello",
          "GET / HTTP/1.1\r\n" + Host() + "Transfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n"})
    {
        CHttpClient client(server.GetPort());
        client.Send(sRequest);
        const CHttpReply reply = client.Receive();
        EXPECT_EQ(reply.nStatus, 413) << sRequest.substr(0, 100);
        EXPECT_TRUE(client.IsClosed(5000));
    }
}

// To the byte, wherever the bytes are.
TEST_F(CHttpServer_case, EightKibibytes_AreTaken)
{
    for (const std::size_t nSize : {8191U, 8192U, 8193U, 8194U, 8200U})
        for (const bool bInLine : {true, false})
        {
            const std::string sLine = "GET " + server.WithToken("/api/info");
            const std::string sRest = " HTTP/1.1\r\n" + Host();
            std::string sRequest = bInLine ? sLine + "&a=" : sLine + sRest + "A: ";
            const std::string sEnd = bInLine ? sRest + "\r\n" : "\r\n\r\n";
            sRequest += std::string(nSize - sRequest.size() - sEnd.size(), 'a') + sEnd;
            CHttpClient client(server.GetPort());
            client.Send(sRequest);
            EXPECT_EQ(client.Receive().nStatus, nSize <= 8192 ? 200 : 413) << nSize << " " << bInLine;
        }
}

// Two requests in one packet are each of their own size.
TEST_F(CHttpServer_case, EightKibibytes_AreCountedForEachRequest)
{
    CHttpClient client(server.GetPort());
    const std::string sRequest = "GET " + server.WithToken("/api/info") + " HTTP/1.1\r\n" + Host() +
                                 "A: " + std::string(6000, 'a') + "\r\n\r\n";
    client.Send(sRequest + sRequest);
    EXPECT_EQ(client.Receive().nStatus, 200);
    EXPECT_EQ(client.Receive().nStatus, 200);
}

TEST_F(CHttpServer_case, NoHttp_Is400)
{
    for (const std::string& sRequest :
         {std::string("hello\r\n\r\n"), std::string("GET\r\n\r\n"), std::string("GET / HTTP/9.9\r\n\r\n"),
          std::string("\x16\x03\x01\x02\r\n\r\n"), "GET none HTTP/1.1\r\n" + Host() + "\r\n",
          "GET /%00 HTTP/1.1\r\n" + Host() + "\r\n", "GET / HTTP/1.1\r\n" + Host() + Host() + "\r\n",
          "GET / HTTP/1.1\r\n" + Host() + "Origin: http://127.0.0.1\r\nOrigin: http://b\r\n\r\n",
          "GET / HTTP/1.1\r\n" + Host() + "no colon\r\n\r\n"})
    {
        CHttpClient client(server.GetPort());
        client.Send(sRequest);
        EXPECT_EQ(client.Receive().nStatus, 400) << sRequest;
        EXPECT_TRUE(client.IsClosed(5000));
    }
}

TEST_F(CHttpServer_case, Post_Is405)
{
    CHttpClient client(server.GetPort());
    client.Send("POST " + server.WithToken("/api/info") + " HTTP/1.1\r\n" + Host() + "\r\n");
    const CHttpReply reply = client.Receive();
    EXPECT_EQ(reply.nStatus, 405);
    EXPECT_EQ(reply.FindHeader("allow"), "GET");
}

// A body behind the head would be taken for the next reply.
TEST_F(CHttpServer_case, Head_LeavesTheConnectionGood)
{
    CHttpClient client(server.GetPort());
    client.Send("HEAD " + server.WithToken("/api/info") + " HTTP/1.1\r\n" + Host() + "\r\nGET " +
                server.WithToken("/api/info") + " HTTP/1.1\r\n" + Host() + "\r\n");
    EXPECT_EQ(client.Receive().nStatus, 405);
    EXPECT_EQ(client.Receive().nStatus, 200);
}

TEST_F(CHttpServer_case, Head_OfWhatIsRefusedGetsNoBody)
{
    for (const std::string& sRequest :
         {"HEAD /%zz HTTP/1.1\r\n" + Host() + "\r\n", "HEAD / HTTP/1.1\r\n" + Host() + Host() + "\r\n",
          "HEAD / HTTP/9.9\r\n" + Host() + "\r\n",
          "HEAD / HTTP/1.1\r\n" + Host() + "Content-Length: 5\r\n\r\nhello",
          "HEAD /" + std::string(9000, 'a') + " HTTP/1.1\r\n" + Host() + "\r\n",
          "HEAD / HTTP/1.1\r\n" + Host() + "A: " + std::string(9000, 'b') + "\r\n\r\n"})
    {
        CHttpClient client(server.GetPort());
        client.Send(sRequest);
        const std::string sAll = client.ReceiveAll();
        EXPECT_EQ(sAll.substr(0, 10), "HTTP/1.1 4") << sRequest.substr(0, 100);
        EXPECT_EQ(sAll.find("\r\n\r\n") + 4, sAll.size()) << sRequest.substr(0, 100);
    }
}

TEST_F(CHttpServer_case, EmptyLineBeforeARequest_IsPassedOver)
{
    CHttpClient client(server.GetPort());
    const std::string sRequest =
        "\r\nGET " + server.WithToken("/api/info") + " HTTP/1.1\r\n" + Host() + "\r\n";
    client.Send(sRequest + sRequest);
    EXPECT_EQ(client.Receive().nStatus, 200);
    EXPECT_EQ(client.Receive().nStatus, 200);
    client.Send("\r\n");
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    client.Send(sRequest.substr(2));
    EXPECT_EQ(client.Receive().nStatus, 200);
    client.Send("\r\n\r\n" + sRequest);
    EXPECT_EQ(client.Receive().nStatus, 400);
}

TEST_F(CHttpServer_case, AbsoluteTarget_IsTaken)
{
    const std::string sHere = "http://127.0.0.1:" + std::to_string(server.GetPort());
    CHttpClient client(server.GetPort());
    EXPECT_EQ(client.Get(sHere + server.WithToken("/api/info")).nStatus, 200);
    EXPECT_EQ(client.Get("http://evil.example" + server.WithToken("/api/info")).nStatus, 403);
}

// Clients that go in the middle of an answer leave nothing behind: four at once may be sent a file.
TEST_F(CHttpServer_case, GoneInTheMiddle_MakesRoom)
{
    for (int n = 0; n < 20; ++n)
    {
        CHttpClient client(server.GetPort());
        client.Send("GET " + server.WithToken("/api/export?format=csv") + " HTTP/1.1\r\n" + Host() + "\r\n");
        if (n % 2 == 0)
            client.IsClosed(0); // reads a little
    }
    int nStatus = 503;
    for (int n = 0; n < 200 && nStatus == 503; ++n)
    {
        nStatus = CHttpClient(server.GetPort()).Get(server.WithToken("/api/export?format=csv")).nStatus;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(nStatus, 200);
}

/// A slow resource whose answer is made until nobody waits for it, or for a time.
class CSlowShow
{
public:
    CReply Answer(const CRequest& request)
    {
        const auto end =
            std::chrono::steady_clock::now() + std::chrono::milliseconds(request.sPath == "/long"     ? 20000
                                                                         : request.sPath == "/second" ? 1000
                                                                                                      : 0);
        ++nNumBegun;
        while (!request.IsForNobody() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        nNumGone += request.IsForNobody() ? 1 : 0;
        return MakeLineReply(200, "done");
    }

    std::atomic<int> nNumBegun{0};
    std::atomic<int> nNumGone{0};
    CHttpServer server{
        {},
        {[this](const CRequest& request) { return Answer(request); }, [](const CRequest&) { return true; }}};
};

/// Waits for a count to be reached, for some time.
bool Reaches(const std::atomic<int>& n, int nWanted)
{
    for (int i = 0; i < 3000 && n < nWanted; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return n == nWanted;
}

// Answers that take long end with the client that waits for them, those that wait for their turn are not
// begun.
TEST(CHttpServer, Gone_IsNoticedWhileTheAnswerIsMade)
{
    CSlowShow show;
    show.server.Start();
    {
        std::vector<std::unique_ptr<CHttpClient>> vecClients;
        for (int n = 0; n < 5; ++n) // two are answered at once
        {
            if (n == 2)
            {
                ASSERT_TRUE(Reaches(show.nNumBegun, 2));
            }
            vecClients.push_back(std::make_unique<CHttpClient>(show.server.GetPort()));
            vecClients.back()->Send("GET /long HTTP/1.1\r\nHost: x\r\n\r\n");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100)); // the others have arrived
        vecClients.resize(2);
        std::this_thread::sleep_for(std::chrono::milliseconds(100)); // and gone
    }
    EXPECT_TRUE(Reaches(show.nNumGone, 2));
    CHttpClient client(show.server.GetPort());
    EXPECT_EQ(client.Get("/short").nStatus, 200);
    EXPECT_EQ(show.nNumBegun, 3); // of those that waited none was
    EXPECT_EQ(show.nNumGone, 2);
}

// Who has only nothing more to say waits for the answer all the same.
TEST(CHttpServer, HalfClosed_IsAnswered)
{
    CSlowShow show;
    show.server.Start();
    for (const char* const pPath : {"/short", "/second"})
    {
        CHttpClient client(show.server.GetPort());
        client.Send("GET " + std::string(pPath) + " HTTP/1.1\r\nHost: x\r\n\r\n");
        client.CloseSending();
        CHttpReply reply = client.Receive();
        if (reply.nStatus == 100) // by which the server finds out who is still there
            reply = client.Receive();
        EXPECT_EQ(reply.nStatus, 200) << pPath;
        EXPECT_EQ(reply.sBody, "done\n") << pPath;
        EXPECT_TRUE(client.IsClosed(5000));
    }
    EXPECT_EQ(show.nNumGone, 0);
}

TEST(CHttpServer, HalfClosedThenGone_IsNoticed)
{
    CSlowShow show;
    show.server.Start();
    {
        CHttpClient client(show.server.GetPort());
        client.Send("GET /long HTTP/1.1\r\nHost: x\r\n\r\n");
        ASSERT_TRUE(Reaches(show.nNumBegun, 1));
        client.CloseSending();
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        EXPECT_EQ(show.nNumGone, 0);
    }
    EXPECT_TRUE(Reaches(show.nNumGone, 1));
}

// However the bytes of the request come, and however many come at once.
TEST(CHttpServer, HalfClosedThenGone_IsNoticedEachTime)
{
    for (int n = 0; n < 100; ++n)
    {
        CSlowShow show;
        show.server.Start();
        {
            CHttpClient client(show.server.GetPort());
            const std::string sRequest = "GET /long HTTP/1.1\r\nHost: x\r\n\r\n";
            for (const char c : sRequest)
                client.Send({c});
            ASSERT_TRUE(Reaches(show.nNumBegun, 1));
            client.CloseSending();
        }
        ASSERT_TRUE(Reaches(show.nNumGone, 1)) << n;
    }
}

// What a client sends ahead does not make it one that has gone.
TEST(CHttpServer, SlowAnswers_OneAfterTheOtherOnOneConnection)
{
    CSlowShow show;
    show.server.Start();
    CHttpClient client(show.server.GetPort());
    const std::string sRequest = "GET /short HTTP/1.1\r\nHost: x\r\n\r\n";
    client.Send(sRequest + sRequest + sRequest);
    for (int n = 0; n < 3; ++n)
        EXPECT_EQ(client.Receive().nStatus, 200);
    for (int n = 0; n < 20; ++n)
        EXPECT_EQ(client.Get("/short").nStatus, 200);
    EXPECT_EQ(show.nNumGone, 0);
}

TEST_F(CHttpServer_case, Export_ComesInChunks)
{
    CHttpClient client(server.GetPort());
    const CHttpReply reply = client.Get(server.WithToken("/api/export?format=csv"));
    ASSERT_EQ(reply.nStatus, 200);
    EXPECT_EQ(reply.FindHeader("transfer-encoding"), "chunked");
    EXPECT_EQ(std::count(reply.sBody.begin(), reply.sBody.end(), '\n'), 10001);
    EXPECT_EQ(client.Get(server.WithToken("/api/info")).nStatus, 200); // the connection is good for more
}

TEST_F(CHttpServer_case, OldClient_GetsTheEndOfTheConnection)
{
    CHttpClient client(server.GetPort());
    client.Send("GET " + server.WithToken("/api/export?format=csv") + " HTTP/1.0\r\n" + Host() + "\r\n");
    const CHttpReply reply = client.Receive();
    EXPECT_EQ(reply.nStatus, 200);
    EXPECT_EQ(reply.FindHeader("transfer-encoding"), "");
    EXPECT_EQ(std::count(reply.sBody.begin(), reply.sBody.end(), '\n'), 10001);
}

TEST_F(CHttpServer_case, NotModified_HasNoBody)
{
    CHttpClient client(server.GetPort());
    const CHttpReply reply = client.Get(server.WithToken("/api/tile/77/0/0/0/0"));
    ASSERT_EQ(reply.nStatus, 200);
    const std::string sMatch = "If-None-Match: " + reply.FindHeader("etag") + "\r\n";
    EXPECT_EQ(client.Get(server.WithToken("/api/tile/77/0/0/0/0"), sMatch).nStatus, 304);
    EXPECT_EQ(client.Get(server.WithToken("/api/info")).nStatus, 200);
}

TEST(CHttpServer, SlowClients_AreClosed)
{
    CHttpOptions options;
    options.timeFirst = std::chrono::milliseconds(300);
    CTestServer server(nullptr, options);
    CHttpClient good(server.GetPort());
    EXPECT_EQ(good.Get(server.WithToken("/api/info")).nStatus, 200);
    CHttpClient silent(server.GetPort());
    CHttpClient half(server.GetPort());
    half.Send("GET /api/in");
    EXPECT_TRUE(silent.IsClosed(5000));
    EXPECT_TRUE(half.IsClosed(5000));
    EXPECT_FALSE(good.IsClosed(0)); // who has asked before may take longer
    options.timeRequest = std::chrono::milliseconds(300);
    CTestServer other(nullptr, options);
    CHttpClient once(other.GetPort());
    EXPECT_EQ(once.Get(other.WithToken("/api/info")).nStatus, 200);
    EXPECT_TRUE(once.IsClosed(5000));
}

/// What a client receives that asks for much and reads nothing for so long; 0 where that ends too early.
int ReadLate(const CTestServer& server, std::chrono::milliseconds time)
{
    CHttpClient client(server.GetPort());
    client.Send("GET " + server.WithToken("/api/export?format=csv") +
                " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server.GetPort()) + "\r\n\r\n");
    std::this_thread::sleep_for(time);
    return client.Receive().nStatus;
}

// However long a busy machine takes to fill what lies between the two.
TEST(CHttpServer, LazyReaders_AreClosed)
{
    CHttpOptions options;
    options.timePiece = std::chrono::milliseconds(300);
    const auto pCloud = MakeShownCloud(MakeHills(500), true);
    CTestServer server(pCloud.get(), options);
    int nStatus = 200;
    for (int nTime = 1500; nTime < 100000 && nStatus != 0; nTime *= 4)
        nStatus = ReadLate(server, std::chrono::milliseconds(nTime));
    EXPECT_EQ(nStatus, 0);
}

TEST(CHttpServer, TooManyConnections_Are503)
{
    CHttpOptions options;
    options.nMaxClients = 8;
    CTestServer server(nullptr, options);
    std::vector<std::unique_ptr<CHttpClient>> vecClients;
    for (int n = 0; n < 8; ++n)
    {
        vecClients.push_back(std::make_unique<CHttpClient>(server.GetPort()));
        ASSERT_EQ(vecClients.back()->Get(server.WithToken("/api/info")).nStatus, 200);
    }
    EXPECT_EQ(CHttpClient(server.GetPort()).Get(server.WithToken("/api/info")).nStatus, 503);
    vecClients.clear();
    int nStatus = 503;
    for (int n = 0; n < 100 && nStatus != 200; ++n)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        nStatus = CHttpClient(server.GetPort()).Get(server.WithToken("/api/info")).nStatus;
    }
    EXPECT_EQ(nStatus, 200);
}

// One that is refused, or is only waited for to close, takes nobody's place.
TEST(CHttpServer, RefusedConnections_DoNotCount)
{
    CHttpOptions options;
    options.nMaxClients = 4;
    CTestServer server(nullptr, options);
    std::vector<std::unique_ptr<CHttpClient>> vecClients;
    for (int n = 0; n < 8; ++n)
    {
        vecClients.push_back(std::make_unique<CHttpClient>(server.GetPort()));
        ASSERT_EQ(vecClients.back()->Get(server.WithToken("/api/info")).nStatus, n < 4 ? 200 : 503);
    }
    vecClients.erase(vecClients.begin()); // those that were refused stay open
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    int nStatus = 503;
    while (nStatus != 200 && std::chrono::steady_clock::now() < end)
        nStatus = CHttpClient(server.GetPort()).Get(server.WithToken("/api/info")).nStatus;
    EXPECT_EQ(nStatus, 200);
}

TEST(CHttpServer, RefusedConnections_HeadGetsNoBody)
{
    CHttpOptions options;
    options.nMaxClients = 1;
    CTestServer server(nullptr, options);
    CHttpClient first(server.GetPort());
    ASSERT_EQ(first.Get(server.WithToken("/api/info")).nStatus, 200);
    CHttpClient second(server.GetPort());
    second.Send("HEAD / HTTP/1.1\r\nHost: x\r\n\r\n");
    const std::string sAll = second.ReceiveAll();
    EXPECT_EQ(sAll.substr(0, 12), "HTTP/1.1 503");
    EXPECT_EQ(sAll.find("\r\n\r\n") + 4, sAll.size());
}

// Whoever has no token cannot keep out those who have it, by connections that say nothing, or nothing right.
TEST(CHttpServer, ConnectionsWithoutAToken_GiveWay)
{
    CHttpOptions options;
    options.nMaxClients = 4;
    CTestServer server(nullptr, options);
    CHttpClient good(server.GetPort());
    ASSERT_EQ(good.Get(server.WithToken("/api/info")).nStatus, 200);
    std::vector<std::unique_ptr<CHttpClient>> vecIdle;
    for (int n = 0; n < 3; ++n)
        vecIdle.push_back(std::make_unique<CHttpClient>(server.GetPort()));
    vecIdle[0]->Send("GET /api");
    ASSERT_EQ(vecIdle[1]->Get("/api/info").nStatus, 403); // so all three have their seats
    CHttpClient next(server.GetPort());
    EXPECT_EQ(next.Get(server.WithToken("/api/info")).nStatus, 200);
    EXPECT_TRUE(vecIdle[0]->IsClosed(2000)); // the oldest
    EXPECT_FALSE(vecIdle[1]->IsClosed(0));
    CHttpClient another(server.GetPort());
    EXPECT_EQ(another.Get(server.WithToken("/api/info")).nStatus, 200);
    EXPECT_TRUE(vecIdle[1]->IsClosed(2000));
    EXPECT_EQ(good.Get(server.WithToken("/api/info")).nStatus, 200);
    EXPECT_EQ(vecIdle[2]->Get(server.WithToken("/api/info")).nStatus, 200);
    EXPECT_EQ(CHttpClient(server.GetPort()).Get(server.WithToken("/api/info")).nStatus, 503);
}

TEST(CHttpServer, PortInUse_IsAFailure)
{
    CTestServer server(nullptr);
    CHttpOptions options;
    options.nPort = server.GetPort();
    EXPECT_ANY_THROW(CTestServer(nullptr, options));
}

} // namespace

// Who may ask, and how requests are taken apart.

#include <host/serve/CRequest.h>
#include <tests/host/serve/support/CTestServer.h>

#include <gtest/gtest.h>

namespace
{

using namespace zorcld;

/// A request with all that lets it in, but for what a test changes.
CRequest MakeGood(const CTestShow& show)
{
    CRequest request;
    request.sMethod = "GET";
    request.sHost = "127.0.0.1:4711";
    request.sPath = "/api/info";
    request.sCookie = "a=b; zorcld-4711=" + show.GetGate().GetToken();
    return request;
}

TEST(Gate, Token_AsParameterOrAsCookie)
{
    CTestShow show(nullptr);
    CRequest request = MakeGood(show);
    EXPECT_EQ(show.AskRaw(request).nStatus, 200);
    EXPECT_EQ(show.AskRaw(request).vecHeaders.back().first, "Cache-Control"); // no cookie again
    request.sCookie.back() = request.sCookie.back() == '0' ? '1' : '0';
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
    request.sCookie = "zorcld-4712=" + show.GetGate().GetToken();
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
    request.sCookie.clear();
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
    request.vecParams = {{"token", show.GetGate().GetToken()}};
    EXPECT_EQ(show.AskRaw(request).nStatus, 200);
    request.vecParams = {{"token", ""}};
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
}

TEST(Gate, Hosts_OnlyItsOwn)
{
    CTestShow show(nullptr);
    CRequest request = MakeGood(show);
    for (const char* const pHost : {"127.0.0.1:4711", "localhost:4711", "LOCALHOST:4711", "[::1]:4711"})
    {
        request.sHost = pHost;
        EXPECT_EQ(show.AskRaw(request).nStatus, 200) << pHost;
    }
    for (const char* const pHost : {"", "127.0.0.1", "127.0.0.1:4712", "evil.example:4711",
                                    "127.0.0.1.evil.example:4711", ":4711", "10.0.0.1:4711"})
    {
        request.sHost = pHost;
        EXPECT_EQ(show.AskRaw(request).nStatus, 403) << pHost;
    }
}

TEST(Gate, Origins_OnlyItsOwnPage)
{
    CTestShow show(nullptr);
    CRequest request = MakeGood(show);
    request.sOrigin = "http://127.0.0.1:4711";
    EXPECT_EQ(show.AskRaw(request).nStatus, 200);
    for (const char* const pOrigin :
         {"null", "http://evil.example", "https://127.0.0.1:4711", "http://127.0.0.1:80", "x"})
    {
        request.sOrigin = pOrigin;
        EXPECT_EQ(show.AskRaw(request).nStatus, 403) << pOrigin;
    }
}

TEST(Gate, Methods_OnlyGet)
{
    CTestShow show(nullptr);
    CRequest request = MakeGood(show);
    for (const char* const pMethod : {"POST", "HEAD", "OPTIONS", "DELETE", "get"})
    {
        request.sMethod = pMethod;
        EXPECT_EQ(show.AskRaw(request).nStatus, 405) << pMethod;
    }
}

TEST(ParseTarget, Escapes)
{
    CRequest request;
    ASSERT_TRUE(ParseTarget("/a%20b+c?x=1+2%2C&y&=&&z=%41#end", request));
    EXPECT_EQ(request.sPath, "/a b+c");
    EXPECT_EQ(*request.FindParam("x"), "1 2,");
    EXPECT_EQ(*request.FindParam("y"), "");
    EXPECT_EQ(*request.FindParam("z"), "A");
    EXPECT_EQ(request.FindParam("end"), nullptr);
    for (const char* const pTarget :
         {"", "a", "*", "http://a/", "/%", "/%4", "/%zz", "/%00", "/a?b=%0a", "/?%g0=1"})
    {
        CRequest other;
        EXPECT_FALSE(ParseTarget(pTarget, other)) << pTarget;
    }
}

} // namespace

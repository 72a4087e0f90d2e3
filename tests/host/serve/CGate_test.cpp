// Who may ask, and how requests are taken apart.

#include <host/serve/CRequest.h>
#include <tests/host/serve/support/CTestServer.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

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
    request.vecParams = {{"token", show.GetGate().GetToken()}};
    return request;
}

TEST(Gate, Token_InEveryRequest)
{
    CTestShow show(nullptr);
    CRequest request = MakeGood(show);
    EXPECT_EQ(show.AskRaw(request).nStatus, 200);
    std::string& sToken = request.vecParams.front().second;
    sToken.back() = sToken.back() == '0' ? '1' : '0';
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
    sToken.clear();
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
    request.vecParams.clear();
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
}

// Every server of this machine gets the cookie, whatever its port: it is no token, and opens nothing but what
// the page is made of.
TEST(Gate, Cookie_OpensThePagesFilesOnly)
{
    CTestShow show(nullptr);
    CRequest request = MakeGood(show);
    request.sPath = "/";
    const auto cookie = show.AskRaw(request).vecHeaders.back();
    ASSERT_EQ(cookie.first, "Set-Cookie");
    EXPECT_EQ(cookie.second.find(show.GetGate().GetToken()), std::string::npos);
    request.vecParams.clear();
    request.sCookie = "a=b; " + cookie.second.substr(0, cookie.second.find(';'));
    for (const auto& [sPath, nStatus] : std::vector<std::pair<std::string, int>>{
             {"/page.js", 200}, {"/none", 404}, {"/", 403}, {"/api/info", 403}, {"/api/none", 403}})
    {
        request.sPath = sPath;
        EXPECT_EQ(show.AskRaw(request).nStatus, nStatus) << sPath;
    }
    request.sPath = "/page.js";
    request.sCookie.back() = request.sCookie.back() == '0' ? '1' : '0';
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
    request.sCookie = "zorcld-4711=" + show.GetGate().GetToken();
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
}

// Requests without an Origin, for a picture or a script, tell their site all the same.
TEST(Gate, Sites_OnlyItsOwn)
{
    CTestShow show(nullptr);
    CRequest request = MakeGood(show);
    for (const char* const pSite : {"same-site", "cross-site", "what"})
    {
        request.sFetchSite = pSite;
        request.sPath = "/api/info";
        EXPECT_EQ(show.AskRaw(request).nStatus, 403) << pSite;
        request.sPath = "/page.js";
        EXPECT_EQ(show.AskRaw(request).nStatus, 403) << pSite;
        request.sPath = "/"; // a link that somebody follows
        EXPECT_EQ(show.AskRaw(request).nStatus, 200) << pSite;
    }
    request.sPath = "/api/info";
    for (const char* const pSite : {"", "none", "same-origin"})
    {
        request.sFetchSite = pSite;
        EXPECT_EQ(show.AskRaw(request).nStatus, 200) << pSite;
    }
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

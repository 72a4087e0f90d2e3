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

/// A request that has the cookie of the page instead of the token.
CRequest MakeCookieRequest(CTestShow& show)
{
    CRequest request = MakeGood(show);
    request.sPath = "/";
    const auto cookie = show.AskRaw(request).vecHeaders.back();
    EXPECT_EQ(cookie.first, "Set-Cookie");
    EXPECT_EQ(cookie.second.find(show.GetGate().GetToken()), std::string::npos); // a secret of its own
    request.vecParams.clear();
    request.sCookie = "a=b; " + cookie.second.substr(0, cookie.second.find(';'));
    return request;
}

TEST(Gate, Cookie_LetsInAsTheTokenDoes)
{
    CTestShow show(nullptr);
    CRequest request = MakeCookieRequest(show);
    const std::vector<std::pair<std::string, int>> vecCases = {
        {"/", 200}, {"/page.js", 200}, {"/none", 404}, {"/api/info", 200}, {"/api/none", 404}};
    for (const auto& [sPath, nStatus] : vecCases)
    {
        request.sPath = sPath;
        EXPECT_EQ(show.AskRaw(request).nStatus, nStatus) << sPath;
    }
    request.vecParams = {{"token", "0123"}}; // a token that is wrong stays so
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
    request.vecParams.clear();
    request.sCookie.back() = request.sCookie.back() == '0' ? '1' : '0';
    for (const auto& [sPath, nStatus] : vecCases)
    {
        request.sPath = sPath;
        EXPECT_EQ(show.AskRaw(request).nStatus, 403) << sPath;
    }
    request.sCookie = "zorcld-4711=" + show.GetGate().GetToken();
    EXPECT_EQ(show.AskRaw(request).nStatus, 403);
}

// Browsers send it with whatever any page asks here, so that it must be this page that asks.
TEST(Gate, Cookie_OfThePageItselfOnly)
{
    CTestShow show(nullptr);
    CRequest request = MakeCookieRequest(show);
    const auto ask = [&](const char* pPath, const char* pSite)
    {
        request.sPath = pPath;
        request.sFetchSite = pSite;
        return show.AskRaw(request).nStatus;
    };
    for (const char* const pPath : {"/", "/page.js", "/api/info"})
    {
        EXPECT_EQ(ask(pPath, "same-origin"), 200) << pPath;
        EXPECT_EQ(ask(pPath, "same-site"), 403) << pPath;
        EXPECT_EQ(ask(pPath, "cross-site"), 403) << pPath;
    }
    EXPECT_EQ(ask("/", "none"), 200); // typed, or reloaded
    EXPECT_EQ(ask("/page.js", "none"), 403);
    EXPECT_EQ(ask("/api/info", "none"), 403);
    request.sOrigin = "http://127.0.0.1:4712";
    EXPECT_EQ(ask("/api/info", ""), 403);
    request.sOrigin.clear();
    request.sHost = "127.0.0.1:4712";
    EXPECT_EQ(ask("/api/info", ""), 403);
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

// As proxies are asked: the target's host is the one that counts.
TEST(ParseTarget, AbsoluteForm)
{
    for (const char* const pTarget : {"http://a:1/b/c?x=/y", "HTTP://a:1/b/c?x=/y#z"})
    {
        CRequest request;
        request.sHost = "other";
        ASSERT_TRUE(ParseTarget(pTarget, request)) << pTarget;
        EXPECT_EQ(request.sHost, "a:1");
        EXPECT_EQ(request.sPath, "/b/c");
        EXPECT_EQ(*request.FindParam("x"), "/y");
    }
    CRequest request;
    ASSERT_TRUE(ParseTarget("http://a?x=1", request));
    EXPECT_EQ(request.sHost, "a");
    EXPECT_EQ(request.sPath, "/");
    EXPECT_EQ(*request.FindParam("x"), "1");
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
    for (const char* const pTarget : {"", "a", "*", "http://", "http:///", "https://a/", "ftp://a/", "/%",
                                      "/%4", "/%zz", "/%00", "/a?b=%0a", "/?%g0=1"})
    {
        CRequest other;
        EXPECT_FALSE(ParseTarget(pTarget, other)) << pTarget;
    }
}

} // namespace

// What each resource answers, beside what the library says itself; and who gets no answer.

#include <host/serve/CPntChoice.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/LineForClient.h>
#include <tests/host/serve/support/CTestServer.h>
#include <zor4data/CPntCld.h>
#include <zor4data/FindPntsInPolygons.h>
#include <zor4data/PickPnt.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <memory>

namespace
{

using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using namespace zorcld;

class Answer_case : public ::testing::Test
{
public:
    /// A request that is let in.
    CRequest MakeRequest(const std::string& sTarget)
    {
        CRequest request;
        request.sMethod = "GET";
        request.sHost = "127.0.0.1:4711";
        ParseTarget(sTarget + "?token=" + show.GetGate().GetToken(), request);
        return request;
    }

    /// Lines of a text.
    static std::ptrdiff_t CountLines(const std::string& sText)
    {
        return std::count(sText.begin(), sText.end(), '\n');
    }

    std::unique_ptr<CPntCld> pCloud = MakeShownCloud(MakeHills(60), true);
    CTestShow show{pCloud.get()};
};

TEST_F(Answer_case, Info_TellsTheCloud)
{
    const auto info = show.GetJson("/api/info");
    EXPECT_EQ(info["state"], "ready");
    EXPECT_EQ(info["file"], "hill.ply");
    EXPECT_EQ(info["points"], 3600);
    EXPECT_EQ(info["version"], 77);
    EXPECT_EQ(info["color"], true);
    CRootCube root{};
    GetRootCube(*pCloud, root);
    EXPECT_EQ(info["root"]["x"], root.nX);
    EXPECT_EQ(info["root"]["edge"], root.nEdge);
    EXPECT_EQ(info["origin"][1], root.fOrgY);
}

TEST_F(Answer_case, Pick_IsTheLibrarys)
{
    const auto json = show.GetJson("/api/pick?ox=500010&oy=4000010&oz=200&dx=0.01&dy=0.02&dz=-1&tan=0.01");
    const int nIndex = PickPnt(*pCloud, {500010.0, 4000010.0, 200.0}, {0.01, 0.02, -1.0}, 0.01, {});
    ASSERT_GE(nIndex, 0);
    EXPECT_EQ(json["index"], nIndex);
    PNT_3D pnt;
    pCloud->GetPnt(nIndex, pnt);
    EXPECT_EQ(json["x"], pnt.x);
    EXPECT_EQ(json["z"], pnt.z);
    EXPECT_EQ(json["color"][0], nIndex & 255);
    EXPECT_EQ(show.GetJson("/api/point?index=" + std::to_string(nIndex)), json);
}

TEST_F(Answer_case, Pick_NotBeyondPlanes)
{
    const std::string sRay = "/api/pick?ox=500010&oy=4000010&oz=200&dx=0&dy=0&dz=-1&tan=0.01";
    EXPECT_GE(show.GetJson(sRay)["index"], 0);
    EXPECT_EQ(show.GetJson(sRay + "&clip=0,0,1,-100")["index"], -1);
    EXPECT_EQ(show.GetJson(sRay + "&box=0,0,0,1,1,1")["index"], -1);
}

TEST_F(Answer_case, Pick_StretchedIsThatOfTheStretchedRay)
{
    const auto json =
        show.GetJson("/api/pick?ox=1000020&oy=8000020&oz=200&dx=0.02&dy=0.04&dz=-1&tan=0.02&stretch=2,2,1");
    ASSERT_GE(json["index"], 0);
    EXPECT_NEAR(json["x"].get<double>(), 500010.5, 3.0);
    EXPECT_NEAR(json["y"].get<double>(), 4000011.5, 3.0);
    EXPECT_EQ(
        show.GetJson(
            "/api/pick?ox=1000020&oy=8000020&oz=200&dx=0&dy=0&dz=-1&tan=0.02&stretch=2,2,1&box=0,0,0,1,1,1")
            ["index"],
        -1);
}

TEST_F(Answer_case, Nearest_InPlanAndInSpace)
{
    EXPECT_EQ(show.GetJson("/api/nearest?x=500005&y=4000007&max=3")["index"],
              FindNearestPnt2D(*pCloud, PNT_2D(500005.0, 4000007.0), 3.0));
    EXPECT_EQ(show.GetJson("/api/nearest?x=500005&y=4000007&z=121&max=3")["index"],
              FindNearestPnt(*pCloud, PNT_3D(500005.0, 4000007.0, 121.0), 3.0));
    EXPECT_EQ(show.GetJson("/api/nearest?x=0&y=0&max=3")["index"], -1);
}

TEST_F(Answer_case, Point_OutsideTheArrayIsNone)
{
    for (const char* const pIndex : {"3600", "-1", "1e300"})
        EXPECT_EQ(show.GetJson(std::string("/api/point?index=") + pIndex)["index"], -1) << pIndex;
}

TEST_F(Answer_case, Counts_AreTheLibrarys)
{
    EXPECT_EQ(show.GetJson("/api/rect?xmin=500003&ymin=4000003&xmax=500009&ymax=4000011")["points"],
              pCloud->GetNumPnts2D(500003.0, 4000003.0, 500009.0, 4000011.0));
    EXPECT_EQ(show.GetJson("/api/count")["points"], 3600);
    const auto inside = show.GetJson("/api/count?polygon=500002,4000002,500015,4000003,500004,4000017");
    EXPECT_GT(inside["points"], 0);
    const auto outside =
        show.GetJson("/api/count?polygon=500002,4000002,500015,4000003,500004,4000017&outside=1");
    EXPECT_EQ(inside["points"].get<int>() + outside["points"].get<int>(), 3600);
    const auto low = show.GetJson("/api/count?box=0,0,0,1e7,1e7,120");
    const auto high = show.GetJson("/api/count?clip=0,0,-1,120.00001");
    EXPECT_EQ(low["points"].get<int>() + high["points"].get<int>(), 3600);
}

TEST_F(Answer_case, Export_HasThePointsChosen)
{
    const std::string sChoice = "&polygon=500002,4000002,500015,4000003,500004,4000017";
    const int nNum = show.GetJson("/api/count?" + sChoice)["points"];
    const std::string sCsv = show.GetBytes("/api/export?format=csv" + sChoice);
    EXPECT_EQ(sCsv.substr(0, 20), "x,y,z,red,green,blue");
    EXPECT_EQ(CountLines(sCsv), nNum + 1);
    const std::string sPly = show.GetBytes("/api/export?format=ply" + sChoice);
    EXPECT_NE(sPly.find("element vertex " + std::to_string(nNum) + "\n"), std::string::npos);
    EXPECT_EQ(sPly.size(), sPly.find("end_header\n") + 11 + static_cast<std::size_t>(nNum) * 15);
    EXPECT_EQ(show.Ask("/api/export?format=csv").vecHeaders[1].second,
              "attachment; filename=\"hill-part.csv\"");
}

TEST_F(Answer_case, Profile_BothLayouts)
{
    const std::string sLine = "/api/profile?x1=500002&y1=4000002&x2=500015&y2=4000013&width=2";
    const std::string sCsv = show.GetBytes(sLine + "&format=csv");
    const std::string sBytes = show.GetBytes(sLine);
    std::uint32_t nNum = 0;
    std::memcpy(&nNum, sBytes.data() + 16, 4);
    EXPECT_GT(nNum, 50U);
    EXPECT_EQ(CountLines(sCsv), std::ptrdiff_t{nNum} + 1);
    ASSERT_EQ(sBytes.size(), 24 + 20 * std::size_t{nNum});
    double dBase = 0.0;
    float fHeight = 0.0F;
    std::int32_t nIndex = 0;
    std::memcpy(&dBase, sBytes.data() + 8, 8);
    std::memcpy(&fHeight, sBytes.data() + 28, 4);
    std::memcpy(&nIndex, sBytes.data() + 36, 4);
    PNT_3D pnt;
    pCloud->GetPnt(nIndex, pnt);
    EXPECT_NEAR(dBase + fHeight, pnt.z, 1e-4);
    EXPECT_EQ(static_cast<unsigned char>(sBytes[40]), nIndex & 255);
}

// As far out as corners and widths may be, nothing is lost.
TEST_F(Answer_case, FarOut_StillExact)
{
    const auto count = [this](const std::string& sWidth)
    {
        const std::string sBytes =
            show.GetBytes("/api/profile?x1=500005&y1=4000000&x2=500009&y2=4000000&width=" + sWidth);
        return sBytes.size();
    };
    EXPECT_GT(count("1000"), 24U + 20U * 500U);
    EXPECT_EQ(count("1e12"), count("1000"));
    EXPECT_EQ(show.GetJson("/api/count?polygon=1e12,1e12,-1e12,1e12,0,-1e12")["points"], 3600);
}

// However many tiles are on their way to slow clients, they hold no more bytes than they are given together.
// Where there is no room for a tile as a whole it comes in pieces, which hold less.
TEST(Answer, Tiles_KeepToTheirBudget)
{
    // Spread through a small cube: nearly all lie in a tile of level 2, which is not kept.
    std::vector<PNT_3D> vecPnts = {{0.0, 0.0, 0.0}, {100.0, 100.0, 100.0}};
    const auto spread = [](int i, double dStep) { return 6.0 * (i * dStep - std::floor(i * dStep)); };
    for (int i = 0; i < 60000; ++i)
        vecPnts.emplace_back(spread(i, 0.8191725134), spread(i, 0.6710436067), spread(i, 0.5497004779));
    const auto pCloud = MakeShownCloud(vecPnts, true);
    CTestShow show(pCloud.get());
    const CByteBudget& budget = show.GetServed().GetTileBudget();
    const std::int64_t nAll = budget.GetLeft();
    EXPECT_LE(nAll, std::int64_t{32} << 20);
    const std::string sTile = "/api/tile/77/2/0/0/0";
    const std::string sWhole = show.GetBytes(sTile);
    ASSERT_GT(sWhole.size(), 600000U);
    std::vector<CReply> vecReplies;
    for (int n = 0; n < 1000 && (n == 0 || vecReplies.back().nStatus == 200); ++n)
        vecReplies.push_back(show.Ask(sTile));
    EXPECT_EQ(vecReplies.back().nStatus, 503);
    EXPECT_EQ(vecReplies.back().sBody, "too many tiles are being sent\n");
    vecReplies.pop_back();
    EXPECT_EQ(vecReplies.front().sBody, sWhole);
    EXPECT_NE(vecReplies.back().pPieces, nullptr);
    EXPECT_EQ(TakeBody(vecReplies.back()), sWhole);
    std::size_t nNumBytes = 0;
    for (const CReply& reply : vecReplies)
        nNumBytes += reply.sBody.size();
    EXPECT_LE(nNumBytes, static_cast<std::size_t>(nAll));
    vecReplies.clear();
    EXPECT_EQ(budget.GetLeft(), nAll);
    EXPECT_EQ(show.GetBytes(sTile), sWhole);
}

TEST_F(Answer_case, Tile_ForEverUnderItsVersion)
{
    const CReply reply = show.Ask("/api/tile/77/0/0/0/0");
    ASSERT_EQ(reply.vecHeaders[0].first, "ETag");
    CRequest request = MakeRequest("/api/tile/77/0/0/0/0");
    request.sIfNoneMatch = reply.vecHeaders[0].second;
    const CReply again = show.AskRaw(request);
    EXPECT_EQ(again.nStatus, 304);
    EXPECT_TRUE(again.sBody.empty());
    EXPECT_NE(reply.vecHeaders[1].second.find("immutable"), std::string::npos);
}

TEST_F(Answer_case, Tile_KnownByAnyOfTheTags)
{
    CRequest request = MakeRequest("/api/tile/77/0/0/0/0");
    const std::string sTag = show.AskRaw(request).vecHeaders[0].second;
    for (const std::string& sTags : {"W/" + sTag, "\"a\" ,\t" + sTag, sTag + ",\"b\"", std::string("*")})
    {
        request.sIfNoneMatch = sTags;
        EXPECT_EQ(show.AskRaw(request).nStatus, 304) << sTags;
    }
    for (const std::string& sTags : {std::string("\"a\""), sTag + "x", std::string(","), std::string("W/")})
    {
        request.sIfNoneMatch = sTags;
        EXPECT_EQ(show.AskRaw(request).nStatus, 200) << sTags;
    }
}

TEST_F(Answer_case, Errors_OneLineEach)
{
    const std::vector<std::pair<std::string, int>> vecCases = {
        {"/api/none", 404},
        {"/none", 404},
        {"/../etc/passwd", 404},
        {"/api/tile/78/0/0/0/0", 404},
        {"/api/tile/77/0/1/0/0", 404},
        {"/api/tile/77/99/0/0/0", 404},
        {"/api/tile/77/0/0/0/0?color=class", 404},
        {"/api/tile/77/0/0/0/0?color=bogus", 400},
        {"/api/tile/77/0/0/0/0?color=", 400},
        {"/api/tile/77/0/0/0", 400},
        {"/api/tile/77/0/0/0/-1", 400},
        {"/api/tile/77/0/0/0/0/", 400},
        {"/api/tile/77/0/0/0/99999999999999999999", 400},
        {"/api/pick", 400},
        {"/api/pick?ox=1&oy=1&oz=1&dx=1&dy=1&dz=1&tan=nan", 400},
        {"/api/pick?ox=1&oy=1&oz=1&dx=1&dy=1&dz=1&tan=1&stretch=1,2", 400},
        {"/api/pick?ox=1&oy=1&oz=1&dx=1&dy=1&dz=1&tan=1&stretch=1,0,1", 400},
        {"/api/nearest?x=1&y=2&max=1e999", 400},
        {"/api/point?index=0.5", 400},
        {"/api/rect?xmin=1&ymin=2&xmax=3", 400},
        {"/api/count?box=1,2,3", 400},
        {"/api/count?box=2,0,0,1,1,1", 400},
        {"/api/count?clip=0,0,0,1", 400},
        {"/api/count?polygon=1,2,3,4", 400},
        {"/api/count?version=5", 404},
        {"/api/count?version=77.5", 404},
        {"/api/count?box=1,1,1,2,2,2&box=1,1,1,2,2,2", 400},
        {"/api/count?box=", 400},
        {"/api/count?box=&box=0,0,0,1,1,1", 400},
        {"/api/export?format=csv&box=", 400},
        {"/api/pick?ox=1&oy=1&oz=1&dx=1&dy=1&dz=1&tan=1&box=", 400},
        {"/api/count?polygon=1e200,1e200,-1e200,1e200,0,-1e200", 400},
        {"/api/export?format=csv&polygon=0,0,1,0,0,1e13", 400},
        {"/api/profile?x1=1&y1=1&x2=2&y2=1&width=1e150", 400},
        {"/api/profile?x1=1&y1=1&x2=1e13&y2=1&width=1", 400},
        {"/api/export", 400},
        {"/api/export?format=exe", 400},
        {"/api/profile?x1=1&y1=1&x2=1&y2=1&width=1", 400},
        {"/api/profile?x1=1&y1=1&x2=2&y2=1&width=0", 400},
        {"/api/profile?x1=-1e308&y1=1&x2=1e308&y2=1&width=1", 400},
        {"/api/outline", 400},
        {"/api/outline?distance=0", 400},
        {"/api/ground?scale=-1", 400},
        {"/api/ground?scale=0", 400},
        {"/api/color?by=taste", 400},
        {"/api/color?by=taste&cancel=1", 400},
        {"/api/color?cancel=2", 400},
        {"/api/color?cancel=0", 400},
        {"/api/ground?cancel=", 400},
        {"/api/outline?cancel=yes", 400},
        {"/api/outline?cancel=0", 400},
    };
    for (const auto& [sTarget, nStatus] : vecCases)
    {
        const CReply reply = show.Ask(sTarget);
        EXPECT_EQ(reply.nStatus, nStatus) << sTarget;
        EXPECT_EQ(CountLines(std::string(reply.sBody)), 1) << sTarget;
    }
}

// Nothing is looked for any further once nobody waits for it.
TEST_F(Answer_case, ForNobody_IsStopped)
{
    const auto pGone = std::make_shared<std::atomic<bool>>(false);
    CRequest request;
    request.pGone = pGone;
    const CPntChoice choice(request, show.GetServed());
    int nNumBatches = 0;
    const auto query = [&](const CPntCld& cloud, IPntCldListener& listener)
    {
        CCldCadPnt pnt;
        cloud.GetPnt(0, pnt.m_pnt);
        pnt.m_nIndex = 0;
        for (; nNumBatches < 10; ++nNumBatches)
        {
            *pGone = nNumBatches == 3;
            listener.OnPnts(1, &pnt);
        }
    };
    EXPECT_THROW(choice.MarkOf(query), CRefusal);
    EXPECT_EQ(nNumBatches, 3);
    EXPECT_THROW(choice.Mark(), CRefusal);
    *pGone = false;
    EXPECT_EQ(choice.Mark().summary.nNumPnts, pCloud->GetNumPnts());
}

TEST_F(Answer_case, Errors_NameParametersNotOptions)
{
    EXPECT_EQ(show.Ask("/api/count?box=2,0,0,1,1,1").sBody, "box: a minimum is above its maximum\n");
    EXPECT_EQ(show.Ask("/api/count?clip=0,0,0,1").sBody, "clip: a, b and c are all 0\n");
    EXPECT_EQ(LineForClient("if not, --unit-scale\ntells (--help) a--b -- 1"),
              "if not, scale tells (help) a--b -- 1");
}

TEST_F(Answer_case, Head_GetsNoBody)
{
    CRequest request = MakeRequest("/");
    request.sMethod = "HEAD";
    const CReply reply = show.AskRaw(request);
    EXPECT_EQ(reply.nStatus, 405);
    EXPECT_TRUE(reply.sBody.empty());
}

TEST_F(Answer_case, Page_IsEmbedded)
{
    const CReply reply = show.Ask("/");
    EXPECT_EQ(reply.nStatus, 200);
    EXPECT_EQ(reply.sType, "text/html; charset=utf-8");
    EXPECT_EQ(reply.vecHeaders.back().first, "Set-Cookie");
    EXPECT_NE(reply.sBody.find("<html"), std::string::npos);
}

TEST_F(Answer_case, Page_CompressedForThoseWhoTakeIt)
{
    const auto isGzip = [this](const std::string& sAccepted)
    {
        CRequest request = MakeRequest("/");
        request.sAcceptEncoding = sAccepted;
        const CReply reply = show.AskRaw(request);
        const bool bGzip = reply.sBody.substr(0, 2) == "\x1f\x8b";
        EXPECT_EQ(reply.vecHeaders.front().first == "Content-Encoding", bGzip) << sAccepted;
        return bGzip;
    };
    for (const char* const pTaken :
         {"gzip", "gzip, deflate, br", "br;q=1.0, gzip;q=0.5", "*", "deflate ,gzip"})
        EXPECT_TRUE(isGzip(pTaken)) << pTaken;
    for (const char* const pNot :
         {"", "identity", "br", "gzip;q=0", "gzip; q=0.00, br", "xgzip", ",", ";q=0"})
        EXPECT_FALSE(isGzip(pNot)) << pNot;
}

// An origin is the first point's.
TEST(Answer, NoPoints_NoOriginAndNoColors)
{
    CPntCld cloud(nullptr);
    cloud.OnReadType(PntCldType_PntColor);
    cloud.OnReadNumPnts(0);
    cloud.OnReadEnd();
    CTestShow show(&cloud);
    const auto info = show.GetJson("/api/info");
    EXPECT_EQ(info["points"], 0);
    EXPECT_EQ(info["origin"], (nlohmann::ordered_json{0.0, 0.0, 0.0}));
    EXPECT_EQ(info["color"], false);
}

TEST(Answer, Loading_TellsHowFar)
{
    CTestShow show(nullptr);
    show.GetServed().SetProgress("reading hill.ply", 42);
    const auto info = show.GetJson("/api/info");
    EXPECT_EQ(info["state"], "loading");
    EXPECT_EQ(info["percent"], 42);
    EXPECT_EQ(info["doing"], "reading hill.ply");
    EXPECT_EQ(show.Ask("/api/tile/77/0/0/0/0").nStatus, 503);
    show.GetServed().SetFailed("not a\nPLY file");
    EXPECT_EQ(show.GetJson("/api/info")["state"], "failed");
    const CReply reply = show.Ask("/api/count");
    EXPECT_EQ(reply.nStatus, 503);
    EXPECT_EQ(Answer_case::CountLines(std::string(reply.sBody)), 1);
}

} // namespace

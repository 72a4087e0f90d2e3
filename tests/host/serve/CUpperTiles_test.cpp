// The tiles that a version keeps: the same bytes as made ones, within their budget, and never another
// version's.

#include <host/serve/CByteBudget.h>
#include <host/serve/MakeTile.h>
#include <host/serve/MakeUpperTiles.h>
#include <tests/host/serve/support/CTestServer.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace zorcld;

constexpr std::int64_t c_nPlenty = std::int64_t{1} << 40;

std::string PathOf(std::int64_t nVersion, const CTileAddress& address)
{
    return "/api/tile/" + std::to_string(nVersion) + "/" + std::to_string(address.nLevel) + "/" +
           std::to_string(address.nI) + "/" + std::to_string(address.nJ) + "/" + std::to_string(address.nK);
}

/// All of levels 0 and 1.
std::vector<CTileAddress> GetUpper()
{
    std::vector<CTileAddress> vec = {{}};
    for (std::int32_t n = 0; n < 8; ++n)
        vec.push_back({1, n >> 2, n >> 1 & 1, n & 1});
    return vec;
}

std::string MakeBytes(const TVersion& pVersion, const CTileAddress& address)
{
    return TakeBody(MakeTile(pVersion, address, nullptr, CByteBudget(c_nPlenty)));
}

TEST(CUpperTiles, KeptTile_IsTheMadeOne)
{
    for (const bool bColor : {false, true})
    {
        const auto pCloud = MakeShownCloud(MakeHills(500), bColor);
        CTestShow show(pCloud.get());
        const TVersion pVersion = show.GetServed().GetFirst();
        ASSERT_GE(pVersion->GetNumLevels(), 1);
        for (const CTileAddress& address : GetUpper())
        {
            ASSERT_NE(pVersion->FindUpperTile(address), nullptr);
            const std::string sPath = PathOf(pVersion->GetVersion(), address);
            const CReply reply = show.Ask(sPath);
            EXPECT_EQ(reply.sBody.data(), pVersion->FindUpperTile(address)->sBody.data()) << "not a copy";
            EXPECT_EQ(show.GetBytes(sPath), MakeBytes(pVersion, address));
        }
    }
}

TEST(CUpperTiles, DeeperLevels_AreNotKept)
{
    const auto pCloud = MakeShownCloud(MakeHills(500), true);
    CTestShow show(pCloud.get());
    EXPECT_EQ(show.GetServed().GetFirst()->FindUpperTile({2, 0, 0, 0}), nullptr);
    EXPECT_EQ(show.GetServed().GetFirst()->FindUpperTile({2, 3, 3, 3}), nullptr);
}

// One point: level 0 is the deepest.
TEST(CUpperTiles, LevelThatThereIsNot_IsNotKept)
{
    const auto pCloud = MakeShownCloud({{1.5, 2.5, 3.5}}, true);
    CTestShow show(pCloud.get());
    ASSERT_EQ(show.GetServed().GetFirst()->GetNumLevels(), 0);
    EXPECT_NE(show.GetServed().GetFirst()->FindUpperTile({}), nullptr);
    EXPECT_EQ(show.GetServed().GetFirst()->FindUpperTile({1, 0, 0, 0}), nullptr);
    EXPECT_EQ(show.Ask("/api/tile/77/1/0/0/0").nStatus, 404);
}

TEST(CUpperTiles, Budget_IsKeptToAndGivenBack)
{
    const auto pCloud = MakeShownCloud(MakeHills(500), true);
    CTestShow show(pCloud.get());
    const TVersion pVersion = show.GetServed().GetFirst();
    std::int64_t nAll = 0;
    for (const CTileAddress& address : GetUpper())
        nAll += static_cast<std::int64_t>(MakeBytes(pVersion, address).size()) - 40;
    for (const std::int64_t nBytes : {std::int64_t{0}, std::int64_t{100}, nAll / 2, nAll - 1, nAll})
    {
        const CByteBudget budget(nBytes);
        {
            const CUpperTiles tiles = MakeUpperTiles(*pVersion, budget);
            std::int64_t nKept = 0;
            int nNumKept = 0;
            for (const CTileAddress& address : GetUpper())
                if (const CReply* const pReply = tiles.Find(address))
                {
                    ++nNumKept;
                    nKept += static_cast<std::int64_t>(pReply->sBody.size()) - 40;
                    EXPECT_EQ(TakeBody(*pReply), MakeBytes(pVersion, address));
                }
            EXPECT_LE(nKept, nBytes);
            EXPECT_EQ(budget.GetLeft(), nBytes - nKept);
            EXPECT_EQ(nNumKept == 9, nBytes == nAll);
        }
        EXPECT_EQ(budget.GetLeft(), nBytes);
    }
}

// A tile under way outlives the version that has kept it.
TEST(CUpperTiles, ReplyUnderWay_KeepsItsBytes)
{
    const auto pCloud = MakeShownCloud(MakeHills(500), true);
    const CByteBudget budget(c_nPlenty);
    CReply reply;
    std::string sWanted;
    {
        CCloudVersion version(*pCloud, "all", 5);
        version.SetUpperTiles(MakeUpperTiles(version, budget));
        reply = *version.FindUpperTile({});
        sWanted = TakeBody(reply);
    }
    EXPECT_EQ(TakeBody(reply), sWanted);
    EXPECT_LT(budget.GetLeft(), c_nPlenty);
    reply = {};
    EXPECT_EQ(budget.GetLeft(), c_nPlenty);
}

// Another cloud takes the place of the one of its name: its own tiles, and the old paths are gone.
TEST(CUpperTiles, NewVersion_AnswersWithItsOwnBytes)
{
    const auto pCloud = MakeShownCloud(MakeHills(500), true);
    const auto pOld = MakeShownCloud(MakeHills(450), true);
    const auto pNew = MakeShownCloud(MakeHills(480), true);
    CTestShow show(pCloud.get());
    const std::int64_t nOld = show.GetServed().AddVersion(*pOld, "ground")->GetVersion();
    const std::string sOld = show.GetBytes(PathOf(nOld, {}));
    const TVersion pVersion = show.GetServed().AddVersion(*pNew, "ground");
    ASSERT_NE(pVersion->GetVersion(), nOld);
    ASSERT_GE(pVersion->GetNumLevels(), 1);
    EXPECT_EQ(show.Ask(PathOf(nOld, {})).nStatus, 404);
    EXPECT_NE(show.GetBytes(PathOf(pVersion->GetVersion(), {})), sOld);
    for (const CTileAddress& address : GetUpper())
        EXPECT_EQ(show.GetBytes(PathOf(pVersion->GetVersion(), address)), MakeBytes(pVersion, address));
}

} // namespace

// What takes long: started, watched, stopped, one at a time; and what comes out of it is what the program's
// other commands find.

#include <host/serve/CJobs.h>
#include <host/serve/CRefusal.h>
#include <tests/host/serve/support/CTestServer.h>
#include <tests/support/RealFiles.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <memory>
#include <new>
#include <thread>
#include <vector>

namespace
{

using namespace zorcld;
using TJson = CJobs::TJson;

/// Work that goes on until it is stopped.
TJson WorkForEver(const CJobs::TTell& tell)
{
    for (;;)
    {
        tell("working", 10);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

TJson Finish(CJobs& jobs, const std::string& sResource, const std::string& sWish, const CJobs::TWork& work)
{
    for (;;)
    {
        TJson json = jobs.Ask(sResource, sWish, work);
        if (json["state"] != "running")
            return json;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

TEST(Jobs, SameWish_IsTheSameJob)
{
    CJobs jobs;
    std::atomic<int> nRuns{0};
    const auto work = [&](const CJobs::TTell&) -> TJson { return {{"runs", ++nRuns}}; };
    EXPECT_EQ(Finish(jobs, "a", "1", work), (TJson{{"state", "done"}, {"runs", 1}}));
    EXPECT_EQ(Finish(jobs, "a", "1", work)["runs"], 1);
    EXPECT_EQ(Finish(jobs, "a", "2", work)["runs"], 2);
    EXPECT_EQ(Finish(jobs, "b", "1", work)["runs"], 3);
    EXPECT_EQ(Finish(jobs, "a", "2", work)["runs"], 2); // b has a place of its own
}

TEST(Jobs, OneAtATime)
{
    CJobs jobs;
    EXPECT_EQ(jobs.Ask("a", "1", WorkForEver)["state"], "running");
    EXPECT_EQ(jobs.Ask("a", "1", WorkForEver)["state"], "running");
    EXPECT_THROW(jobs.Ask("b", "1", WorkForEver), CRefusal);
    EXPECT_THROW(jobs.Ask("a", "2", WorkForEver), CRefusal);
    EXPECT_EQ(jobs.Cancel("b")["state"], "idle"); // not its job
    EXPECT_EQ(jobs.Ask("a", "1", WorkForEver)["state"], "running");
    EXPECT_EQ(jobs.Cancel("a")["state"], "idle");
    const auto done = [](const CJobs::TTell&) -> TJson { return {{"b", 1}}; };
    EXPECT_EQ(Finish(jobs, "b", "1", done)["b"], 1);
}

/// A job that does not notice that it is stopped until it is told to go on.
class CDeafWork
{
public:
    CJobs::TWork Get()
    {
        return [this](const CJobs::TTell& tell) -> TJson
        {
            ++nNumRuns;
            while (!bGoOn)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            tell("noticing", 50);
            return {{"deaf", true}};
        };
    }

    std::atomic<bool> bGoOn{false};
    std::atomic<int> nNumRuns{0};
};

// What is asked for while a job is being stopped waits for its end, and is no failure.
TEST(Jobs, AfterCancel_TheNextWaits)
{
    const auto done = [](const CJobs::TTell&) -> TJson { return {{"b", 1}}; };
    CDeafWork deaf;
    CJobs jobs;
    jobs.Ask("a", "1", deaf.Get());
    jobs.Cancel("a");
    EXPECT_EQ(jobs.Ask("b", "1", done)["state"], "running");
    EXPECT_EQ(jobs.Ask("b", "1", done)["state"], "running");
    EXPECT_THROW(jobs.Ask("c", "1", done), CRefusal); // one waits
    EXPECT_THROW(jobs.Ask("a", "1", done), CRefusal);
    deaf.bGoOn = true;
    EXPECT_EQ(Finish(jobs, "b", "1", done)["b"], 1);
}

TEST(Jobs, AfterCancel_TheSameStartsAnew)
{
    CDeafWork deaf;
    CJobs jobs;
    jobs.Ask("a", "1", deaf.Get());
    jobs.Cancel("a");
    EXPECT_EQ(jobs.Ask("a", "1", deaf.Get())["state"], "running");
    deaf.bGoOn = true;
    EXPECT_EQ(Finish(jobs, "a", "1", deaf.Get())["deaf"], true);
    EXPECT_EQ(deaf.nNumRuns, 2);
}

TEST(Jobs, Waiting_CanBeCancelled)
{
    std::atomic<int> nRuns{0};
    const auto work = [&](const CJobs::TTell&) -> TJson { return {{"runs", ++nRuns}}; };
    CDeafWork deaf;
    CJobs jobs;
    jobs.Ask("a", "1", deaf.Get());
    jobs.Cancel("a");
    jobs.Ask("b", "1", work);
    jobs.Cancel("b");
    EXPECT_EQ(jobs.Ask("c", "1", work)["state"], "running"); // in its place
    deaf.bGoOn = true;
    EXPECT_EQ(Finish(jobs, "c", "1", work)["runs"], 1);
}

// What has been done is told whatever else is running.
TEST(Jobs, Results_AreToldMeanwhile)
{
    const auto done = [](const CJobs::TTell&) -> TJson { return {{"b", 1}}; };
    CJobs jobs;
    Finish(jobs, "b", "1", done);
    jobs.Ask("a", "1", WorkForEver);
    EXPECT_EQ(jobs.Ask("b", "1", done)["b"], 1);
}

// Whoever wanted it has gone, without a word.
TEST(Jobs, NobodyAsks_IsStopped)
{
    const auto done = [](const CJobs::TTell&) -> TJson { return {{"b", 1}}; };
    std::atomic<bool> bEnded{false};
    const auto work = [&](const CJobs::TTell& tell) -> TJson
    {
        const std::shared_ptr<void> atEnd(nullptr, [&](void*) { bEnded = true; });
        return WorkForEver(tell);
    };
    CJobs jobs(std::chrono::milliseconds(300));
    const auto begin = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - begin < std::chrono::milliseconds(600))
    {
        EXPECT_EQ(jobs.Ask("a", "1", work)["state"], "running");
        ASSERT_FALSE(bEnded) << "it is asked for all the time";
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    while (!bEnded && std::chrono::steady_clock::now() - begin < std::chrono::seconds(20))
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_TRUE(bEnded);
    EXPECT_EQ(Finish(jobs, "b", "1", done)["b"], 1); // there is room for another one
    EXPECT_EQ(jobs.Ask("a", "1", work)["state"], "running") << "a failure that nobody is told";
}

TEST(Jobs, Color_CancelledWithoutItsName)
{
    const auto pCloud = MakeShownCloud(MakeHills(20), true);
    CTestShow show(pCloud.get());
    for (const char* const pBy : {"class", "intensity", "return"})
    {
        const std::string sJob = std::string("color ") + pBy;
        EXPECT_EQ(show.GetServed().GetJobs().Ask(sJob, "", WorkForEver)["state"], "running");
        EXPECT_EQ(show.GetJson("/api/color?cancel=1")["state"], "idle");
        const auto done = [](const CJobs::TTell&) -> TJson { return {{"b", 1}}; };
        EXPECT_EQ(Finish(show.GetServed().GetJobs(), "b", pBy, done)["b"], 1); // would be refused
    }
}

TEST(Jobs, Failure_IsToldOnce)
{
    CJobs jobs;
    std::atomic<int> nRuns{0};
    const auto fail = [&](const CJobs::TTell&) -> TJson
    {
        if (++nRuns == 1)
            throw std::bad_alloc();
        throw std::runtime_error("no luck");
    };
    EXPECT_EQ(Finish(jobs, "a", "1", fail), (TJson{{"state", "failed"}, {"cause", "not enough memory"}}));
    EXPECT_EQ(Finish(jobs, "a", "1", fail)["cause"], "no luck");
}

TEST(Jobs, Outline_GoesAroundTheCloud)
{
    const auto pCloud = MakeShownCloud(MakeHills(40), true);
    CTestShow show(pCloud.get());
    const TJson outline = show.FinishJob("/api/outline?distance=2");
    ASSERT_EQ(outline["state"], "done");
    EXPECT_EQ(outline["distance"], 2.0);
    EXPECT_NE(show.FinishJob("/api/outline?distance=auto")["how"].get<std::string>().substr(0, 1), " ");
    EXPECT_GE(outline["ring"].size(), 4U);
    EXPECT_NEAR(outline["area"].get<double>(), 39 * 0.37 * 39 * 0.41, 1.0);
    EXPECT_EQ(outline["whole"], true);
    EXPECT_EQ(show.FinishJob("/api/outline?distance=auto")["state"], "done");
    EXPECT_EQ(show.FinishJob("/api/outline?distance=0.001")["state"], "failed");
    EXPECT_EQ(show.GetJson("/api/outline?cancel=1")["state"], "idle");
}

// What is shown stays as it is, and is answered meanwhile.
TEST(Jobs, Ground_IsAVersionOfItsOwn)
{
    for (const char* const pScale : {"1", "0.3048"})
    {
        const auto pCloud = MakeShownCloud(MakeHills(60), true);
        CTestShow show(pCloud.get());
        const std::string sBefore = show.GetBytes("/api/tile/77/0/0/0/0");
        const TJson ground = show.FinishJob(std::string("/api/ground?scale=") + pScale);
        ASSERT_EQ(ground["state"], "done");
        EXPECT_LT(ground["points"], 3600);
        EXPECT_GT(ground["points"], 500);
        EXPECT_EQ(show.GetBytes("/api/tile/77/0/0/0/0"), sBefore);
        const TJson info = show.GetJson("/api/info");
        ASSERT_EQ(info["versions"].size(), 2U);
        EXPECT_EQ(info["points"], 3600);
        EXPECT_EQ(info["versions"][1]["name"], "ground");
        const std::string sVersion = std::to_string(ground["version"].get<int>());
        EXPECT_EQ(show.GetJson("/api/count?version=" + sVersion)["points"], ground["points"]);
        EXPECT_EQ(show.Ask("/api/tile/" + sVersion + "/0/0/0/0").nStatus, 200);
        EXPECT_EQ(show.GetJson("/api/count")["points"], 3600);
    }
}

/// The indices that a binary profile has.
std::vector<std::int32_t> FindIndicesOf(const std::string& sProfile)
{
    std::vector<std::int32_t> vecIndices;
    for (std::size_t nAt = 24; nAt < sProfile.size(); nAt += 20)
        std::memcpy(&vecIndices.emplace_back(), sProfile.data() + nAt + 12, 4);
    return vecIndices;
}

// Whatever version a point is found in, its index is that of the cloud of the file: what is found in the
// ground is asked for without it.
TEST(Jobs, Ground_HasTheIndicesOfTheFile)
{
    for (const char* const pScale : {"1", "0.3048"})
    {
        const auto pCloud = MakeShownCloud(MakeHills(60), true);
        CTestShow show(pCloud.get());
        const TJson ground = show.FinishJob(std::string("/api/ground?scale=") + pScale);
        const std::string sVersion = "&version=" + std::to_string(ground["version"].get<int>());
        int nNumGround = 0;
        for (int i = 0; i < 3600; ++i)
        {
            const std::string sPnt = "/api/point?index=" + std::to_string(i);
            const TJson pnt = show.GetJson(sPnt);
            const TJson same = show.GetJson(sPnt + sVersion);
            if (same["index"] == -1)
                continue;
            ++nNumGround;
            EXPECT_EQ(same, pnt);
            const std::string sAt = fmt::format("/api/nearest?x={}&y={}&max=0.001", pnt["x"].get<double>(),
                                                pnt["y"].get<double>());
            EXPECT_EQ(show.GetJson(sAt + sVersion), pnt);
        }
        EXPECT_EQ(nNumGround, ground["points"]);
        const std::string sRay = "/api/pick?ox=500010&oy=4000010&oz=200&dx=0.01&dy=0.02&dz=-1&tan=0.02";
        const TJson picked = show.GetJson(sRay + sVersion);
        EXPECT_EQ(show.GetJson("/api/point?index=" + std::to_string(picked["index"].get<int>())), picked);
        const std::string sLine = "/api/profile?x1=500002&y1=4000002&x2=500015&y2=4000013&width=8";
        std::vector<std::int32_t> vecAll = FindIndicesOf(show.GetBytes(sLine));
        std::vector<std::int32_t> vecGround = FindIndicesOf(show.GetBytes(sLine + sVersion));
        EXPECT_GT(vecGround.size(), 20U);
        std::sort(vecAll.begin(), vecAll.end());
        std::sort(vecGround.begin(), vecGround.end());
        EXPECT_TRUE(std::includes(vecAll.begin(), vecAll.end(), vecGround.begin(), vecGround.end()));
    }
}

// The ground in the colours of an attribute: each point's own, which the test makes of its index.
TEST(Jobs, Ground_HasTheColorsOfAttributes)
{
    const auto pCloud = MakeShownCloud(MakeHills(60), true);
    CTestShow show(pCloud.get());
    auto pAttribute = std::make_shared<CAttribute>();
    pAttribute->sName = "class";
    for (int i = 0; i < 3600; ++i)
        pAttribute->vecShades.push_back(static_cast<std::uint8_t>(i));
    for (int n = 0; n < 256; ++n)
        pAttribute->palette[static_cast<std::size_t>(n)].r = static_cast<unsigned char>(n);
    show.GetServed().AddAttribute(pAttribute);
    const TJson ground = show.FinishJob("/api/ground");
    const std::string sTile = fmt::format("/api/tile/{}/0/0/0/0", ground["version"].get<int>());
    const std::string sPlain = show.GetBytes(sTile); // red is the index's lowest byte here, too
    const std::string sClass = show.GetBytes(sTile + "?color=class");
    ASSERT_EQ(sPlain.size(), sClass.size());
    ASSERT_GT(sPlain.size(), 40 + 12 * 500U);
    for (std::size_t nAt = 40; nAt < sPlain.size(); nAt += 12)
        EXPECT_EQ(sClass[nAt + 8], sPlain[nAt + 8]) << nAt;
}

TEST(Jobs, Color_EachPointHasItsOwnClass)
{
    const std::string sPath = GetRealFile("las/autzen_trim.las");
    if (!std::filesystem::exists(sPath))
        GTEST_SKIP() << "no real files here";
    CPntCld cloud(nullptr);
    if (!cloud.ReadFromFile(nullptr, PntCldFile_Las, zor::String(sPath)))
        GTEST_SKIP() << "this build reads no LAS";
    CTestShow show(&cloud, sPath);
    EXPECT_EQ(show.Ask("/api/tile/77/0/0/0/0?color=class").nStatus, 404);
    const TJson colors = show.FinishJob("/api/color?by=class");
    ASSERT_EQ(colors["state"], "done");
    int nNumPnts = 0;
    for (const TJson& swatch : colors["legend"])
        nNumPnts += swatch["points"].get<int>();
    EXPECT_EQ(nNumPnts, cloud.GetNumPnts());
    const std::string sPlain = show.GetBytes("/api/tile/77/0/0/0/0");
    const std::string sClass = show.GetBytes("/api/tile/77/0/0/0/0?color=class");
    ASSERT_EQ(sPlain.size(), sClass.size());
    EXPECT_NE(sPlain, sClass);
    EXPECT_EQ(show.FinishJob("/api/color?by=intensity")["legend"].size(), 0U);
}

TEST(Jobs, CancelZero_CancelsNothing)
{
    const auto pCloud = MakeShownCloud(MakeHills(60), true);
    CTestShow show(pCloud.get());
    EXPECT_EQ(show.FinishJob("/api/outline?cancel=0&distance=2")["state"], "done");
    EXPECT_EQ(show.FinishJob("/api/ground?cancel=0&scale=1")["state"], "done");
    EXPECT_EQ(show.GetJson("/api/color?cancel=1&by=class")["state"], "idle");
}

} // namespace

// Headers of LAS files that announce fewer points than are there.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstring>

namespace
{

/// What `check` says of the count, and how many points `convert` writes.
struct CCounts
{
    std::string sTold; ///< empty: nothing
    int nWritten = 0;
};

CCounts GetCounts(const CZorcld& zorcld, const std::string& sBytes)
{
    const std::string sFile = zorcld.Write("in.las", sBytes);
    const nlohmann::json check = nlohmann::json::parse(zorcld.Run({"check", "--json", sFile}).sOut);
    CCounts counts;
    for (const nlohmann::json& warning : check["files"][0]["warnings"])
        if (warning["code"] == "las-count")
            counts.sTold = warning["text"];
    const std::string sOut = zorcld.GetPath("out.ply");
    if (zorcld.Run({"convert", sFile, sOut}).nStatus == 0)
        counts.nWritten = nlohmann::json::parse(zorcld.Run({"info", "-q", "--json", sOut}).sOut)["announced"];
    return counts;
}

template <class T>
std::string With(std::string sBytes, std::size_t nPos, T value)
{
    std::memcpy(sBytes.data() + nPos, &value, sizeof value);
    return sBytes;
}

class ZorcldCounts : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!CZorcld::HasLaszip())
            GTEST_SKIP() << "the points of LAS are not read without LASzip";
    }

    CZorcld m_zorcld;
};

} // namespace

TEST_F(ZorcldCounts, TooLow_CheckSaysSoAndConvertTakesAll)
{
    for (const int nFormat : {1, 3, 6, 7})
    {
        CLasFile las = LasOf(nFormat, 1931);
        las.nAnnounced = 1431;
        const CCounts counts = GetCounts(m_zorcld, las.GetBytes());
        EXPECT_EQ(counts.sTold,
                  "its header announces 1431 points, but 1931 are there: those behind the announced "
                  "ones are not read");
        EXPECT_EQ(counts.nWritten, 1931) << nFormat;
    }
}

TEST_F(ZorcldCounts, ZeroBesidePoints_CheckSaysSoAndConvertTakesAll)
{
    for (const int nFormat : {1, 6, 7})
    {
        CLasFile las = LasOf(nFormat, 20);
        las.nMinor = 4;
        las.nAnnounced = 0;
        const CCounts counts = GetCounts(m_zorcld, las.GetBytes());
        EXPECT_EQ(counts.sTold.find("its header announces 0 points, but 20 are there"), 0U) << counts.sTold;
        EXPECT_EQ(counts.nWritten, 20) << nFormat;
        EXPECT_EQ(GetCounts(m_zorcld, las.GetBytes() + "cut off").nWritten, 20);
    }
}

TEST_F(ZorcldCounts, TooLow_ConvertSaysThatItTakesAll)
{
    for (const int nFormat : {1, 7})
    {
        CLasFile las = LasOf(nFormat, 20);
        las.nAnnounced = 12;
        const std::string sFile = m_zorcld.Write("in.las", las.GetBytes());
        for (const std::vector<std::string>& vecChoice : {std::vector<std::string>(), {"--class", "1"}})
        {
            std::vector<std::string> vecArgs = {"convert", sFile, m_zorcld.GetPath("out.cld")};
            vecArgs.insert(vecArgs.end(), vecChoice.begin(), vecChoice.end());
            const std::string sErr = m_zorcld.Run(vecArgs).sErr;
            const std::string sLine =
                "its header announces 12 points, but 20 are there: all of them are taken\n";
            const std::size_t nPos = sErr.find(sLine);
            ASSERT_NE(nPos, std::string::npos) << sErr;
            EXPECT_EQ(sErr.find("its header announces", nPos + 1), std::string::npos) << sErr;
        }
        las.nAnnounced = 20;
        const std::string sGood = m_zorcld.Write("good.las", las.GetBytes());
        EXPECT_EQ(m_zorcld.Run({"convert", sGood, m_zorcld.GetPath("out.cld")}).sErr.find("announces"),
                  std::string::npos);
    }
}

TEST_F(ZorcldCounts, TooLow_ColoursBehindTheAnnouncedPointsOnly)
{
    CLasFile las = LasOf(3, 20);
    las.nAnnounced = 12;
    for (std::size_t i = 0; i < 20; ++i)
        las.vecPnts[i].anColor =
            i < 12 ? std::array<std::uint16_t, 3>{} : std::array<std::uint16_t, 3>{1, 2, 3};
    const std::string sFile = m_zorcld.Write("in.las", las.GetBytes());
    EXPECT_NE(m_zorcld.Run({"check", sFile}).sOut.find("colour fields of the points that are read are all 0"),
              std::string::npos);
    las.nAnnounced = 13;
    const std::string sSome = m_zorcld.Write("in.las", las.GetBytes());
    EXPECT_EQ(m_zorcld.Run({"check", sSome}).sOut.find("all 0"), std::string::npos);
}

// What a cloud holds after loading does not change.
TEST_F(ZorcldCounts, TooLow_LoadedAsAnnounced)
{
    CLasFile las = LasOf(1, 1931);
    las.nAnnounced = 1431;
    const CRun run = m_zorcld.Run({"info", "--json", m_zorcld.Write("in.las", las.GetBytes())});
    EXPECT_EQ(nlohmann::json::parse(run.sOut)["points"], 1431);
    EXPECT_NE(run.sErr.find("but 1931 are there"), std::string::npos) << run.sErr;
}

// Behind the points may stand records, waveforms, and what nobody knows.
TEST_F(ZorcldCounts, OtherThingsBehindThePoints_AreNone)
{
    const CLasFile las = LasOf(6, 5);
    const std::string sBytes = las.GetBytes();
    const auto nEnd = static_cast<std::uint64_t>(sBytes.size());
    const std::string sBehind(300, '\0'); // ten points
    EXPECT_EQ(GetCounts(m_zorcld, sBytes + sBehind).nWritten, 15);
    const std::string sRecord = With(With(sBytes + sBehind, 235, nEnd), 243, std::uint32_t{1});
    EXPECT_EQ(GetCounts(m_zorcld, sRecord).nWritten, 5);
    EXPECT_EQ(GetCounts(m_zorcld, sRecord).sTold, "");
    EXPECT_EQ(GetCounts(m_zorcld, With(sBytes + sBehind, 227, nEnd)).nWritten, 5);
    EXPECT_EQ(GetCounts(m_zorcld, sBytes + sBehind + "y").nWritten, 5);
}

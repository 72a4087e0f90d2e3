// A source that is another one when it is read for the second time.
#include <host/tile/HandOutPnts.h>

#include <host/files/CInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <filesystem>

using namespace zorcld;

namespace
{

/// A plan of a file, by which its points are handed out when the file may have been changed.
class HandOutPntsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        CTileOptions options;
        options.dSize = 10.0;
        Put(c_vecCoords);
        m_vecInputs.push_back({m_folder.GetPath("scan.ply"), {}});
        m_plan = MakePlan(m_vecInputs, options, m_console);
    }

    void Put(const std::vector<float>& vecCoords) const
    {
        static_cast<void>(m_folder.Write("scan.ply", MakePly(vecCoords)));
    }

    /// @return why not; empty: they are handed out.
    std::string HandOut() const
    {
        const std::string sPnts = m_folder.GetPath("points");
        std::filesystem::remove_all(sPnts);
        std::filesystem::create_directory(sPnts);
        try
        {
            EXPECT_EQ(HandOutPnts(m_vecInputs, m_plan, m_plan.vecTiles, sPnts, m_console).size(),
                      m_plan.vecTiles.size());
            return {};
        }
        catch (const CFailure& failure)
        {
            return failure.GetFile() == m_vecInputs.front().sPath ? failure.GetCause() : "another file";
        }
    }

    // Two tiles of 10 units, each in the buffer of the other.
    inline static const std::vector<float> c_vecCoords = {1, 1, 1, 2, 2, 2, 12, 3, 3};
    static constexpr const char* c_pChanged = "it was changed while it was read";

    const CZorcld m_folder;
    const CConsole m_console;
    std::vector<CInputOptions> m_vecInputs;
    CTilePlan m_plan;
};

} // namespace

TEST_F(HandOutPntsTest, SameSource_IsHandedOut)
{
    EXPECT_EQ(HandOut(), "");
}

// As many points in every tile: the hash alone tells.
TEST_F(HandOutPntsTest, PointElsewhereInItsTile_IsTold)
{
    Put({1, 1, 1, 2, 2, 7, 12, 3, 3});
    EXPECT_EQ(HandOut(), c_pChanged);
}

TEST_F(HandOutPntsTest, PointInAnotherTile_IsTold)
{
    Put({1, 1, 1, 12, 2, 2, 12, 3, 3});
    EXPECT_EQ(HandOut(), c_pChanged);
}

TEST_F(HandOutPntsTest, MoreOrFewerPoints_AreTold)
{
    Put({1, 1, 1, 2, 2, 2});
    EXPECT_EQ(HandOut(), c_pChanged);
    Put({1, 1, 1, 2, 2, 2, 12, 3, 3, 4, 4, 4});
    EXPECT_EQ(HandOut(), c_pChanged);
}

TEST_F(HandOutPntsTest, PointWhereNoTileIs_IsTold)
{
    Put({1, 1, 1, 2, 2, 2, 500, 500, 3});
    EXPECT_EQ(HandOut(), c_pChanged);
}

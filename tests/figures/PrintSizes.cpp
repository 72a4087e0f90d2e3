#include <tests/figures/Figures.h>

#include <sample/CSampleTerrain.h>
#include <tests/support/CNoColors.h>
#include <tests/support/CSumListener.h>
#include <zor4data/CPntCld.h>
#include <zor4data/FindGround.h>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>

namespace
{

/// A number of /proc/self/status, in bytes: VmRSS is what the process holds, VmHWM the most it has held.
double ReadStatus(const std::string& sName)
{
    std::ifstream file("/proc/self/status");
    std::string sWord;
    double dKilobytes = 0.0;
    while (file >> sWord)
        if (sWord == sName + ":" && file >> dKilobytes)
            break;
    return dKilobytes * 1024.0;
}

/// Lets the most that was held begin anew.
void ResetMost()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

double GetWall()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Runs the stages of a cloud and prints a line for each.
class CStages
{
public:
    explicit CStages(std::int64_t nNum) : m_dNum(static_cast<double>(nNum)), m_dBefore(ReadStatus("VmRSS"))
    {
        std::printf("%-34s %9s %9s %14s %14s\n", "stage", "seconds", "CPU s", "bytes a point", "at the most");
    }

    void Run(const char* pName, const std::function<bool()>& fn)
    {
        ResetMost();
        const double dWall = GetWall();
        const std::clock_t nCpu = std::clock();
        m_bGood = fn() && m_bGood;
        std::printf("%-34s %9.2f %9.2f %14.2f %14.2f\n", pName, GetWall() - dWall,
                    static_cast<double>(std::clock() - nCpu) / CLOCKS_PER_SEC,
                    (ReadStatus("VmRSS") - m_dBefore) / m_dNum, (ReadStatus("VmHWM") - m_dBefore) / m_dNum);
        std::fflush(stdout);
    }

    bool IsGood() const { return m_bGood; }

private:
    double m_dNum;
    double m_dBefore;
    bool m_bGood = true;
};

/// Terrain as large as is wanted: tiles of a million points beside each other.
class CTiles
{
public:
    explicit CTiles(std::int64_t nNum)
        : m_terrain(std::min<std::int64_t>(nNum, 1000000)), m_vecTile(m_terrain.CalcPnts()), m_nNum(nNum),
          m_nNumInARow(static_cast<std::int64_t>(std::sqrt(static_cast<double>(nNum) / 1e6)) + 1)
    {
    }

    void Fill(CPntCld& cld, bool bColor) const
    {
        cld.OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
        cld.OnReadNumPnts(static_cast<int>(m_nNum));
        const auto nNumInATile = static_cast<std::int64_t>(m_vecTile.size());
        for (std::int64_t i = 0; i < m_nNum; ++i)
        {
            const CSamplePnt& pnt = m_vecTile[static_cast<std::size_t>(i % nNumInATile)];
            const std::int64_t nTile = i / nNumInATile;
            const std::int64_t nRow = nTile / m_nNumInARow;
            const double x = pnt.x + static_cast<double>(nTile % m_nNumInARow) * m_terrain.GetSide();
            const double y = pnt.y + static_cast<double>(nRow) * m_terrain.GetSide();
            if (bColor)
                cld.OnReadPnt(x, y, pnt.z, pnt.r, pnt.g, pnt.b);
            else
                cld.OnReadPnt(x, y, pnt.z);
        }
    }

private:
    CSampleTerrain m_terrain;
    std::vector<CSamplePnt> m_vecTile;
    std::int64_t m_nNum;
    std::int64_t m_nNumInARow;
};

void RunQueries(CStages& stages, const CPntCld& cld)
{
    const double x = CSampleTerrain::c_dOrgX;
    const double y = CSampleTerrain::c_dOrgY;
    stages.Run("100 m x 100 m of it",
               [&]
               {
                   CSumListener sum;
                   cld.GetPnts2D(&sum, x, y, x + 100.0, y + 100.0);
                   return sum.m_nNumPnts > 0;
               });
    stages.Run("thinned to a point in 10 m",
               [&]
               {
                   CSumListener sum;
                   cld.GetPnts_Lod(&sum, 10.0, 1000);
                   return sum.m_nNumPnts > 0;
               });
    stages.Run("every point",
               [&]
               {
                   CSumListener sum;
                   cld.GetPnts(&sum, 1000);
                   return sum.m_nNumPnts == cld.GetNumPnts();
               });
}

/// What looks at every point more than once: of a large cloud it takes long.
void RunAnalyses(CStages& stages, const CPntCld& cld)
{
    constexpr int c_nMaxNum = 10000000;
    if (cld.GetNumPnts() > c_nMaxNum)
        return;
    stages.Run("ground found", [&] { return !FindGround(cld, nullptr).empty(); });
    stages.Run("outline walked, points 2 m apart",
               [&]
               {
                   CSumListener sum;
                   return cld.CalcCnt(nullptr, &sum, 2.0) && sum.m_nNumPnts > 0;
               });
}

} // namespace

bool PrintSizes(std::int64_t nNum, bool bColor)
{
    const CTiles tiles(nNum);
    const std::string sPath = "figures_" + std::to_string(getpid()) + ".cld"; // where the program runs
    CNoColors colors;
    CStages stages(nNum);
    {
        CPntCld cld(&colors);
        stages.Run("points stored", [&] { return tiles.Fill(cld, bColor), true; });
        stages.Run("octree built", [&] { return cld.OnReadEnd(), cld.GetNumPnts() > 0; });
        RunQueries(stages, cld);
        RunAnalyses(stages, cld);
        stages.Run("written as a native file", [&] { return cld.WriteToFile(sPath, 0); });
        cld.Clear();
    }
    CPntCld cld(&colors);
    stages.Run("read from the native file",
               [&] { return cld.ReadFromFile(nullptr, PntCldFile_Native, sPath); });
    std::remove(sPath.c_str());
    return stages.IsGood();
}

#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <io/ReadForeign.h>
#include <tests/support/LasBytes.h>
#include <zor4data/IPntCldReadListener.h>

#include <laszip/laszip_api.h>

#include <cmath>
#include <fstream>

namespace
{

/// The terrain as LAS in millimetres.
std::string GetTerrainLas(std::int64_t nNum, int nFormat)
{
    const auto Write = [=](const std::string& sPath)
    {
        CLasFile file;
        file.nFormat = nFormat;
        file.adScale = {0.001, 0.001, 0.001};
        file.adOffset = {CSampleTerrain::c_dOrgX, CSampleTerrain::c_dOrgY, 0.0};
        file.vecPnts.reserve(static_cast<std::size_t>(nNum));
        const auto ToSteps = [](double d) { return static_cast<std::int32_t>(std::lround(d * 1000.0)); };
        for (const CSamplePnt& pnt : GetTerrain(nNum))
            file.vecPnts.push_back({ToSteps(pnt.x - CSampleTerrain::c_dOrgX),
                                    ToSteps(pnt.y - CSampleTerrain::c_dOrgY),
                                    ToSteps(pnt.z),
                                    {pnt.r, pnt.g, pnt.b}});
        std::ofstream stream(sPath, std::ios::binary);
        stream << file.GetBytes();
        return stream.good();
    };
    return GetBenchFile(std::to_string(nNum) + "_" + std::to_string(nFormat) + ".las", Write);
}

/// Hands everything on to a cloud but the end, so that no tree is built.
class CNoEnd final : public IPntCldReadListener
{
public:
    explicit CNoEnd(CPntCld& cld) : m_cld(cld) {}

    void OnReadType(enumPntCldType eType) override { m_cld.OnReadType(eType); }
    void OnReadNumPnts(int nNumPnts) override { m_cld.OnReadNumPnts(nNumPnts); }
    void OnReadPnt(double x, double y, double z, unsigned char r, unsigned char g, unsigned char b) override
    {
        m_cld.OnReadPnt(x, y, z, r, g, b);
    }
    void OnReadPnt(double x, double y, double z) override { m_cld.OnReadPnt(x, y, z); }
    void OnReadEnd() override {}

private:
    CPntCld& m_cld;
};

std::uint64_t Load(std::int64_t nNum, int nFormat, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    CNoEnd listener(cld);
    const std::string sPath = GetTerrainLas(nNum, nFormat);
    bool bRead = false;
    timer.Measure([&] { bRead = ReadForeign(listener, nullptr, PntCldFile_Las, sPath.c_str()); });
    zor::geom::PNT_3D pnt;
    cld.GetPnt(static_cast<int>(nNum - 1), pnt);
    const bool bLastStored = std::fabs(pnt.z - GetTerrain(nNum).back().z) < 0.001;
    return bRead && bLastStored ? static_cast<std::uint64_t>(cld.GetNumPnts()) : 0;
}

/// The reading library's own loop, with its own coordinates, which are kept nowhere.
std::uint64_t Loop(std::int64_t nNum, int nFormat, CCpuTimer& timer)
{
    const std::string sPath = GetTerrainLas(nNum, nFormat);
    std::uint64_t nNumRead = 0;
    double dSum = 0.0;
    timer.Measure(
        [&]
        {
            laszip_POINTER pLaszip = nullptr;
            laszip_BOOL bCompressed = 0;
            laszip_create(&pLaszip);
            laszip_open_reader(pLaszip, sPath.c_str(), &bCompressed);
            for (double adPos[3]; nNumRead < static_cast<std::uint64_t>(nNum); ++nNumRead)
            {
                if (laszip_read_point(pLaszip) != 0)
                    break;
                laszip_get_coordinates(pLaszip, adPos);
                dSum += adPos[0] + adPos[1] + adPos[2];
            }
            laszip_close_reader(pLaszip);
            laszip_destroy(pLaszip);
        });
    return dSum > 0.0 ? nNumRead : 0;
}

void AddLasRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        for (const int nFormat : {0, 2})
            AddRow({"las", "LAS load, format " + std::to_string(nFormat) + ", no tree", nNum,
                    "LASzip's own loop", 1.35, [=](CCpuTimer& timer) { return Load(nNum, nFormat, timer); },
                    [=](CCpuTimer& timer) { return Loop(nNum, nFormat, timer); }});
}

const CBenchGroup group("las", AddLasRows);

} // namespace

#include <bench/BenchClouds.h>
#include <bench/BenchMemory.h>
#include <bench/BenchTable.h>
#include <bench/CNoEnd.h>
#include <io/ReadForeign.h>
#include <tests/support/LasBytes.h>

#include <laszip/laszip_api.h>

#include <cmath>
#include <cstdio>
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
        file.nMinor = nFormat >= 6 ? 4 : 2;
        file.bLegacyCount = nFormat < 6;
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

std::uint64_t Load(std::int64_t nNum, int nFormat, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    CNoEnd listener(cld);
    const std::string sPath = GetTerrainLas(nNum, nFormat);
    bool bRead = false;
    timer.Measure([&] { bRead = ReadForeign(listener, nullptr, PntCldFile_Las, sPath.c_str()); });
    return bRead ? SumMm(cld, MakeAbsoluteSum()) : 0;
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
    return dSum > 0.0 && nNumRead == static_cast<std::uint64_t>(nNum) ? GetTerrainSum(nNum) : 1;
}

/// Peak of a load with its octree beside what the loaded cloud keeps.
double MeasureLoadPeak(std::int64_t nNum)
{
    CNoColors colors;
    CPntCld cld(&colors);
    const std::string sPath = GetTerrainLas(nNum, 2);
    const std::int64_t nHeap = GetHeapBytes();
    const std::int64_t nPeak = MeasurePeak([&] { cld.ReadFromFile(nullptr, PntCldFile_Las, sPath.c_str()); });
    if (cld.GetNumPnts() != nNum)
        std::fprintf(stderr, "the terrain has duplicates: the peak includes their removal\n");
    return (static_cast<double>(nPeak) - 1048576.0) / static_cast<double>(GetHeapBytes() - nHeap);
}

void AddLasRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
    {
        for (const int nFormat : {0, 2, 3, 7})
            AddRow({"las",
                    "LAS load, format " + std::to_string(nFormat) + ", tree excluded",
                    nNum,
                    "LASzip's own loop",
                    {1.35, 1.20},
                    [=](CCpuTimer& timer) { return Load(nNum, nFormat, timer); },
                    [=](CCpuTimer& timer) { return Loop(nNum, nFormat, timer); }});
        AddValue({"las", "peak of a LAS load, less 1 MiB, to what the cloud keeps", nNum, "times", 1.15,
                  [=] { return MeasureLoadPeak(nNum); }});
    }
}

const CBenchGroup group("las", AddLasRows);

} // namespace

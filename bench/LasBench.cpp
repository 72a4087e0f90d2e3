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
#include <utility>

namespace
{

/// What the terrain lacks of a scan: by a rule, so that every run makes the same file.
void FillScan(laszip_point_struct& pnt, std::int64_t i)
{
    const auto n = static_cast<std::uint32_t>(i) * 2654435761U; // scattered
    const auto nClass = static_cast<laszip_U8>(n >> 30U == 0 ? 5 : 2);
    const auto nReturns = static_cast<laszip_U8>(n >> 29U == 7 ? 2 : 1);
    pnt.intensity = static_cast<laszip_U16>(n >> 22U);
    pnt.gps_time = 3e8 + 1e-5 * static_cast<double>(i);
    pnt.user_data = static_cast<laszip_U8>(i / 1000 % 4);
    pnt.point_source_ID = static_cast<laszip_U16>(i / 200000);
    const auto nAngle = static_cast<laszip_I16>(i / 50 % 40 - 20);
    pnt.scan_angle_rank = static_cast<laszip_I8>(nAngle);
    pnt.extended_scan_angle = static_cast<laszip_I16>(nAngle * 166);
    pnt.classification = static_cast<laszip_U8>(nClass & 31U);
    pnt.extended_classification = nClass;
    pnt.return_number = 1;
    pnt.extended_return_number = 1;
    pnt.number_of_returns = static_cast<laszip_U8>(nReturns & 7U);
    pnt.extended_number_of_returns = static_cast<laszip_U8>(nReturns & 15U);
}

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

/// The same as LAZ. What a scanner gives besides coordinates and colours changes from point to point as it
/// does in real files: times rise, intensities scatter.
std::string GetTerrainLaz(std::int64_t nNum, int nFormat)
{
    const auto Write = [=](const std::string& sPath)
    {
        const std::string sLas = GetTerrainLas(nNum, nFormat);
        laszip_POINTER pFrom = nullptr;
        laszip_POINTER pTo = nullptr;
        laszip_header_struct* pHeader = nullptr;
        laszip_point_struct* pPnt = nullptr;
        laszip_BOOL bCompressed = 0;
        laszip_I32 nFailed = laszip_create(&pFrom) + laszip_create(&pTo) +
                             laszip_open_reader(pFrom, sLas.c_str(), &bCompressed) +
                             laszip_get_header_pointer(pFrom, &pHeader) +
                             laszip_get_point_pointer(pFrom, &pPnt) + laszip_set_header(pTo, pHeader) +
                             laszip_request_native_extension(pTo, 1) +
                             laszip_open_writer(pTo, sPath.c_str(), 1);
        for (std::int64_t i = 0; i < nNum && nFailed == 0; ++i)
        {
            nFailed += laszip_read_point(pFrom);
            FillScan(*pPnt, i);
            nFailed += laszip_set_point(pTo, pPnt) + laszip_write_point(pTo);
        }
        nFailed += laszip_close_writer(pTo) + laszip_close_reader(pFrom);
        return nFailed + laszip_destroy(pTo) + laszip_destroy(pFrom) == 0;
    };
    return GetBenchFile(std::to_string(nNum) + "_" + std::to_string(nFormat) + ".laz", Write);
}

std::uint64_t Load(const std::string& sPath, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    CNoEnd listener(cld);
    bool bRead = false;
    timer.Measure([&] { bRead = ReadForeign(listener, nullptr, PntCldFile_Las, sPath.c_str()); });
    return bRead ? SumMm(cld, MakeAbsoluteSum()) : 0;
}

/// The reading library's own loop, with its own coordinates, which are kept nowhere.
std::uint64_t Loop(const std::string& sPath, std::int64_t nNum, CCpuTimer& timer)
{
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
                    [=](CCpuTimer& timer) { return Load(GetTerrainLas(nNum, nFormat), timer); },
                    [=](CCpuTimer& timer) { return Loop(GetTerrainLas(nNum, nFormat), nNum, timer); }});
        // Of formats 6 to 10 the loop decompresses what the library leaves alone.
        for (const auto& [nFormat, dTarget] : {std::pair{1, 1.10}, {3, 1.10}, {6, 0.80}, {7, 0.60}})
            AddRow({"las",
                    "LAZ load, format " + std::to_string(nFormat) + ", tree excluded",
                    nNum,
                    "LASzip's own loop",
                    {dTarget, dTarget},
                    [=, nFormat = nFormat](CCpuTimer& timer)
                    { return Load(GetTerrainLaz(nNum, nFormat), timer); },
                    [=, nFormat = nFormat](CCpuTimer& timer)
                    { return Loop(GetTerrainLaz(nNum, nFormat), nNum, timer); }});
        AddValue({"las", "peak of a LAS load, less 1 MiB, to what the cloud keeps", nNum, "times", 1.15,
                  [=] { return MeasureLoadPeak(nNum); }});
    }
}

const CBenchGroup c_group("las", AddLasRows);

} // namespace

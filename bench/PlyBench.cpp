#include <bench/BenchMemory.h>
#include <bench/PlyCases.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

std::uint64_t LoadProduct(std::int64_t nNum, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    const std::string sPath = GetTerrainPly(nNum);
    timer.Measure([&] { cld.ReadFromFile(nullptr, PntCldFile_Ply, sPath.c_str()); });
    return SumMm(cld, MakeRelativeSum());
}

namespace
{

/// Reads into a cloud a file whose second element cannot be read: every vertex is stored, no tree built.
std::uint64_t Decode(std::int64_t nNum, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    const std::string sPath = GetUnfinishedPly(nNum);
    bool bRead = true;
    timer.Measure([&] { bRead = cld.ReadFromFile(nullptr, PntCldFile_Ply, sPath.c_str()); });
    zor::geom::PNT_3D pnt;
    cld.GetPnt(static_cast<int>(nNum - 1), pnt);
    const CSamplePnt last = CSampleTerrain(nNum).CalcPnt(nNum - 1);
    const bool bLastStored = std::fabs(pnt.z - last.z) < 0.001; // the height fits a float well enough
    return !bRead && bLastStored ? static_cast<std::uint64_t>(cld.GetNumPnts()) : 0;
}

std::uint64_t ReadBytes(std::int64_t nNum, CCpuTimer& timer)
{
    constexpr std::size_t c_nBlock = std::size_t{1} << 20U;
    const std::unique_ptr<char[]> pBlock(new char[c_nBlock]);
    std::uint64_t nNumBytes = 0;
    timer.Measure(
        [&]
        {
            std::FILE* const pFile = std::fopen(GetTerrainPly(nNum).c_str(), "rb");
            for (std::size_t nRead = 1; nRead > 0; nNumBytes += nRead)
                nRead = std::fread(pBlock.get(), 1, c_nBlock, pFile);
            std::fclose(pFile);
        });
    return std::min(nNumBytes / 15, static_cast<std::uint64_t>(nNum)); // 15 bytes a vertex, and a header
}

/// Peak of a load beside what the loaded cloud keeps: points, two bit sets, tree.
double MeasureLoadPeak(std::int64_t nNum)
{
    CNoColors colors;
    CPntCld cld(&colors);
    const std::string sPath = GetTerrainPly(nNum);
    const std::int64_t nHeap = GetHeapBytes();
    const std::int64_t nPeak = MeasurePeak([&] { cld.ReadFromFile(nullptr, PntCldFile_Ply, sPath.c_str()); });
    const std::int64_t nKept = GetHeapBytes() - nHeap;
    if (cld.GetNumPnts() != nNum)
        std::fprintf(stderr, "the terrain has duplicates: the peak includes their removal\n");
    return (static_cast<double>(nPeak) - 1048576.0) / static_cast<double>(nKept);
}

void AddPlyRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
    {
        AddRow({"ply",
                "PLY decoding into the store",
                nNum,
                "fread in 1 MiB blocks",
                {7.0, 5.0},
                [=](CCpuTimer& timer) { return Decode(nNum, timer); },
                [=](CCpuTimer& timer) { return ReadBytes(nNum, timer); }});
        AddValue({"ply", "peak of a PLY load, less 1 MiB, to what the cloud keeps", nNum, "times", 1.15,
                  [=] { return MeasureLoadPeak(nNum); }});
    }
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddRow({"ply",
            "PLY load, growth to",
            nNum,
            "itself with a tenth of the points",
            {12.0, 10.5},
            [=](CCpuTimer& timer) { return LoadProduct(nNum, timer); },
            [=](CCpuTimer& timer) { return LoadProduct(nNum / 10, timer); },
            BenchResult_Ignored});
}

const CBenchGroup c_group("ply", AddPlyRows);

} // namespace

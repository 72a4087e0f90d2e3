#include <bench/BenchMemory.h>
#include <bench/CTempFile.h>
#include <bench/NativeFiles.h>

#include <cstring>
#include <filesystem>
#include <memory>

#include <sys/mman.h>

void FillTerrain(CPntCld& cld, std::int64_t nNum, bool bColor)
{
    cld.OnReadType(bColor ? PntCldType_PntColor : PntCldType_Pnt);
    cld.Init(static_cast<int>(nNum));
    std::uint8_t uc = 0;
    for (const CSamplePnt& pnt : GetTerrain(nNum))
        cld.AddPnt(pnt.x, pnt.y, pnt.z, uc++, 7, 9);
    cld.ComputeTree();
}

std::string GetTerrainNative(std::int64_t nNum, bool bColor)
{
    const auto write = [=](const std::string& sPath)
    {
        CNoColors colors;
        CPntCld cld(&colors);
        FillTerrain(cld, nNum, bColor);
        return cld.WriteToFile(sPath.c_str(), 0);
    };
    return GetBenchFile(std::to_string(nNum) + (bColor ? "c.cld" : ".cld"), write);
}

std::uint64_t LoadNative(std::int64_t nNum, bool bColor, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    const std::string sPath = GetTerrainNative(nNum, bColor);
    bool bRead = false;
    timer.Measure([&] { bRead = cld.ReadFromFile(nullptr, PntCldFile_Native, sPath); });
    return bRead ? SumMm(cld, MakeAbsoluteSum()) : 0;
}

namespace
{

/// Reads the same bytes into memory that was never touched: the allocator may give such that was.
std::uint64_t ReadFresh(std::int64_t nNum, bool bColor, CCpuTimer& timer)
{
    const std::string sPath = GetTerrainNative(nNum, bColor);
    const std::size_t nSize = std::filesystem::file_size(sPath);
    void* pBytes = nullptr;
    std::size_t nRead = 0;
    timer.Measure(
        [&]
        {
            pBytes = mmap(nullptr, nSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            std::FILE* const pFile = std::fopen(sPath.c_str(), "rb");
            nRead = std::fread(pBytes, 1, nSize, pFile);
            std::fclose(pFile);
        });
    munmap(pBytes, nSize);
    return nRead == nSize ? GetTerrainSum(nNum) : 1;
}

std::uint64_t Save(std::int64_t nNum, bool bColor, CCpuTimer& timer)
{
    static CNoColors colors;
    static std::unique_ptr<CPntCld> pCld;
    static std::int64_t nKey = -1;
    if (nKey != 2 * nNum + (bColor ? 1 : 0))
    {
        nKey = 2 * nNum + (bColor ? 1 : 0);
        pCld = std::make_unique<CPntCld>(&colors);
        FillTerrain(*pCld, nNum, bColor);
    }
    const CTempFile file("save");
    timer.Measure([&] { pCld->WriteToFile(file.GetPath(), 0); });
    return std::filesystem::file_size(file.GetPath());
}

/// Writes the same number of bytes from memory.
std::uint64_t WriteBytes(std::int64_t nNum, bool bColor, CCpuTimer& timer)
{
    const std::size_t nSize = std::filesystem::file_size(GetTerrainNative(nNum, bColor));
    const std::unique_ptr<char[]> pBytes(new char[nSize]);
    std::memset(pBytes.get(), 1, nSize);
    const CTempFile file("save");
    timer.Measure(
        [&]
        {
            std::FILE* const pFile = std::fopen(file.GetPath().c_str(), "wb");
            std::fwrite(pBytes.get(), 1, nSize, pFile);
            std::fclose(pFile);
        });
    return std::filesystem::file_size(file.GetPath());
}

/// Peak of a load beside what the loaded cloud keeps: points, two bit sets, tree.
double MeasureLoadPeak(std::int64_t nNum)
{
    CNoColors colors;
    CPntCld cld(&colors);
    const std::string sPath = GetTerrainNative(nNum, false);
    const std::int64_t nHeap = GetHeapBytes();
    const std::int64_t nPeak = MeasurePeak([&] { cld.ReadFromFile(nullptr, PntCldFile_Native, sPath); });
    return (static_cast<double>(nPeak) - 1048576.0) / static_cast<double>(GetHeapBytes() - nHeap);
}

void AddNativeRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
    {
        for (const bool bColor : {false, true})
        {
            const std::string sKind = bColor ? ", colour" : ", plain";
            AddRow({"native",
                    "native load, octree ready" + sKind,
                    nNum,
                    "fread into fresh memory",
                    {1.6, 1.2},
                    [=](CCpuTimer& timer) { return LoadNative(nNum, bColor, timer); },
                    [=](CCpuTimer& timer) { return ReadFresh(nNum, bColor, timer); }});
            // Single rounds take twice the time now and then, on either side.
            AddRow({"native", "native save" + sKind, nNum, "fwrite of the same bytes", 1.6,
                    [=](CCpuTimer& timer) { return Save(nNum, bColor, timer); },
                    [=](CCpuTimer& timer) { return WriteBytes(nNum, bColor, timer); }, BenchResult_Same, 0.0,
                    9});
        }
        AddValue({"native", "peak of a native load, less 1 MiB, to what the cloud keeps", nNum, "times", 1.15,
                  [=] { return MeasureLoadPeak(nNum); }});
    }
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddRow({"native",
            "native load, growth to",
            nNum,
            "itself with a tenth of the points",
            {12.0, 10.5},
            [=](CCpuTimer& timer) { return LoadNative(nNum, false, timer); },
            [=](CCpuTimer& timer) { return LoadNative(nNum / 10, false, timer); },
            BenchResult_Ignored});
}

const CBenchGroup c_group("native", AddNativeRows);

} // namespace

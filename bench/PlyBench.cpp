#include <bench/BenchClouds.h>
#include <bench/BenchMemory.h>
#include <bench/BenchTable.h>
#include <io/ReadForeign.h>

#include <cstdio>
#include <memory>

namespace
{

/// Passes everything on to a cloud but the end, so that no tree is built.
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

std::uint64_t Decode(std::int64_t nNum, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    CNoEnd listener(cld);
    const std::string sPath = GetTerrainPly(nNum);
    bool bRead = false;
    timer.Measure([&] { bRead = ReadForeign(listener, nullptr, PntCldFile_Ply, sPath); });
    return bRead ? static_cast<std::uint64_t>(cld.GetNumPnts()) : 0;
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
    return nNumBytes / 15 == static_cast<std::uint64_t>(nNum) ? static_cast<std::uint64_t>(nNum) : nNumBytes;
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
        AddRow({"ply", "PLY decoding into the store", nNum, "fread in 1 MiB blocks", 7.0,
                [=](CCpuTimer& timer) { return Decode(nNum, timer); },
                [=](CCpuTimer& timer) { return ReadBytes(nNum, timer); }, false});
        AddValue({"ply", "peak of a PLY load, less 1 MiB, to what the cloud keeps", nNum, "times", 1.15,
                  [=] { return MeasureLoadPeak(nNum); }});
    }
}

const CBenchGroup group("ply", AddPlyRows);

} // namespace

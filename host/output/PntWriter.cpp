#include <host/output/PntWriter.h>

#include <formats/MakePlyHead.h>
#include <host/output/ByteFromShare.h>
#include <host/output/CFailure.h>
#include <host/output/GetExtension.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nChunk = 65536;

/// Gathers bytes so that the file is written in large pieces.
class CChunk
{
public:
    explicit CChunk(TWriteBytes write) : m_write(std::move(write)) {}

    template <class... TArgs>
    void Format(fmt::format_string<TArgs...> sFormat, TArgs&&... args)
    {
        fmt::format_to(std::back_inserter(m_sBytes), sFormat, std::forward<TArgs>(args)...);
        if (m_sBytes.size() >= c_nChunk)
            Flush();
    }

    void PutByte(int n) { m_sBytes += static_cast<char>(n); }

    void PutFloat(double d) // little-endian
    {
        const auto f = static_cast<float>(d);
        std::uint32_t nBits = 0;
        std::memcpy(&nBits, &f, sizeof(nBits));
        for (unsigned int k = 0; k < 4; ++k)
            m_sBytes += static_cast<char>(nBits >> (8U * k));
        if (m_sBytes.size() >= c_nChunk)
            Flush();
    }

    void Flush()
    {
        m_write(m_sBytes);
        m_sBytes.clear();
    }

private:
    TWriteBytes m_write;
    std::string m_sBytes;
};

class CCsvWriter final : public IPntWriter
{
public:
    CCsvWriter(TWriteBytes write, const CPntSummary& summary)
        : m_chunk(std::move(write)), m_bColor(summary.bColor)
    {
        m_chunk.Format("{}\n", m_bColor ? "x,y,z,red,green,blue" : "x,y,z");
    }

    void Add(const CCldCadPnt& pnt) override
    {
        m_chunk.Format("{:.4f},{:.4f},{:.4f}", pnt.m_pnt.x, pnt.m_pnt.y, pnt.m_pnt.z);
        if (m_bColor)
            m_chunk.Format(",{},{},{}\n", ByteFromShare(pnt.m_fR), ByteFromShare(pnt.m_fG),
                           ByteFromShare(pnt.m_fB));
        else
            m_chunk.Format("\n");
    }

    void Finish() override { m_chunk.Flush(); }

private:
    CChunk m_chunk;
    bool m_bColor;
};

/// What is to be taken off coordinates between the two so that floats hold the rest to 1/2000 of a unit: a
/// round number near the smaller one, or 0.
double CalcShift(double dMin, double dMax)
{
    constexpr double c_dFloatReach = 8192.0; // floats lie less than 1/1000 apart up to here
    constexpr double c_dRound = 1000.0;
    constexpr double c_dMaxShift = 1e15; // beyond, doubles are no finer than what is to be kept
    if (std::max(std::fabs(dMin), std::fabs(dMax)) <= c_dFloatReach || std::fabs(dMin) >= c_dMaxShift)
        return 0.0;
    return std::floor(dMin / c_dRound) * c_dRound;
}

class CPlyWriter final : public IPntWriter
{
public:
    CPlyWriter(TWriteBytes write, const CPntSummary& summary)
        : m_chunk(std::move(write)), m_bColor(summary.bColor)
    {
        if (summary.nNumPnts > 0)
            m_dShift = {CalcShift(summary.box.xmin, summary.box.xmax),
                        CalcShift(summary.box.ymin, summary.box.ymax),
                        CalcShift(summary.box.zmin, summary.box.zmax)};
        std::vector<std::string> vecComments;
        if (!GetNote().empty())
            vecComments.push_back(GetNote());
        m_chunk.Format("{}", MakePlyHead(summary.nNumPnts, m_bColor, vecComments));
    }

    void Add(const CCldCadPnt& pnt) override
    {
        m_chunk.PutFloat(pnt.m_pnt.x - m_dShift[0]);
        m_chunk.PutFloat(pnt.m_pnt.y - m_dShift[1]);
        m_chunk.PutFloat(pnt.m_pnt.z - m_dShift[2]);
        if (m_bColor)
            for (const float f : {pnt.m_fR, pnt.m_fG, pnt.m_fB})
                m_chunk.PutByte(ByteFromShare(f));
    }

    void Finish() override { m_chunk.Flush(); }

    std::string GetNote() const override
    {
        if (m_dShift == std::array<double, 3>{})
            return {};
        return fmt::format("coordinates are shifted: add {:.15g} {:.15g} {:.15g}", m_dShift[0], m_dShift[1],
                           m_dShift[2]);
    }

private:
    CChunk m_chunk;
    bool m_bColor;
    std::array<double, 3> m_dShift{};
};

} // namespace

std::unique_ptr<IPntWriter> MakeCsvWriter(TWriteBytes write, const CPntSummary& summary)
{
    return std::make_unique<CCsvWriter>(std::move(write), summary);
}

std::unique_ptr<IPntWriter> MakePlyWriter(TWriteBytes write, const CPntSummary& summary)
{
    return std::make_unique<CPlyWriter>(std::move(write), summary);
}

TMakePntWriter FindPntWriter(const std::string& sPath)
{
    const std::string sExtension = GetExtension(sPath);
    if (sExtension == ".csv")
        return MakeCsvWriter;
    if (sExtension == ".ply")
        return MakePlyWriter;
    throw CUsageError(fmt::format("--output: '{}' ends neither in .ply nor in .csv", sPath));
}

} // namespace zorcld

#include <bench/BenchClouds.h>
#include <bench/BenchMemory.h>
#include <bench/BenchTable.h>

#include <cmath>
#include <memory>
#include <random>

namespace
{

constexpr double c_dDistance = 2.0; // metres

std::uint64_t MeasureOutline(const CPntCld& cld, CCpuTimer& timer)
{
    CSumListener listener;
    timer.Measure([&] { cld.CalcCnt(nullptr, &listener, c_dDistance); });
    return listener.m_nSum;
}

/// A ring with a saw-toothed rim, 38 km long, 3 points a square metre at random.
const CPntCld& GetSerratedRing()
{
    constexpr double c_dLength = 38000.0;
    constexpr double c_dTau = 6.28318530717958647692;
    constexpr double c_dRadius = c_dLength / c_dTau;
    static CNoColors colors;
    static std::unique_ptr<CPntCld> pCld;
    if (pCld != nullptr)
        return *pCld;
    constexpr int c_nNumPnts = 1710000;
    pCld = std::make_unique<CPntCld>(&colors);
    pCld->OnReadType(PntCldType_Pnt);
    pCld->Init(c_nNumPnts);
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> drawT(0.0, c_dLength);
    std::uniform_real_distribution<double> drawH(-12.0, 6.0);
    for (int i = 0; i < c_nNumPnts;)
    {
        const double t = drawT(random);
        const double h = drawH(random);
        if (h > std::fabs(6.0 - 1.5 * std::fmod(t, 8.0))) // beyond the teeth, 8 m wide and 6 m high
            continue;
        pCld->AddPnt((c_dRadius + h) * std::cos(t / c_dRadius), (c_dRadius + h) * std::sin(t / c_dRadius),
                     0.0);
        ++i;
    }
    pCld->ComputeTree();
    return *pCld;
}

void AddOutlineValues()
{
    const std::int64_t nLarge = BenchSizes({10000000}).back();
    AddRow({"outline",
            "outline, growth to",
            nLarge,
            "itself with a tenth of the points",
            {12.0, 10.5},
            [=](CCpuTimer& timer) { return MeasureOutline(GetTerrainCld(nLarge), timer); },
            [=](CCpuTimer& timer) { return MeasureOutline(GetTerrainCld(nLarge / 10), timer); },
            BenchResult_Ignored});
    const std::int64_t nSmall = BenchSizes({1000000}).back();
    AddValue({"outline", "outline, highest memory", nSmall, "B a point", 16.0,
              [=]
              {
                  const CPntCld& cld = GetTerrainCld(nSmall);
                  CSumListener listener;
                  return static_cast<double>(
                             MeasurePeak([&] { cld.CalcCnt(nullptr, &listener, c_dDistance); })) /
                         static_cast<double>(nSmall);
              }});
    AddValue({"outline", "outline, ragged, corners found", 1710000, "corners", 0.0,
              []
              {
                  CSumListener listener;
                  GetSerratedRing().CalcCnt(nullptr, &listener, c_dDistance);
                  return static_cast<double>(listener.m_nNumPnts);
              }});
    AddValue({"outline", "outline, ragged", 1710000, "s", 1.0,
              []
              {
                  CCpuTimer timer;
                  MeasureOutline(GetSerratedRing(), timer);
                  return timer.GetSeconds();
              }});
}

const CBenchGroup c_group("outline", AddOutlineValues);

} // namespace

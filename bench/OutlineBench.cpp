#include <bench/BenchClouds.h>
#include <bench/BenchMemory.h>
#include <bench/BenchTable.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{

constexpr double c_dDistance = 2.0; // metres

double MeasureOutline(const CPntCld& cld, double d)
{
    double dBest = 1.0e9;
    for (int i = 0; i < 3; ++i)
    {
        CSumListener listener;
        CCpuTimer timer;
        timer.Measure([&] { cld.CalcCnt(nullptr, &listener, d); });
        dBest = std::min(dBest, timer.GetSeconds());
    }
    return dBest;
}

/// A closed line of teeth, 4 m wide and 4 m high, 16 points each: every point is a corner of the outline.
std::unique_ptr<CPntCld> MakeRagged(int nNumTeeth, ICldColorListener* pColors)
{
    constexpr int c_nFlank = 8;
    constexpr int c_nTooth = 2 * c_nFlank;
    constexpr double c_dTau = 6.28318530717958647692;
    auto pCld = std::make_unique<CPntCld>(pColors);
    pCld->OnReadType(PntCldType_Pnt);
    pCld->Init(nNumTeeth * c_nTooth);
    for (int i = 0; i < nNumTeeth * c_nTooth; ++i)
    {
        const double dRadius = 4.0 * nNumTeeth / c_dTau + 0.5 * std::abs(i % c_nTooth - c_nFlank);
        const double dAngle = c_dTau * i / (nNumTeeth * c_nTooth);
        pCld->AddPnt(dRadius * std::cos(dAngle), dRadius * std::sin(dAngle), 0.0);
    }
    pCld->ComputeTree();
    return pCld;
}

void AddOutlineValues()
{
    const std::vector<std::int64_t> vecSizes = BenchSizes({1000000, 10000000});
    const std::int64_t nSmall = vecSizes.front();
    const std::int64_t nLarge = vecSizes.back();
    AddValue({"outline", "outline, growth from the smaller cloud", nLarge, "times",
              nLarge == 10 * nSmall ? 12.0 : 0.0,
              [=]
              {
                  const double dSmall = MeasureOutline(GetTerrainCld(nSmall), c_dDistance);
                  return MeasureOutline(GetTerrainCld(nLarge), c_dDistance) / dSmall;
              }});
    AddValue({"outline", "outline, highest memory", nSmall, "B a point", 16.0,
              [=]
              {
                  const CPntCld& cld = GetTerrainCld(nSmall);
                  CSumListener listener;
                  return static_cast<double>(
                             MeasurePeak([&] { cld.CalcCnt(nullptr, &listener, c_dDistance); })) /
                         static_cast<double>(nSmall);
              }});
    constexpr int c_nNumTeeth = 3125;
    AddValue({"outline", "outline, every point a corner", c_nNumTeeth * 16, "s", 1.0,
              []
              {
                  CNoColors colors;
                  return MeasureOutline(*MakeRagged(c_nNumTeeth, &colors), 0.6);
              }});
}

const CBenchGroup group("outline", AddOutlineValues);

} // namespace

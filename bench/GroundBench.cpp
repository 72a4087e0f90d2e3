#include <analysis/ground/CProgressMorphFilter.h>
#include <bench/BenchClouds.h>
#include <bench/BenchMemory.h>
#include <bench/BenchTable.h>

#include <pcl/point_cloud.h>
#include <pcl/point_types.h>

#include <cmath>
#include <functional>
#include <map>
#include <vector>

namespace
{

using TCloud = pcl::PointCloud<pcl::PointXYZ>;
using TMakeCloud = std::function<TCloud::Ptr(std::int64_t)>;

/// Numbers in [0, 1) that are the same on every machine.
class CNoise
{
public:
    double Next() noexcept
    {
        m_nState = m_nState * 6364136223846793005U + 1442695040888963407U;
        return static_cast<double>(m_nState >> 11) * 0x1p-53;
    }

private:
    std::uint64_t m_nState = 1;
};

pcl::PointXYZ MakePnt(double x, double y, double z)
{
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

TCloud::Ptr MakeTerrain(std::int64_t nNum)
{
    TCloud::Ptr pCloud(new TCloud);
    pCloud->reserve(static_cast<std::size_t>(nNum));
    CSampleTerrain(nNum).ForEachPnt([&](const CSamplePnt& pnt)
                                    { pCloud->points.push_back(MakePnt(pnt.x, pnt.y, pnt.z)); });
    pCloud->width = static_cast<std::uint32_t>(nNum);
    pCloud->height = 1;
    return pCloud;
}

// Points in rows, every other backwards, `dSpacing` apart; `calcZ` gives the height.
TCloud::Ptr MakeRows(std::int64_t nNum, double dSpacing, double dJitter,
                     const std::function<double(double, double, CNoise&)>& calcZ)
{
    CNoise noise;
    TCloud::Ptr pCloud(new TCloud);
    pCloud->reserve(static_cast<std::size_t>(nNum));
    const auto nRow = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(nNum))));
    for (std::int64_t i = 0; i < nNum; ++i)
    {
        const std::int64_t nInRow = i / nRow % 2 == 0 ? i % nRow : nRow - 1 - i % nRow;
        const double x = (static_cast<double>(nInRow) + dJitter * noise.Next()) * dSpacing;
        const double y = (static_cast<double>(i / nRow) + dJitter * noise.Next()) * dSpacing;
        pCloud->points.push_back(
            MakePnt(CSampleTerrain::c_dOrgX + x, CSampleTerrain::c_dOrgY + y, calcZ(x, y, noise)));
    }
    pCloud->width = static_cast<std::uint32_t>(nNum);
    pCloud->height = 1;
    return pCloud;
}

// Slopes above 1, and steps of just about the heights at which the filter decides.
double CalcRoughHeight(double x, double y, CNoise& noise)
{
    double z = 9.0 * std::sin(x * 0.11) + 6.0 * std::sin(y * 0.17 + 1.0) + std::sin(x * 0.4 + y * 0.3) +
               0.3 * noise.Next();
    const double dKind = noise.Next();
    if (dKind < 0.3)
        z += (dKind < 0.1 ? 0.5 : dKind < 0.2 ? 2.5 : 3.0) + 0.02 * (noise.Next() - 0.5);
    else if (dKind < 0.4)
        z += 10.0 * noise.Next();
    return z;
}

TCloud::Ptr MakeRough(std::int64_t nNum)
{
    return MakeRows(nNum, 1.0 / std::sqrt(CSampleTerrain::c_dDensity), 0.9, CalcRoughHeight);
}

TCloud::Ptr MakeSparse(std::int64_t nNum)
{
    return MakeRows(nNum, 10.0, 0.0,
                    [](double x, double y, CNoise& noise)
                    { return 30.0 * std::sin(x * 0.01) + 20.0 * std::sin(y * 0.013) + 3.0 * noise.Next(); });
}

// A strip that runs through its rectangle from corner to corner and covers a hundredth of it.
TCloud::Ptr MakeCorridor(std::int64_t nNum)
{
    CNoise noise;
    TCloud::Ptr pCloud(new TCloud);
    const double dLength = static_cast<double>(nNum) / (100.0 * CSampleTerrain::c_dDensity);
    for (std::int64_t i = 0; i < nNum; ++i)
    {
        const double dAlong = dLength * static_cast<double>(i) / static_cast<double>(nNum);
        const double dAcross = 100.0 * noise.Next();
        pCloud->push_back(MakePnt((dAlong + dAcross) * 0.7, (dAlong - dAcross) * 0.7,
                                  5.0 * std::sin(dAlong * 0.05) + 0.3 * noise.Next()));
    }
    return pCloud;
}

const TCloud::Ptr& GetCloud(const std::string& sKind, std::int64_t nNum, const TMakeCloud& makeCloud)
{
    static std::map<std::string, TCloud::Ptr> mapLast; // one cloud at a time
    const std::string sKey = sKind + std::to_string(nNum);
    if (mapLast.count(sKey) == 0)
    {
        mapLast.clear();
        mapLast[sKey] = makeCloud(nNum);
    }
    return mapLast[sKey];
}

std::uint64_t SumIndices(const std::vector<int>& vecGround)
{
    std::uint64_t nSum = vecGround.size();
    for (const int nIndex : vecGround)
        nSum = nSum * 31 + static_cast<std::uint64_t>(nIndex) + 1;
    return nSum;
}

void SetUp(CProgressMorphFilter& filter, const TCloud::Ptr& pCloud)
{
    filter.setInputCloud(pCloud);
    filter.setMaxWindowSize(20);
    filter.setSlope(1.0F);
    filter.setMaxDistance(3.0F);
    filter.setInitialDistance(0.5F);
}

std::uint64_t ExtractProduct(const TCloud::Ptr& pCloud, CCpuTimer& timer)
{
    CProgressMorphFilter filter;
    SetUp(filter, pCloud);
    std::vector<int> vecGround;
    timer.Measure([&] { filter.extract(nullptr, vecGround); });
    return SumIndices(vecGround);
}

std::uint64_t ExtractPublished(const TCloud::Ptr& pCloud, CCpuTimer& timer)
{
    CProgressMorphFilter filter;
    SetUp(filter, pCloud);
    std::vector<int> vecGround;
    timer.Measure([&] { filter.extract(vecGround); }); // the inherited form: PCL's own
    return SumIndices(vecGround);
}

// From 100,000 points on the peer takes minutes: one round.
void AddGroundRow(const std::string& sKind, std::int64_t nNum, CBenchBar bar, const TMakeCloud& makeCloud)
{
    const int nRounds = nNum < 50000 ? 0 : 1;
    AddRow({"ground", "ground filter, " + sKind, nNum, "PCL's published filter", bar,
            [=](CCpuTimer& timer) { return ExtractProduct(GetCloud(sKind, nNum, makeCloud), timer); },
            [=](CCpuTimer& timer) { return ExtractPublished(GetCloud(sKind, nNum, makeCloud), timer); },
            BenchResult_Same, 0.0, nRounds});
}

// The same work for ten times the points: peer of a row is the product itself.
void AddGrowthRow(std::int64_t nNum)
{
    AddRow({"ground",
            "ground filter, growth to",
            nNum,
            "itself with a tenth of the points",
            {12.0, 10.5},
            [=](CCpuTimer& timer) { return ExtractProduct(MakeTerrain(nNum), timer); },
            [=](CCpuTimer& timer) { return ExtractProduct(MakeTerrain(nNum / 10), timer); },
            BenchResult_Ignored});
}

void AddMemoryRow(const std::string& sKind, std::int64_t nNum, const TMakeCloud& makeCloud)
{
    AddValue({"ground", "ground filter, memory, " + sKind, nNum, "B/point", 48.0,
              [=]
              {
                  const TCloud::Ptr pCloud = makeCloud(nNum);
                  CCpuTimer timer;
                  const std::int64_t nPeak = MeasurePeak([&] { ExtractProduct(pCloud, timer); });
                  return static_cast<double>(nPeak) / static_cast<double>(nNum);
              }});
}

void AddGroundRows()
{
    const CBenchOptions& options = GetBenchOptions();
    AddGroundRow("sparse", 10000, {1.0 / 10.0, 1.0 / 20.0}, MakeSparse);
    using TSizes = std::vector<std::int64_t>;
    TSizes sizes = {10000, 100000, 300000};
    if (options.bFull)
        sizes.push_back(1000000);
    else
        AddNote("Left out without --full: the ground filter on 1000000 points, where the peer takes eight "
                "minutes.");
    for (const std::int64_t nNum : BenchSizes(options.bQuick ? TSizes{10000} : sizes))
        AddGroundRow("terrain", nNum, {1.0 / 120.0, 1.0 / 250.0}, MakeTerrain);
    for (const std::int64_t nNum : BenchSizes(options.bQuick ? TSizes{10000} : TSizes{100000, 300000}))
        AddGroundRow("rough", nNum, {1.0 / 60.0, 1.0 / 150.0}, MakeRough);
    AddGrowthRow(BenchSizes({10000000}).back());
    AddMemoryRow("terrain", BenchSizes({1000000}).back(), MakeTerrain);
    AddMemoryRow("corridor", BenchSizes({1000000}).back(), MakeCorridor);
}

const CBenchGroup c_group("ground", AddGroundRows);

} // namespace

// The ground of real airborne scans, as the published filter finds it. That one takes minutes for a whole
// scan: a part is taken, ZOR4DATA_TEST_MORPH_PNTS points of each (6000).

#include <tests/analysis/ground/MorphCase.h>
#include <tests/support/CRecListener.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cstdlib>

namespace
{

using TCloud = pcl::PointCloud<pcl::PointXYZ>;

std::size_t GetNumWanted()
{
    const char* const sNum = std::getenv("ZOR4DATA_TEST_MORPH_PNTS");
    return sNum != nullptr ? std::strtoul(sNum, nullptr, 10) : 6000;
}

/// Empty when the file is not there or this library reads no LAS.
TCloud ReadScan(const std::string& sName)
{
    CRecColorListener colors;
    CPntCld cld(&colors);
    TCloud cloud;
    if (!cld.ReadFromFile(nullptr, PntCldFile_Las, zor::String(GetRealFile(sName))))
        return cloud;
    for (int i = 0; i < cld.GetNumPnts(); ++i)
    {
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        cloud.push_back({static_cast<float>(pnt.x), static_cast<float>(pnt.y), static_cast<float>(pnt.z)});
    }
    return cloud;
}

/// The points nearest to one of them, at their own density.
TCloud Crop(const TCloud& cloud, std::size_t nNum)
{
    const pcl::PointXYZ middle = cloud[cloud.size() / 2];
    const auto distance = [&](const pcl::PointXYZ& pnt)
    { return std::max(std::fabs(pnt.x - middle.x), std::fabs(pnt.y - middle.y)); };
    TCloud crop(cloud);
    std::stable_sort(crop.begin(), crop.end(),
                     [&](const pcl::PointXYZ& a, const pcl::PointXYZ& b)
                     { return distance(a) < distance(b); });
    crop.resize(std::min(nNum, crop.size()));
    return crop;
}

/// Every n-th point of the whole scan.
TCloud Thin(const TCloud& cloud, std::size_t nNum)
{
    TCloud thin;
    const std::size_t nStep = std::max<std::size_t>(cloud.size() / std::max<std::size_t>(nNum, 1), 1);
    for (std::size_t i = 0; i < cloud.size(); i += nStep)
        thin.push_back(cloud[i]);
    return thin;
}

class CMorphRealFile : public ::testing::TestWithParam<const char*>
{
};

void ExpectAsPublished(const TCloud& cloud, float fSlope)
{
    CMorphCase morphCase;
    *morphCase.pCloud = cloud;
    morphCase.fSlope = fSlope;
    const std::vector<int> vecGround = morphCase.Extract();
    EXPECT_GT(vecGround.size(), 0U);
    EXPECT_TRUE(vecGround == morphCase.ExtractPublished()) << cloud.size() << " points, slope " << fSlope;
}

std::string MakeName(const ::testing::TestParamInfo<const char*>& file)
{
    std::string sName = file.param;
    sName = sName.substr(4, sName.rfind('.') - 4);
    std::replace(sName.begin(), sName.end(), '-', '_');
    return sName;
}

} // namespace

TEST_P(CMorphRealFile, Extract_AsPublished)
{
    const TCloud cloud = ReadScan(GetParam());
    if (cloud.empty())
        GTEST_SKIP() << GetParam() << ": not there, or no LAS is read";
    ExpectAsPublished(Crop(cloud, GetNumWanted()), 1.0F);
    ExpectAsPublished(Thin(cloud, GetNumWanted()), 1.0F);
    ExpectAsPublished(Thin(cloud, GetNumWanted()), 0.3F); // more of it depends on the windows
}

INSTANTIATE_TEST_SUITE_P(Scans, CMorphRealFile,
                         ::testing::Values("las/Topography.las", "las/autzen_trim.las", "las/hexbin-crop.las",
                                           "las/4_6_crop.las", "las/sample_c.las", "las/ahn3_delft.laz",
                                           "las/ign_semis_2023_0292_6833.laz"),
                         MakeName);

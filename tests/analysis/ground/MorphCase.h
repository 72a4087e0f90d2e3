#ifndef TESTS_ANALYSIS_GROUND_MORPHCASE_H
#define TESTS_ANALYSIS_GROUND_MORPHCASE_H

#include <analysis/ground/CProgressMorphFilter.h>

#include <gtest/gtest.h>
#include <pcl/point_cloud.h>
#include <pcl/point_types.h>

#include <cmath>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// A cloud and parameters for the ground filter, as the published filter takes them.
struct CMorphCase
{
    using TCloud = pcl::PointCloud<pcl::PointXYZ>;

    TCloud::Ptr pCloud{new TCloud};
    bool bIndices = false;
    std::vector<int> vecIndices;
    int nMaxWindowSize = 20;
    float fSlope = 1.0F;
    float fMaxDistance = 3.0F;
    float fInitialDistance = 0.5F;
    float fCellSize = 1.0F;
    float fBase = 2.0F;
    bool bExponential = true;

    CMorphCase() = default;
    CMorphCase(std::initializer_list<pcl::PointXYZ> pnts)
    {
        for (const pcl::PointXYZ& pnt : pnts)
            pCloud->push_back(pnt);
    }

    void SetUp(CProgressMorphFilter& filter) const
    {
        filter.setInputCloud(pCloud);
        if (bIndices)
            filter.setIndices(pcl::IndicesPtr(new pcl::Indices(vecIndices)));
        filter.setMaxWindowSize(nMaxWindowSize);
        filter.setSlope(fSlope);
        filter.setMaxDistance(fMaxDistance);
        filter.setInitialDistance(fInitialDistance);
        filter.setCellSize(fCellSize);
        filter.setBase(fBase);
        filter.setExponential(bExponential);
    }

    std::vector<int> Extract(IPclProgressListener* pListener = nullptr) const
    {
        CProgressMorphFilter filter;
        SetUp(filter);
        std::vector<int> vecGround;
        filter.extract(pListener, vecGround);
        return vecGround;
    }

    /// The published filter: the inherited form of `extract`.
    std::vector<int> ExtractPublished() const
    {
        CProgressMorphFilter filter;
        SetUp(filter);
        std::vector<int> vecGround;
        filter.extract(vecGround);
        return vecGround;
    }
};

inline std::ostream& operator<<(std::ostream& os, const CMorphCase& morphCase)
{
    os << std::hexfloat << "window " << morphCase.nMaxWindowSize << " slope " << morphCase.fSlope
       << " distances " << morphCase.fInitialDistance << " " << morphCase.fMaxDistance << " cell "
       << morphCase.fCellSize << " base " << morphCase.fBase
       << (morphCase.bExponential ? " exponential" : " linear") << "\npoints";
    for (const pcl::PointXYZ& pnt : *morphCase.pCloud)
        os << " {" << pnt.x << "," << pnt.y << "," << pnt.z << "}";
    os << "\nindices" << (morphCase.bIndices ? "" : " none");
    for (const int nIndex : morphCase.vecIndices)
        os << " " << nIndex;
    return os << std::defaultfloat << "\n";
}

inline void ExpectAsPublished(const CMorphCase& morphCase)
{
    EXPECT_EQ(morphCase.Extract(), morphCase.ExtractPublished()) << morphCase;
}

#endif

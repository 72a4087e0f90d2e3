// Random clouds: everywhere the result of following the rules point by point; that of the published filter
// where its octree finds all points of a window. The octree compares windows with the borders of its voxels,
// which some versions round to float inwards: then it misses points at a border. Where the borders are floats
// there is nothing to round.
#include <tests/analysis/ground/MorphCase.h>
#include <tests/analysis/ground/RefMorph.h>
#include <tests/support/CheckProp.h>

#include <limits>

namespace
{

/// How the coordinates of a random cloud are made.
struct CShape
{
    float fOrgX;
    float fOrgY;
    float fStep;   // lattice step; 0: none
    float fExtent; // coordinate units
    float fRelief;
    float fFar;      // distance of several clusters; 0: one
    bool bNotFinite; // some coordinates are infinite or not a number
};

rc::Gen<float> GenUnit()
{
    return rc::gen::map(rc::gen::inRange(0, 1 << 20), [](int n) { return static_cast<float>(n) * 0x1p-20F; });
}

CShape DrawShape()
{
    CShape shape{};
    shape.fOrgX = *rc::gen::element(0.0F, -7.5F, 500000.0F, 4.0e6F, 1.0e7F, 3.0e8F);
    shape.fOrgY = *rc::gen::element(0.0F, 0.1F, 4.0e6F, -1.0e7F, 33.0e6F);
    // Steps that divide half of some window, steps that do not, and none.
    shape.fStep = *rc::gen::element(0.0F, 0.0F, 0.25F, 0.5F, 0.75F, 1.5F, 0.1F, 0.3F, 2.5F, 16.5F);
    shape.fExtent = *rc::gen::element(1.0F, 6.0F, 20.0F, 60.0F, 400.0F, 1.0e5F);
    shape.fRelief = *rc::gen::element(0.0F, 1.0F, 3.0F, 8.0F, 60.0F);
    shape.fFar = *rc::gen::element(0.0F, 0.0F, 0.0F, 100.0F, 1.0e5F, 1.0e7F);
    shape.bNotFinite = *rc::gen::inRange(0, 8) == 0;
    return shape;
}

float DrawPlan(float fOrg, const CShape& shape)
{
    const float f = *GenUnit() * shape.fExtent;
    return fOrg + (shape.fStep > 0.0F ? std::floor(f / shape.fStep) * shape.fStep : f);
}

// Heights on and just around the thresholds, or anywhere.
float DrawHeight(const CShape& shape)
{
    if (*rc::gen::inRange(0, 3) == 0)
        return *rc::gen::element(0.0F, 0.5F, 2.5F, 3.0F, 0.49999997F, 0.50000006F, -0.5F, -3.0F);
    return *GenUnit() * shape.fRelief;
}

void SpoilSome(pcl::PointXYZ& pnt)
{
    constexpr float c_fInfinity = std::numeric_limits<float>::infinity();
    if (*rc::gen::inRange(0, 3) != 0)
        return;
    const float fBad = *rc::gen::element(std::numeric_limits<float>::quiet_NaN(), c_fInfinity, -c_fInfinity);
    float* const pCoordinates[] = {&pnt.x, &pnt.y, &pnt.z};
    *pCoordinates[*rc::gen::inRange(0, 3)] = fBad;
}

void DrawPnts(CMorphCase& morphCase, int nMaxPnts)
{
    const CShape shape = DrawShape();
    const int nNumPnts = *rc::gen::inRange(0, nMaxPnts);
    for (int i = 0; i < nNumPnts; ++i)
    {
        pcl::PointXYZ pnt(DrawPlan(shape.fOrgX, shape), DrawPlan(shape.fOrgY, shape), DrawHeight(shape));
        pnt.x += shape.fFar * static_cast<float>(*rc::gen::inRange(0, 3));
        pnt.y += shape.fFar * static_cast<float>(*rc::gen::inRange(0, 2));
        if (i > 0 && *rc::gen::inRange(0, 8) == 0) // a duplicate, or a stack
            pnt = (*morphCase.pCloud)[static_cast<std::size_t>(*rc::gen::inRange(0, i))];
        if (*rc::gen::inRange(0, 8) == 0)
            pnt.z = DrawHeight(shape);
        if (shape.bNotFinite)
            SpoilSome(pnt);
        morphCase.pCloud->push_back(pnt);
    }
}

void DrawParams(CMorphCase& morphCase)
{
    if (*rc::gen::inRange(0, 3) == 0)
        return; // those of the cloud object
    morphCase.nMaxWindowSize = *rc::gen::element(-3, 0, 1, 2, 3, 5, 18, 33, 100);
    morphCase.fSlope = *rc::gen::element(-1.0F, 0.0F, 0.1F, 0.7F, 1.0F, 5.0F);
    morphCase.fMaxDistance = *rc::gen::element(-1.0F, 0.0F, 0.3F, 2.5F, 3.0F, 10.0F, 1.0e30F);
    morphCase.fInitialDistance = *rc::gen::element(-0.5F, 0.0F, 0.15F, 0.5F, 3.0F);
    morphCase.fCellSize = *rc::gen::element(0.1F, 0.3F, 0.5F, 1.0F, 3.3F, 40.0F);
    morphCase.fBase = *rc::gen::element(1.5F, 2.0F, 3.0F, 10.0F);
    morphCase.bExponential = *rc::gen::arbitrary<bool>();
}

void DrawIndices(CMorphCase& morphCase)
{
    const int nNumPnts = static_cast<int>(morphCase.pCloud->size());
    if (nNumPnts == 0 || *rc::gen::inRange(0, 3) != 0)
        return;
    morphCase.bIndices = true;
    // Any order, any number of times, sometimes as many as there are points.
    const int nNum = *rc::gen::element(0, 1, nNumPnts / 2, nNumPnts, nNumPnts + 3);
    for (int i = 0; i < nNum; ++i)
        morphCase.vecIndices.push_back(*rc::gen::inRange(0, nNumPnts));
}

CMorphCase DrawCase(int nMaxPnts)
{
    CMorphCase morphCase;
    DrawPnts(morphCase, nMaxPnts);
    DrawParams(morphCase);
    DrawIndices(morphCase);
    return morphCase;
}

/// Coordinates and windows whose sums and halves are all floats.
CMorphCase DrawLatticeCase(int nMaxPnts)
{
    CMorphCase morphCase;
    const float fStep = *rc::gen::element(0.25F, 0.5F, 0.75F, 1.5F, 2.5F, 16.5F);
    const float fOrg = *rc::gen::element(0.0F, -7.5F, 4000.0F);
    const int nSide = *rc::gen::element(2, 8, 30, 100);
    const int nNumPnts = *rc::gen::inRange(0, nMaxPnts);
    for (int i = 0; i < nNumPnts; ++i)
        morphCase.pCloud->push_back(
            {fOrg + fStep * static_cast<float>(*rc::gen::inRange(0, nSide)),
             fOrg + fStep * static_cast<float>(*rc::gen::inRange(0, nSide)),
             *rc::gen::element(0.0F, 0.5F, 2.5F, 3.0F, 0.49999997F, 0.50000006F, -0.5F, *GenUnit() * 8.0F)});
    DrawParams(morphCase);
    morphCase.fCellSize = *rc::gen::element(0.5F, 1.0F, 3.0F);
    morphCase.fBase = *rc::gen::element(2.0F, 3.0F, 10.0F);
    DrawIndices(morphCase);
    return morphCase;
}

} // namespace

TEST(CProgressMorphFilter, ExtractSmall_AsByScan)
{
    CheckProp(10000,
              []
              {
                  const CMorphCase morphCase = DrawCase(24);
                  RC_LOG() << morphCase;
                  RC_ASSERT(morphCase.Extract() == ExtractByScan(morphCase));
              });
}

TEST(CProgressMorphFilter, ExtractMiddling_AsByScan)
{
    CheckProp(1500,
              []
              {
                  const CMorphCase morphCase = DrawCase(600);
                  RC_LOG() << morphCase;
                  RC_ASSERT(morphCase.Extract() == ExtractByScan(morphCase));
              });
}

TEST(CProgressMorphFilter, ExtractOnALattice_AsPublished)
{
    CheckProp(1500,
              []
              {
                  const CMorphCase morphCase = DrawLatticeCase(300);
                  RC_LOG() << morphCase;
                  RC_ASSERT(morphCase.Extract() == morphCase.ExtractPublished());
              });
}

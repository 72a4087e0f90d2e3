// The steps of a picture on small rasters: discs, gaps, holes, shading.
#include <host/picture/CloseHoles.h>
#include <host/picture/DrawPnts.h>
#include <host/picture/FillGaps.h>
#include <host/picture/ShadeDepth.h>

#include <gtest/gtest.h>

#include <limits>

namespace zorcld
{

namespace
{

constexpr int c_nEdge = 16;

/// Everywhere the same depth and colour.
CPntRaster MakePlane(float fDepth)
{
    CPntRaster raster(c_nEdge, c_nEdge);
    for (float& f : raster.vecDepth)
        f = fDepth;
    for (CRgbBytes& color : raster.vecColor)
        color = {100, 100, 100};
    return raster;
}

/// Points everywhere a pixel apart.
CSpacingMap MakeSpacing()
{
    constexpr int c_nTiles = c_nEdge / CSpacingMap::c_nTile;
    return {c_nTiles, c_nTiles, std::vector<float>(c_nTiles * c_nTiles, 1.0F), 1.0F};
}

} // namespace

TEST(Raster, DrawPnts_TheNearerPointIsSeen)
{
    CPntRaster raster(c_nEdge, c_nEdge);
    const std::vector<CScreenPnt> vecPnts = {{8.5F, 8.5F, 5.0F, 1, 2, 3}, {8.5F, 8.5F, 1.0F, 4, 5, 6}};
    EXPECT_GT(DrawPnts(vecPnts, 2.0F, raster).fTypical, 0.0F);
    EXPECT_EQ(raster.vecDepth[raster.GetIndex(8, 8)], 1.0F);
    EXPECT_EQ(raster.vecColor[raster.GetIndex(8, 8)].r, 4);
    EXPECT_EQ(raster.vecDepth[raster.GetIndex(0, 0)], CPntRaster::c_fEmpty);
}

TEST(Raster, DrawPnts_PlacesThatAreNoNumbersAreLeftOut)
{
    CPntRaster raster(c_nEdge, c_nEdge);
    const float fNan = std::numeric_limits<float>::quiet_NaN();
    const float fFar = std::numeric_limits<float>::infinity();
    const std::vector<CScreenPnt> vecPnts = {{fNan, 0.0F, 0.0F, 0, 0, 0}, {0.0F, -fFar, 0.0F, 0, 0, 0}};
    EXPECT_EQ(DrawPnts(vecPnts, 2.0F, raster).fTypical, 0.0F);
    for (const float f : raster.vecDepth)
        EXPECT_EQ(f, CPntRaster::c_fEmpty);
}

TEST(Raster, FillGaps_OnlyWhatShowsSomethingFarBehind)
{
    CPntRaster raster = MakePlane(1.0F);
    raster.vecDepth[raster.GetIndex(8, 8)] = 100.0F;
    raster.vecDepth[raster.GetIndex(4, 4)] = 2.0F;
    FillGaps(raster, MakeSpacing(), 1);
    EXPECT_FLOAT_EQ(raster.vecDepth[raster.GetIndex(8, 8)], 1.0F);
    EXPECT_EQ(raster.vecDepth[raster.GetIndex(4, 4)], 2.0F);
}

TEST(Raster, CloseHoles_SmallOnesOnly)
{
    CPntRaster raster = MakePlane(1.0F);
    for (int y = 0; y < c_nEdge; ++y)
        for (int x = 8; x < c_nEdge; ++x)
            raster.vecDepth[raster.GetIndex(x, y)] = CPntRaster::c_fEmpty;
    raster.vecDepth[raster.GetIndex(3, 8)] = CPntRaster::c_fEmpty;
    CloseHoles(raster, 2);
    EXPECT_FLOAT_EQ(raster.vecDepth[raster.GetIndex(3, 8)], 1.0F);
    EXPECT_EQ(raster.vecDepth[raster.GetIndex(12, 8)], CPntRaster::c_fEmpty);
}

TEST(Raster, ShadeDepth_WhatLiesBehindIsDarker)
{
    CPntRaster flat = MakePlane(1.0F);
    CPntRaster pit = flat;
    for (int y = 5; y < 12; ++y) // more than points that stick out by themselves
        for (int x = 5; x < 12; ++x)
            pit.vecDepth[pit.GetIndex(x, y)] = 60.0F;
    ShadeDepth(flat, MakeSpacing(), 1, 1.0F);
    ShadeDepth(pit, MakeSpacing(), 1, 1.0F);
    EXPECT_LT(pit.vecColor[pit.GetIndex(6, 6)].r, flat.vecColor[flat.GetIndex(8, 8)].r);
    EXPECT_EQ(pit.vecColor[pit.GetIndex(0, 0)].r, flat.vecColor[flat.GetIndex(0, 0)].r);
}

} // namespace zorcld

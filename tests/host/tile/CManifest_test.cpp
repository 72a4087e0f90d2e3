// What is written is what the strict reader reads.
#include <host/tile/CManifest.h>

#include <host/output/CFailure.h>
#include <host/tile/CJsonField.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <filesystem>

using namespace zorcld;

namespace
{

/// Of one tile with three points.
CManifest MakeManifest()
{
    CManifest manifest;
    manifest.options.dSize = 100.0;
    manifest.units = {0.0, 0.3048, true, 0.015707963267949};
    const CTileGrid grid(manifest.options.dSize, manifest.options.dBuffer, manifest.origin, 0.0);
    manifest.dMargin = grid.GetMargin();
    manifest.nNumPnts = 3;
    manifest.box = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
    const std::string sHash(32, 'a');
    manifest.vecFiles.push_back({"\xff.las", 300, sHash, 3}); // a name that is no text
    manifest.vecTiles.push_back({"tile_0_0.cld", {}, grid.GetCore({}), 3, 0, manifest.box, 99, sHash});
    return manifest;
}

std::string FindRefusal(const CManifest& manifest, const std::string& sPath)
{
    try
    {
        manifest.Write(sPath);
        return {};
    }
    catch (const CFailure& failure)
    {
        return failure.GetCause();
    }
}

} // namespace

TEST(CManifest, Write_IsReadAgain)
{
    const CZorcld folder;
    MakeManifest().Write(folder.GetPath("manifest.json"));
    const CManifest read = CManifest::Parse(ReadBytes(folder.GetPath("manifest.json")));
    EXPECT_EQ(read.units, MakeManifest().units);
    EXPECT_EQ(read.nNumPnts, 3);
    EXPECT_EQ(read.vecTiles.size(), 1U);
    EXPECT_THROW(static_cast<void>(CManifest::Parse("{}")), CFieldError);
}

TEST(CManifest, WhatNobodyCouldRead_IsNotWritten)
{
    const CZorcld folder;
    const std::string sPath = folder.Write("manifest.json", "older");
    const auto expect = [&](const CManifest& manifest, const char* pField)
    {
        const std::string sCause = FindRefusal(manifest, sPath);
        EXPECT_EQ(sCause.find(std::string("is not written, for nobody could read it: ") + pField), 0U)
            << sCause;
        EXPECT_EQ(ReadBytes(sPath), "older");
    };
    CManifest manifest = MakeManifest();
    manifest.nNumPnts = 4;
    expect(manifest, "points is not the sum");
    manifest = MakeManifest();
    manifest.units.dHeight = 1e-310;
    expect(manifest, "metres_per_height_unit is no number");
    manifest = MakeManifest();
    manifest.vecTiles.front().box.xmax = 1000.0;
    expect(manifest, "tiles[0].bounds lie beyond");
}

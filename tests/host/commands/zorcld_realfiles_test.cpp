// Every real file loads or is refused as it should, and `check` says so before.
#include <tests/host/support/CZorcld.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <set>

namespace
{

struct CRealFile
{
    const char* pName;
    int nInfo;  ///< exit status: 0 it loads, 1 it is refused
    int nCheck; ///< 0 no problems found, 3 warnings, 1 it is refused
};

constexpr CRealFile c_files[] = {
    {"las/1.2-with-color.copc.laz", 0, 3},
    {"las/4_6_crop.las", 0, 3}, // its colours were never filled
    {"las/Topography.las", 0, 0},
    {"las/ahn3_delft.laz", 0, 0},
    {"las/autzen_trim.las", 0, 0},
    {"las/autzen_trim_7.las", 0, 3},
    {"las/bad/1.2-no-points.las", 0, 3},
    {"las/bad/1.2-with-color-clipped.las", 0, 3},
    {"las/bad/bad_vlr_count.las", 0, 3}, // likewise
    {"las/bad/broken_compressor.laz", 1, 1},
    {"las/bad/broken_size.laz", 1, 1},
    {"las/bad/garbage_nVariableLength.las", 0, 3}, // 1,069,128,089 records announced
    {"las/bad/header_size_0.laz", 1, 1},
    {"las/bad/lots_of_vlr.las", 0, 0},
    {"las/bad/malformed_extrabytes.las", 0, 0},
    {"las/bad/no-points.las", 0, 3},
    {"las/epsg_4326.las", 0, 3},
    {"las/extrabytes.las", 0, 0},
    {"las/fullwave.laz", 0, 3},
    {"las/hexbin-crop.las", 0, 0},
    {"las/ign_semis_2023_0292_6833.laz", 0, 0},
    {"las/indoor.laz", 0, 3},
    {"las/laszip-1.2r0.laz", 0, 0},
    {"las/lone-star.laz", 0, 0},
    {"las/pdrf10-1.4.las", 0, 3},
    {"las/pdrf10-1.5.las", 0, 3},
    {"las/pdrf4-1.3.las", 0, 0},
    {"las/pdrf5-1.3.laz", 0, 3},
    {"las/pdrf8-1.4.las", 0, 3},
    {"las/pdrf9-1.4.laz", 0, 3},
    {"las/permutations/1.0_0.las", 0, 0},
    {"las/permutations/1.0_1.las", 0, 0},
    {"las/permutations/1.1_1.las", 0, 0},
    {"las/permutations/1.2_2.las", 0, 0},
    {"las/sample_c.las", 0, 0},
    {"las/simple1_4.las", 0, 3},
    {"las/test1_4.las", 0, 0},
    {"las/vegetation_1_3.las", 0, 0},
    {"ply/bone_meshlab_flags.ply", 0, 0},
    {"ply/colored_airplane_double.ply", 0, 3},
    {"ply/diamond_pyntcloud.ply", 0, 0},
    {"ply/diamond_with_bool.ply", 1, 1},
    {"ply/duplicated_pcloud_double.ply", 0, 3},
    {"ply/empty_blender.ply", 1, 1},
    {"ply/fuze_meshlab_texcoord.ply", 0, 0},
    {"ply/lidar_source_cc.ply", 0, 0},
    {"ply/metadata_ascii_crlf.ply", 1, 1},
    {"ply/office1_pcl_grid.ply", 0, 0},
    {"ply/platonic_big_endian.ply", 1, 1},
    {"ply/platonic_faces_first.ply", 0, 3},
    {"ply/reference_meshlab.ply", 0, 0},
    {"ply/ripple_bin.ply", 0, 0},
    {"ply/simple_binary_cc.ply", 0, 0},
    {"ply/splat_compressed.ply", 1, 1},
    {"ply/splat_train-1000.ply", 0, 0},
    {"ply/truck_meshlab.ply", 0, 3},
    {"ply/voxelgrid_crlf.ply", 0, 0},
    {"asc/4_x_3_no_nodata.asc", 1, 1},
    {"asc/avaPfa_crlf.asc", 0, 0},
    {"asc/avaWog_center.asc", 0, 3},
    {"asc/bigtujunga_west.asc", 0, 0},
    {"asc/bijou_no_nodata.asc", 1, 1},
    {"asc/gdal_nodata_nan.asc", 1, 1},
    {"asc/gdal_starting_with_nan.asc", 1, 1},
    {"asc/hugo_site_zero_corner.asc", 0, 3},
    {"asc/inclined_mixed_case.asc", 1, 1},
    {"asc/kootenai_upper_keys.asc", 0, 0},
    {"asc/nodata_value_lower.asc", 1, 1},
    {"asc/rainfall_upper_center_exponent.asc", 0, 3},
    {"asc/remeshed_nan_nodata.asc", 1, 1},
    {"asc/srtm_degrees.asc", 0, 3},
    {"asc/tidal_upper_zero_corner.asc", 0, 3},
    {"asc/west_bijou_gully_nodata0.asc", 0, 0},
};

constexpr const char* c_pNone = "no real files (ZOR4DATA_TEST_DATA says where they are), or LAS is not read";

bool HasRealFiles()
{
    return std::filesystem::exists(GetRealFile("las")) && CZorcld::HasLas();
}

} // namespace

TEST(ZorcldRealFiles, LoadOrAreRefused)
{
    if (!HasRealFiles())
        GTEST_SKIP() << c_pNone;
    const CZorcld zorcld;
    for (const CRealFile& file : c_files)
    {
        const CRun run = zorcld.Run({"info", "--json", GetRealFile(file.pName)});
        EXPECT_EQ(run.nStatus, file.nInfo) << file.pName << run.sErr;
        EXPECT_EQ(nlohmann::json::parse(run.sOut)["cause"].is_null(), file.nInfo == 0) << file.pName;
        EXPECT_TRUE(file.nInfo == 0 || run.HasOneErrLine()) << file.pName << run.sErr;
        const CRun check = zorcld.Run({"check", GetRealFile(file.pName)});
        EXPECT_EQ(check.nStatus, file.nCheck) << file.pName << check.sOut << check.sErr;
    }
}

TEST(ZorcldRealFiles, NoneIsMissingHere)
{
    if (!HasRealFiles())
        GTEST_SKIP() << c_pNone;
    std::set<std::string> setNames;
    for (const CRealFile& file : c_files)
        setNames.insert(file.pName);
    const std::filesystem::path root = GetRealFile("");
    for (const char* pFolder : {"las", "ply", "asc"})
    {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / pFolder))
        {
            const std::string sName = std::filesystem::relative(entry.path(), root).string();
            EXPECT_TRUE(entry.is_directory() || setNames.count(sName) == 1) << sName;
        }
    }
}

// What check promises: where it names convert, the converted file is without fault.
TEST(ZorcldRealFiles, ConvertCures)
{
    if (!HasRealFiles())
        GTEST_SKIP() << c_pNone;
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("out.cld");
    int nConverted = 0;
    for (const CRealFile& file : c_files)
    {
        const CRun check = file.nCheck == 0 ? CRun() : zorcld.Run({"check", GetRealFile(file.pName)});
        if (check.sOut.find("zorcld convert " + GetRealFile(file.pName)) == std::string::npos)
            continue;
        const CRun run = zorcld.Run({"convert", GetRealFile(file.pName), sOut});
        EXPECT_EQ(run.nStatus, 0) << file.pName << run.sErr;
        EXPECT_EQ(zorcld.Run({"check", sOut}).nStatus, 0) << file.pName;
        ++nConverted;
    }
    EXPECT_GT(nConverted, 15);
}

TEST(ZorcldRealFiles, Info_TellsTheHeaderOfLas)
{
    if (!HasRealFiles())
        GTEST_SKIP() << c_pNone;
    const CZorcld zorcld;
    const CRun json = zorcld.Run({"info", "--json", GetRealFile("las/ahn3_delft.laz")});
    const nlohmann::json las = nlohmann::json::parse(json.sOut)["las"];
    EXPECT_EQ(las["version"], "1.2");
    EXPECT_EQ(las["point_format"], 1);
    EXPECT_EQ(las["compressed"], true);
    EXPECT_EQ(las["points"], 640510);
    EXPECT_EQ(las["points_by_return"], nlohmann::json({468011, 99134, 44555, 20800, 8010}));
    EXPECT_EQ(las["scale"], nlohmann::json({0.001, 0.001, 0.001}));
    EXPECT_EQ(las["system_identifier"], "LAStools (c) by rapidlasso GmbH");
    EXPECT_EQ(las["generating_software"], "las2las (version 160730)");
    EXPECT_EQ(las["created"], "2014-03-04");
    const CRun text = zorcld.Run({"info", GetRealFile("las/ahn3_delft.laz")});
    for (const char* pText :
         {"LAS version         1.2, compressed (LAZ)", "Point format        1", "Points by return    468 011",
          "Offset              0 0 0", "Bounds in header", "Created             2014-03-04"})
        EXPECT_NE(text.sOut.find(pText), std::string::npos) << pText << text.sOut;
}

TEST(ZorcldRealFiles, MovedPnts_AreNotConverted)
{
    if (!HasRealFiles())
        GTEST_SKIP() << c_pNone;
    const CZorcld zorcld;
    for (const char* pName : {"las/pdrf10-1.4.las", "las/pdrf9-1.4.laz"})
    {
        const CRun info = zorcld.Run({"info", GetRealFile(pName)});
        EXPECT_NE(info.sErr.find("more than 214748 units from the first one"), std::string::npos)
            << info.sErr;
        for (const char* pOut : {"o.cld", "o.ply"})
            EXPECT_EQ(zorcld.Run({"convert", GetRealFile(pName), zorcld.GetPath(pOut)}).nStatus, 1) << pName;
    }
}

// The bytes of native files: the files of tests/data/native, explained byte by byte in
// docs/native-format.md.

#include <tests/io/CMemFile.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace
{

struct CGolden
{
    const char* sName;
    std::function<void(CPntCld&)> fill;
};

void FillTwo(CPntCld& cld)
{
    cld.Init(2);
    cld.AddPnt(1.0, 2.0, 3.0, 255, 128, 0);
    cld.AddPnt(1.5, 2.25, 3.5, 1, 2, 3);
}

/// Eleven points close together and one far from them: an inner node below the root.
void FillTwoLevels(CPntCld& cld)
{
    cld.Init(12);
    for (int i = 0; i < 11; ++i)
        cld.AddPnt(100.0 + i, 200.0, 10.0);
    cld.AddPnt(164.0, 264.0, 74.0);
}

const CGolden c_aGolden[] = {
    {"plain_two", [](CPntCld& cld) { cld.OnReadType(PntCldType_Pnt), FillTwo(cld), cld.ComputeTree(); }},
    {"color_two",
     [](CPntCld& cld)
     {
         cld.OnReadType(PntCldType_PntColor);
         FillTwo(cld);
         cld.ComputeTree();
         cld.SetVersion(0x01020304);
     }},
    {"plain_levels",
     [](CPntCld& cld) { cld.OnReadType(PntCldType_Pnt), FillTwoLevels(cld), cld.ComputeTree(); }},
    {"color_unbuilt", [](CPntCld& cld) { cld.OnReadType(PntCldType_PntColor), FillTwo(cld); }},
    {"no_type", [](CPntCld& cld) { cld.OnReadType(static_cast<enumPntCldType>(0x10007)), FillTwo(cld); }},
    {"plain_none", [](CPntCld& cld)
     { cld.OnReadType(PntCldType_Pnt), cld.Init(0), cld.ComputeTree(), cld.SetVersion(-2); }},
};

std::string GetGoldenPath(const CGolden& golden)
{
    return (GetSourceFolder() / "tests/data/native" / (golden.sName + std::string(".cld"))).string();
}

std::string GoldenBytes(const CGolden& golden)
{
    return ReadFileBytes(GetGoldenPath(golden));
}

class WriteNative_golden : public ::testing::TestWithParam<CGolden>
{
};

TEST_P(WriteNative_golden, WriteToFile_ExactBytes)
{
    CPntCld cld(nullptr);
    GetParam().fill(cld);
    const CMemFile file("what was there before, and it was longer than the prologue");
    const bool bHasType = GetParam().sName != std::string("no_type");
    EXPECT_EQ(bHasType, cld.WriteToFile(file.GetPath(), 77));
    const std::string sBytes = ReadFileBytes(file.GetPath());
    if (std::getenv("ZOR4DATA_WRITE_GOLDEN") != nullptr) // to make a new one; look at it before committing
        std::ofstream(GetGoldenPath(GetParam()), std::ios::binary) << sBytes;
    ASSERT_FALSE(GoldenBytes(GetParam()).empty());
    EXPECT_EQ(GoldenBytes(GetParam()), sBytes);
}

TEST_P(WriteNative_golden, ReadFromFile_WriteToFile_SameBytes)
{
    const std::string sBytes = GoldenBytes(GetParam());
    CPntCld cld(nullptr);
    const bool bHasType = GetParam().sName != std::string("no_type");
    EXPECT_EQ(bHasType, cld.ReadFromFile(nullptr, PntCldFile_Native, CMemFile(sBytes).GetPath()));
    const CMemFile file;
    EXPECT_EQ(bHasType, cld.WriteToFile(file.GetPath(), 0));
    // A file of no points leaves the store without a tree: what is saved then ends behind the type.
    const bool bHasPnts = sBytes.size() > 60;
    EXPECT_EQ(bHasPnts ? sBytes : sBytes.substr(0, 11), ReadFileBytes(file.GetPath()));
}

std::string NameOf(const ::testing::TestParamInfo<CGolden>& info)
{
    return info.param.sName;
}

INSTANTIATE_TEST_SUITE_P(Files, WriteNative_golden, ::testing::ValuesIn(c_aGolden), NameOf);

} // namespace

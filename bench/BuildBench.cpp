#include <bench/BenchClouds.h>
#include <bench/BenchMemory.h>
#include <bench/BenchTable.h>
#include <octree/BuildTree.h>

namespace
{

void AddBuildRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddValue({"build", "tree memory, heap", nNum, "B/point", 4.0,
                  [nNum]
                  {
                      std::vector<CTruncPnt> vecPnts = MakeCompact(nNum, false);
                      const std::int64_t nBefore = GetHeapBytes();
                      const COcTreeIndex tree = BuildTree(vecPnts.data(), static_cast<std::int32_t>(nNum));
                      return static_cast<double>(GetHeapBytes() - nBefore) / static_cast<double>(nNum);
                  }});
}

const CBenchGroup group("build", AddBuildRows);

} // namespace

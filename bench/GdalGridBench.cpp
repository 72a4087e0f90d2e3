#include <bench/AsciiGridFiles.h>
#include <bench/BenchTable.h>
#include <bench/CMmSum.h>

#include <gdal_priv.h>

#include <memory>

namespace
{

std::uint64_t ReadRaster(std::int64_t nNumCols, std::int64_t nNumRows, CCpuTimer& timer)
{
    const std::string sPath = GetGrid(nNumCols, nNumRows);
    GDALAllRegister();
    CPLErr eErr = CE_Failure;
    const auto nNumCells = static_cast<std::size_t>(nNumCols * nNumRows);
    std::unique_ptr<float[]> pValues;
    timer.Measure(
        [&]
        {
            const std::unique_ptr<GDALDataset> pSet(
                static_cast<GDALDataset*>(GDALOpen(sPath.c_str(), GA_ReadOnly)));
            if (pSet == nullptr)
                return;
            const int nX = pSet->GetRasterXSize();
            const int nY = pSet->GetRasterYSize();
            pValues.reset(new float[nNumCells]);
            eErr = pSet->GetRasterBand(1)->RasterIO(GF_Read, 0, 0, nX, nY, pValues.get(), nX, nY, GDT_Float32,
                                                    0, 0, nullptr);
        });
    CMmSum sum;
    for (std::size_t i = 0; eErr == CE_None && i < nNumCells; ++i)
        sum.Add(0.0, 0.0, static_cast<double>(pValues[i]));
    return sum.Get();
}

void AddGdalRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddRow({"grid",
                "ASCII grid, tree excluded",
                nNum,
                "GDAL AAIGrid RasterIO",
                {0.20, 0.12},
                [=](CCpuTimer& timer) { return DecodeGrid(1000, nNum / 1000, timer); },
                [=](CCpuTimer& timer) { return ReadRaster(1000, nNum / 1000, timer); }});
}

const CBenchGroup c_group("grid", AddGdalRows);

} // namespace

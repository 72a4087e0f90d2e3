#include <host/shapes/ReadShapes.h>

#include <host/output/CFailure.h>
#include <host/output/GetExtension.h>
#include <host/shapes/ParseCsvRing.h>
#include <host/shapes/ParseGeoJson.h>
#include <host/shapes/ParseWkt.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>

namespace zorcld
{

namespace
{

std::string ReadText(const std::string& sPath)
{
    if (std::filesystem::is_directory(sPath))
        throw CFailure(sPath, "is a directory");
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pFile(std::fopen(sPath.c_str(), "rb"), std::fclose);
    if (pFile == nullptr)
        throw CFailure(sPath, errno == ENOENT ? "not found" : std::strerror(errno));
    std::string sText;
    char buffer[65536];
    while (const std::size_t nRead = std::fread(buffer, 1, sizeof buffer, pFile.get()))
        sText.append(buffer, nRead);
    if (std::ferror(pFile.get()) != 0)
        throw CFailure(sPath, std::strerror(errno));
    if (sText.empty())
        throw CFailure(sPath, "is empty");
    return sText;
}

} // namespace

CShapes ReadShapes(const std::string& sPath, const std::string& sOption)
{
    const std::string sExtension = GetExtension(sPath);
    const bool bJson = sExtension == ".geojson" || sExtension == ".json";
    if (!bJson && sExtension != ".wkt" && sExtension != ".csv")
        throw CUsageError(
            fmt::format("{}: '{}' ends neither in .geojson nor in .wkt or .csv", sOption, sPath));
    const std::string sText = ReadText(sPath);
    try
    {
        return bJson ? ParseGeoJson(sText) : sExtension == ".wkt" ? ParseWkt(sText) : ParseCsvRing(sText);
    }
    catch (const std::runtime_error& error)
    {
        throw CFailure(sPath, error.what());
    }
}

} // namespace zorcld

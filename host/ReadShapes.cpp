#include <host/CFailure.h>
#include <host/GetExtension.h>
#include <host/Shapes.h>

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

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

/// The two numbers that a line begins with.
std::optional<zor::geom::PNT_2D> ParsePnt(std::string_view sLine)
{
    double values[2] = {};
    const char* pPos = sLine.data();
    const char* const pEnd = pPos + sLine.size();
    for (double& d : values)
    {
        while (pPos != pEnd && std::strchr(" \t,;", *pPos) != nullptr)
            ++pPos;
        const std::from_chars_result result = std::from_chars(pPos, pEnd, d);
        if (result.ec != std::errc() || !std::isfinite(d))
            return {};
        pPos = result.ptr;
        if (pPos != pEnd && std::strchr(" \t,;", *pPos) == nullptr)
            return {};
    }
    return zor::geom::PNT_2D(values[0], values[1]);
}

} // namespace

CShapes ParseCsvRing(std::string_view sText)
{
    TRing ring;
    int nLine = 0;
    while (!sText.empty())
    {
        const std::size_t nEnd = std::min(sText.find('\n'), sText.size());
        std::string_view sLine = sText.substr(0, nEnd);
        sText.remove_prefix(std::min(nEnd + 1, sText.size()));
        while (!sLine.empty() && std::strchr(" \t\r", sLine.back()) != nullptr)
            sLine.remove_suffix(1);
        ++nLine;
        if (sLine.empty())
            continue;
        if (const std::optional<zor::geom::PNT_2D> pnt = ParsePnt(sLine))
            ring.push_back(*pnt);
        else if (nLine > 1) // the first may be a header
            throw std::runtime_error(fmt::format("line {} does not begin with two numbers", nLine));
    }
    if (ring.size() < 3)
        throw std::runtime_error("holds fewer than three corners");
    CShapes shapes;
    shapes.vecPolygons.push_back({ring, {}});
    return shapes;
}

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

std::vector<zor::geom::TMultiPartPolygon> CShapes::GetRegions(const std::string& sPath) const
{
    std::vector<zor::geom::TMultiPartPolygon> vecRegions = vecPolygons;
    for (const TRing& line : vecLines)
        if (line.size() > 3 && line.front().x == line.back().x && line.front().y == line.back().y)
            vecRegions.push_back({line, {}});
    if (vecRegions.empty())
        throw CFailure(sPath, "holds neither a polygon nor a closed line");
    return vecRegions;
}

#include <host/shapes/ParseCsvRing.h>

#include <formats/ParseDouble.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <vector>

namespace zorcld
{

namespace
{

constexpr const char* c_sBlanks = " \t\r";

std::string_view Trim(std::string_view sText, const char* pChars)
{
    const std::size_t nStart = std::min(sText.find_first_not_of(pChars), sText.size());
    return sText.substr(nStart, sText.find_last_not_of(pChars) + 1 - nStart);
}

/// Semicolons, else commas, else blanks separate the fields of a line.
std::vector<std::string_view> SplitLine(std::string_view sLine)
{
    const bool bSemicolons = sLine.find(';') != std::string_view::npos;
    const bool bCommas = sLine.find(',') != std::string_view::npos;
    std::vector<std::string_view> vecFields;
    while (!sLine.empty())
    {
        const char* const pSeparators = bSemicolons ? ";" : bCommas ? "," : " \t";
        const std::size_t nEnd = std::min(sLine.find_first_of(pSeparators), sLine.size());
        vecFields.push_back(Trim(sLine.substr(0, nEnd), c_sBlanks));
        sLine.remove_prefix(std::min(nEnd + 1, sLine.size()));
        if (!bSemicolons && !bCommas)
            sLine = Trim(sLine, c_sBlanks); // any number of them counts as one
    }
    return vecFields;
}

std::optional<double> ParseField(const std::vector<std::string_view>& vecFields, std::size_t nField)
{
    const std::string_view sField = nField < vecFields.size() ? vecFields[nField] : std::string_view();
    bool bWhole = false;
    const double d = ParseDouble(sField, bWhole);
    return bWhole && std::isfinite(d) ? std::optional<double>(d) : std::nullopt;
}

/// The columns of a CSV file that are x and y: the first two, or those that a header names.
struct CColumns
{
    std::size_t x = 0;
    std::size_t y = 1;

    std::optional<zor::geom::PNT_2D> ParsePnt(const std::vector<std::string_view>& vecFields) const
    {
        const std::optional<double> dX = ParseField(vecFields, x);
        const std::optional<double> dY = ParseField(vecFields, y);
        if (!dX || !dY)
            return {};
        return zor::geom::PNT_2D(*dX, *dY);
    }

    /// @return false when the line does not name both.
    bool TakeHeader(const std::vector<std::string_view>& vecFields)
    {
        const auto find = [&](char cLower, std::size_t& nField)
        {
            const auto isName = [=](std::string_view sField)
            {
                const std::string_view sName = Trim(sField, "\" ");
                return sName.size() == 1 && (sName[0] | 0x20) == cLower;
            };
            nField = static_cast<std::size_t>(std::find_if(vecFields.begin(), vecFields.end(), isName) -
                                              vecFields.begin());
            return nField < vecFields.size();
        };
        return find('x', x) && find('y', y);
    }
};

} // namespace

CShapes ParseCsvRing(std::string_view sText)
{
    constexpr std::string_view c_sMark = "\xEF\xBB\xBF"; // of UTF-8
    if (sText.substr(0, c_sMark.size()) == c_sMark)
        sText.remove_prefix(c_sMark.size());
    TRing ring;
    CColumns columns;
    bool bFirst = true;
    for (int nLine = 1; !sText.empty(); ++nLine)
    {
        const std::size_t nEnd = std::min(sText.find('\n'), sText.size());
        const std::string_view sLine = Trim(sText.substr(0, nEnd), c_sBlanks);
        sText.remove_prefix(std::min(nEnd + 1, sText.size()));
        if (sLine.empty())
            continue;
        const std::vector<std::string_view> vecFields = SplitLine(sLine);
        if (const std::optional<zor::geom::PNT_2D> pnt = columns.ParsePnt(vecFields))
            ring.push_back(*pnt);
        else if (!bFirst)
            throw std::runtime_error(fmt::format("line {} has no two numbers for x and y", nLine));
        else if (!columns.TakeHeader(vecFields))
            throw std::runtime_error(fmt::format(
                "line {} has neither two numbers (with decimal points) nor the names of columns x and y",
                nLine));
        bFirst = false;
    }
    ExpectCorners(ring);
    CShapes shapes;
    shapes.vecPolygons.push_back({ring, {}});
    return shapes;
}

} // namespace zorcld

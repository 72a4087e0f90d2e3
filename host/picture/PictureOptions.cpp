#include <host/picture/PictureOptions.h>

#include <formats/CCoordSystem.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/HasColors.h>
#include <host/output/UnitSymbol.h>
#include <host/picture/CViewColors.h>
#include <host/query/ParseNumbers.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <vector>

namespace zorcld
{

void AddPictureOptions(CLI::App& command, CPictureOptions& options, bool bAttributes)
{
    std::vector<std::string> vecColors = {"auto", "file", "height"};
    if (bAttributes)
        vecColors.insert(vecColors.end(), {"class", "intensity", "return"});
    command.add_option("--size", options.sSize, "Size of the picture, pixels")
        ->capture_default_str()
        ->type_name("WxH");
    command
        .add_option("--color", options.sColor,
                    bAttributes
                        ? "Colours of the file, by height, or (auto) of the file where it has any but "
                          "black; of "
                          "LAS and LAZ also by class, intensity or return"
                        : "Colours of the file, by height, or (auto) of the file where it has any but black")
        ->check(CLI::IsMember(vecColors))
        ->capture_default_str();
    command.add_option(
        "--unit", options.sUnit,
        "Name of the coordinate unit for scales and legend, as m; by default what a LAS file states");
}

void ParseSize(const std::string& sSize, int& nWidth, int& nHeight)
{
    const std::vector<double> size = ParseNumbers(sSize, 'x', 2, "--size");
    constexpr double c_dMin = 200.0; // titles, scales and legends need their room
    constexpr double c_dMax = 16384.0;
    for (const double d : size)
        if (d < c_dMin || d > c_dMax || d != static_cast<double>(static_cast<int>(d)))
            throw CUsageError(
                fmt::format("--size: '{}' is not two whole numbers from {} to {}", sSize, c_dMin, c_dMax));
    nWidth = static_cast<int>(size[0]);
    nHeight = static_cast<int>(size[1]);
}

enumLasAttribute FindAttribute(const CPictureOptions& options)
{
    if (options.sColor == "class")
        return LasAttribute_Class;
    if (options.sColor == "intensity")
        return LasAttribute_Intensity;
    return options.sColor == "return" ? LasAttribute_Return : LasAttribute_None;
}

/// Heights of which a file does not say their unit have that of x and y; unless those are angles.
CPictureUnits ChooseUnits(const CPictureOptions& options, const CCoordSystem& coords)
{
    CPictureUnits units;
    if (coords.plan.dSize > 0.0)
        units.bDegrees = IsDegree(coords.plan);
    units.sPlan = options.sUnit.empty() ? GetUnitSymbol(coords.plan) : options.sUnit;
    const CCoordUnit& height = coords.height.IsStated() || coords.plan.bAngle ? coords.height : coords.plan;
    units.sHeight = options.sUnit.empty() ? GetUnitSymbol(height) : options.sUnit;
    return units;
}

namespace
{

/// As people write them: letter case and the plural do not matter.
bool IsCalled(const CCoordUnit& unit, std::string sName)
{
    const auto toLower = [](std::string s)
    {
        std::transform(s.begin(), s.end(), s.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return s;
    };
    sName = toLower(sName);
    const std::string sSymbol = GetUnitSymbol(unit);
    std::vector<std::string> vecNames = {sSymbol, toLower(unit.sName), toLower(unit.sName) + "s"};
    if (sSymbol == "m")
        vecNames.insert(vecNames.end(), {"metre", "metres", "meter", "meters"});
    else if (sSymbol == "ft")
        vecNames.insert(vecNames.end(), {"foot", "feet", "us-ft", "ftus", "us survey feet"});
    return std::find(vecNames.begin(), vecNames.end(), sName) != vecNames.end();
}

} // namespace

void NoteOtherUnit(const CPictureOptions& options, const CCoordSystem& coords, const std::string& sPath,
                   const CConsole& console)
{
    if (options.sUnit.empty())
        return;
    std::string sStated;
    // Degrees are drawn in metres, whatever the unit is called.
    if (coords.plan.IsStated() && !IsDegree(coords.plan) && !IsCalled(coords.plan, options.sUnit))
        sStated = GetUnitSymbol(coords.plan) + " for x and y";
    if (coords.height.IsStated() && !IsCalled(coords.height, options.sUnit))
        sStated += (sStated.empty() ? "" : ", ") + GetUnitSymbol(coords.height) + " for heights";
    if (!sStated.empty())
        console.Note(
            fmt::format("{}: states {}; {} is written instead (--unit), the numbers stay as they are", sPath,
                        sStated, options.sUnit));
}

void ChooseColors(const CPictureOptions& options, const std::string& sPath, const CPntCld& cloud,
                  CViewColors& colors)
{
    colors.SetAttribute(FindAttribute(options));
    if (options.sColor == "file" && !cloud.IsWithColor())
        throw CFailure(sPath, "holds no colours (--color file asks for them)");
    colors.SetByHeight(options.sColor == "height" || (options.sColor == "auto" && !HasColors(cloud)));
}

} // namespace zorcld

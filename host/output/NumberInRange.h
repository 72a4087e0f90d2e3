#ifndef HOST_OUTPUT_NUMBERINRANGE_H
#define HOST_OUTPUT_NUMBERINRANGE_H

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdlib>
#include <string>

namespace zorcld
{

/// For an option with a number: unlike `CLI::Range` it does not take "nan".
inline CLI::Validator NumberInRange(double dMin, double dMax)
{
    const std::string sRange = fmt::format("[{:g} - {:g}]", dMin, dMax);
    const auto check = [=](const std::string& sText)
    {
        char* pEnd = nullptr;
        const double d = std::strtod(sText.c_str(), &pEnd);
        const bool bNumber = !sText.empty() && *pEnd == '\0';
        return bNumber && d >= dMin && d <= dMax ? std::string()
                                                 : fmt::format("Value {} not in range {}", sText, sRange);
    };
    return {check, "FLOAT in " + sRange, "RANGE"};
}

} // namespace zorcld

#endif

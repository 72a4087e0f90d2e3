#include <host/query/ParseUnitScale.h>

#include <host/output/CFailure.h>
#include <host/query/ParseNumbers.h>

#include <fmt/format.h>

#include <vector>

namespace zorcld
{

CGroundScale ParseUnitScale(const std::string& sScale)
{
    const bool bTwo = sScale.find(',') != std::string::npos;
    const std::vector<double> vecMetres = ParseNumbers(sScale, ',', bTwo ? 2 : 1, "--unit-scale");
    for (const double d : vecMetres)
        if (!(d >= 1e-6 && d <= 1e6))
            throw CUsageError(fmt::format("--unit-scale: {:g} is not between 1e-06 and 1e+06", d));
    return {vecMetres.front(), vecMetres.back()};
}

} // namespace zorcld

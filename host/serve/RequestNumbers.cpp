#include <host/serve/RequestNumbers.h>

#include <host/query/ParseNumbers.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>

#include <cmath>

namespace zorcld
{

double GetNumber(const CRequest& request, const std::string& sName)
{
    const std::string* const pText = request.FindParam(sName);
    if (pText == nullptr)
        throw CRefusal(400, sName + " is missing");
    return ParseNumbers(*pText, ',', 1, sName).front();
}

double GetNumberOr(const CRequest& request, const std::string& sName, double dOther)
{
    return request.FindParam(sName) == nullptr ? dOther : GetNumber(request, sName);
}

double GetPlanNumber(const CRequest& request, const std::string& sName)
{
    const double d = GetNumber(request, sName);
    CheckPlanNumber(d, sName);
    return d;
}

void CheckPlanNumber(double d, const std::string& sName)
{
    constexpr double c_dReach = 1e12;
    if (!(std::fabs(d) <= c_dReach))
        throw CRefusal(400, sName + ": it is beyond 1e12");
}

bool IsCancel(const CRequest& request)
{
    const std::string* const pCancel = request.FindParam("cancel");
    if (pCancel != nullptr && *pCancel != "0" && *pCancel != "1")
        throw CRefusal(400, "cancel: it is neither 0 nor 1");
    return pCancel != nullptr && *pCancel == "1";
}

} // namespace zorcld

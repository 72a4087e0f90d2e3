#ifndef HOST_SERVE_REQUESTNUMBERS_H
#define HOST_SERVE_REQUESTNUMBERS_H

#include <string>

namespace zorcld
{

struct CRequest;

/// A number that a request must give.
/// @throws CRefusal where it is missing, CUsageError where it is none.
double GetNumber(const CRequest& request, const std::string& sName);

/// The same for one that may be left out.
double GetNumberOr(const CRequest& request, const std::string& sName, double dOther);

/// A coordinate or a width of a plan, which must not be so far out that queries lose their exactness or their
/// speed to it.
/// @throws CRefusal where it is missing or beyond 1e12, CUsageError where it is none.
double GetPlanNumber(const CRequest& request, const std::string& sName);

/// The same for one that has been read.
/// @throws CRefusal
void CheckPlanNumber(double d, const std::string& sName);

/// Does the request ask for a job to be stopped?
/// @throws CRefusal where `cancel` is neither 0 nor 1.
bool IsCancel(const CRequest& request);

} // namespace zorcld

#endif

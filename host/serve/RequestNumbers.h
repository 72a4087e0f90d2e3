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

} // namespace zorcld

#endif

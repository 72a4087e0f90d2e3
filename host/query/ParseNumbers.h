#ifndef HOST_QUERY_PARSENUMBERS_H
#define HOST_QUERY_PARSENUMBERS_H

#include <string>
#include <string_view>
#include <vector>

namespace zorcld
{

/// Numbers separated by `cSeparator`, nothing else between or around them; all of them finite.
///
/// @param sOption  the option that they were given to, for the message.
/// @throws CUsageError when they are not exactly `nCount` numbers.
std::vector<double> ParseNumbers(std::string_view sText, char cSeparator, std::size_t nCount,
                                 const std::string& sOption);

} // namespace zorcld

#endif

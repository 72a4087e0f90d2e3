#ifndef HOST_OUTPUT_PRINTLINE_H
#define HOST_OUTPUT_PRINTLINE_H

#include <fmt/format.h>

#include <string>

namespace zorcld
{

/// One line of a table on standard output: a label of up to 20 characters, which may be empty, and its value.
inline void PrintLine(const char* pLabel, const std::string& sValue)
{
    fmt::print("{:<20}{}\n", pLabel, sValue);
}

} // namespace zorcld

#endif

#ifndef HOST_OUTPUT_PRINTLINE_H
#define HOST_OUTPUT_PRINTLINE_H

#include <host/output/PrintMessage.h>

#include <fmt/format.h>

#include <string>

namespace zorcld
{

/// One line of a table on standard output: a label of up to 20 characters, which may be empty, and its value.
inline void PrintLine(const char* pLabel, const std::string& sValue)
{
    PrintMessage(stdout, fmt::format("{:<20}{}", pLabel, sValue));
}

} // namespace zorcld

#endif

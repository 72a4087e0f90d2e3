#ifndef HOST_OUTPUT_PRINTMESSAGE_H
#define HOST_OUTPUT_PRINTMESSAGE_H

#include <formats/MakePrintable.h>

#include <fmt/format.h>

#include <cstdio>
#include <string>

namespace zorcld
{

/// One line for people, whatever stands in it: names of files may hold line breaks, and what terminals obey.
inline void PrintMessage(std::FILE* pFile, const std::string& sText)
{
    fmt::print(pFile, "{}\n", ReplaceControls(sText));
}

} // namespace zorcld

#endif

#ifndef HOST_FILES_CONVERTCOMMAND_H
#define HOST_FILES_CONVERTCOMMAND_H

#include <string>

namespace zorcld
{

class CConsole;
class CInputFile;
struct CInputOptions;

/// @return the command that converts a file into one beside it that does not exist yet, as it can be given to
///         a shell; empty for a name that no line of a shell holds.
std::string FormatConvertCommand(const CInputOptions& input);

/// @return the command that checks all files of a folder; empty: it has none, or none that the shell's `*`
/// names.
std::string FormatCheckCommand(const CInputOptions& folder);

/// Would `zorcld convert` take most of the points? Reads the file from front to back.
bool CanConvert(CInputFile& file, const CConsole& console);

/// @return that command where it would not fail, else nothing: nobody is sent to a command that fails.
std::string FindConvertCommand(CInputFile& file, const CConsole& console);

} // namespace zorcld

#endif

#ifndef HOST_FILES_INPUTOPTIONS_H
#define HOST_FILES_INPUTOPTIONS_H

#include <string>

namespace CLI
{
class App;
}

namespace zorcld
{

/// The file that a command reads, as the command line gives it.
struct CInputOptions
{
    std::string sPath;
    std::string sType; ///< empty: found out
};

/// Adds --type.
void AddTypeOption(CLI::App& command, std::string& sType);

/// Adds FILE and --type.
void AddInputOptions(CLI::App& command, CInputOptions& input);

} // namespace zorcld

#endif

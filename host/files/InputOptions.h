#ifndef HOST_FILES_INPUTOPTIONS_H
#define HOST_FILES_INPUTOPTIONS_H

#include <host/files/CInputOptions.h>

#include <string>

namespace CLI
{
class App;
}

namespace zorcld
{

/// Adds --type.
void AddTypeOption(CLI::App& command, std::string& sType);

/// Adds FILE and --type.
void AddInputOptions(CLI::App& command, CInputOptions& input);

} // namespace zorcld

#endif

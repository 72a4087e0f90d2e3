#ifndef HOST_FILES_ADDINPUTOPTIONS_H
#define HOST_FILES_ADDINPUTOPTIONS_H

#include <host/files/CInputOptions.h>

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

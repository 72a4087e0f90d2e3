#ifndef HOST_COMMANDS_ADDOUTOPTION_H
#define HOST_COMMANDS_ADDOUTOPTION_H

#include <CLI/CLI.hpp>

#include <string>

namespace zorcld
{

/// Adds -o, which must be given.
/// @param sType  what the help calls the file.
inline void AddOutOption(CLI::App& command, std::string& sPath, const std::string& sHelp,
                         const std::string& sType = "OUT")
{
    command.add_option("-o,--output", sPath, sHelp)->required()->type_name(sType);
}

/// Adds --force, for RefuseSameFile.
inline void AddForceFlag(CLI::App& command, bool& bForce)
{
    command.add_flag("--force", bForce, "Let OUT replace the file that is read");
}

} // namespace zorcld

#endif

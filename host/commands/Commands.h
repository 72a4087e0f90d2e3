#ifndef HOST_COMMANDS_COMMANDS_H
#define HOST_COMMANDS_COMMANDS_H

namespace CLI
{
class App;
}

namespace zorcld
{

class CConsole;

// Each adds one command with its options and what it does; AddInfoCommand stands in CmdInfo.cpp, and so on,
// since a header for each would hold one line. A new command is a file of its own, a line here and a line in
// the table of RunProgram.cpp.

void AddInfoCommand(CLI::App& app, const CConsole& console);
void AddViewCommand(CLI::App& app, const CConsole& console);
void AddServeCommand(CLI::App& app, const CConsole& console);
void AddTileCommand(CLI::App& app, const CConsole& console);
void AddPointsCommand(CLI::App& app, const CConsole& console);
void AddCountCommand(CLI::App& app, const CConsole& console);
void AddOutlineCommand(CLI::App& app, const CConsole& console);
void AddProfileCommand(CLI::App& app, const CConsole& console);
void AddGroundCommand(CLI::App& app, const CConsole& console);
void AddCheckCommand(CLI::App& app, const CConsole& console);
void AddConvertCommand(CLI::App& app, const CConsole& console);
void AddMakeSampleCommand(CLI::App& app, const CConsole& console);

} // namespace zorcld

#endif

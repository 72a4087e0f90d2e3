#include <host/commands/RunProgram.h>

#include <host/commands/Commands.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/PrintMessage.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <array>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <string>

namespace zorcld
{

namespace
{

constexpr int c_nFailed = 1;
constexpr int c_nWrongUsage = 2;

constexpr std::array c_commands = {AddInfoCommand,    AddViewCommand,   AddServeCommand,
                                   AddPointsCommand,  AddCountCommand,  AddOutlineCommand,
                                   AddProfileCommand, AddGroundCommand, AddCheckCommand,
                                   AddConvertCommand, AddTileCommand,   AddMakeSampleCommand};

/// @return `nStatus`.
int Report(const std::string& sMessage, int nStatus)
{
    PrintMessage(stderr, "zorcld: " + sMessage);
    return nStatus;
}

void AddCommands(CLI::App& app, CConsole& console)
{
    app.set_version_flag("--version", "zorcld " ZORCLD_VERSION);
    app.require_subcommand(1);
    app.footer("Exit status: 0 done, 1 a file could not be read or written, 2 wrong usage;\n"
               "check also ends with 3 when there are warnings.\n"
               "'zorcld COMMAND --help' tells the options of a command.");
    for (const auto& pAddCommand : c_commands)
        pAddCommand(app, console);
    for (CLI::App* pCommand : app.get_subcommands(nullptr))
        pCommand->add_flag_callback(
            "-q,--quiet", [&console] { console.SetQuiet(); },
            "Show no progress bar and no notes, failures only");
}

bool IsCommand(const CLI::App& app, const std::string& sName)
{
    return !app.get_subcommands([&](const CLI::App* p) { return p->check_name(sName); }).empty();
}

} // namespace

int RunCommand(int nNumArgs, const char* const* pArgs)
{
    CConsole console;
    CLI::App app("Reads clouds of measured points, tells what is in them and shows them.", "zorcld");
    AddCommands(app, console);
    if (nNumArgs > 1 && pArgs[1][0] != '-' && !IsCommand(app, pArgs[1]))
        return Report(fmt::format("unknown command '{}' (zorcld --help tells the commands)", pArgs[1]),
                      c_nWrongUsage);

    try
    {
        app.parse(nNumArgs, pArgs);
    }
    catch (const CLI::RuntimeError& error) // a command is done and has a status of its own
    {
        return error.get_exit_code();
    }
    catch (const CLI::ParseError& error)
    {
        if (error.get_exit_code() == 0) // help or version was asked for
            return app.exit(error);
        return Report(std::string(error.what()) + " (zorcld --help tells the usage)", c_nWrongUsage);
    }
    return 0;
}

int RunProgram(int nNumArgs, const char* const* pArgs)
{
    static_cast<void>(std::signal(
        SIGXFSZ, SIG_IGN)); // a file beyond its allowed size is an error of writing like any other
    try
    {
        const int nStatus = RunCommand(nNumArgs, pArgs);
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
            return Report("standard output: could not be written", c_nFailed);
        return nStatus;
    }
    catch (const CFailure& failure)
    {
        return Report(failure.what(), c_nFailed);
    }
    catch (const CUsageError& error)
    {
        return Report(error.what(), c_nWrongUsage);
    }
    catch (const std::bad_alloc&)
    {
        return Report("not enough memory", c_nFailed);
    }
    catch (const std::exception& error)
    {
        return Report(error.what(), c_nFailed);
    }
}

} // namespace zorcld

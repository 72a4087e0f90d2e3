#include <host/serve/OpenBrowser.h>

#include <host/output/CConsole.h>

#include <fmt/format.h>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace zorcld
{

namespace
{

#ifdef __APPLE__
constexpr const char* c_pOpener = "open";
#else
constexpr const char* c_pOpener = "xdg-open";
#endif

} // namespace

void OpenBrowser(const std::string& sUrl, const CConsole& console)
{
    std::string sName = c_pOpener;
    std::string sArg = sUrl;
    std::array<char*, 3> args = {sName.data(), sArg.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // What the browser says is not the program's result.
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t nChild = 0;
    const int nError = posix_spawnp(&nChild, c_pOpener, &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (nError != 0)
        console.Note(fmt::format("--open: there is no {} here, open the address yourself", c_pOpener));
}

} // namespace zorcld

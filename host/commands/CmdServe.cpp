#include <host/commands/Commands.h>

#include <host/files/AddInputOptions.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/serve/RunServer.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace zorcld
{

#if !ZORCLD_HAS_SERVE
bool RunServer(const CServeOptions&, const CConsole&)
{
    throw CFailure("serve", "this zorcld was built without it (docs/serve.md tells what the build needs)");
}
#endif

void AddServeCommand(CLI::App& app, const CConsole& console)
{
    const auto pOptions = std::make_shared<CServeOptions>();
    CLI::App* const pCommand = app.add_subcommand("serve", "Shows a cloud in the browser, live");
    AddInputOptions(*pCommand, pOptions->input);
    pCommand->add_option("--port", pOptions->nPort, "Port to listen on; 0: a free one")
        ->check(CLI::Range(0, 65535))
        ->type_name("N");
    pCommand
        ->add_option("--budget", pOptions->nBudget,
                     "Points to be shown at once at most; by default the page's own choice")
        ->check(CLI::Range(std::int64_t{1000}, std::int64_t{10000000}))
        ->type_name("POINTS");
    pCommand->add_flag("--open", pOptions->bOpen, "Open the page in the browser");
    pCommand
        ->add_option(
            "--listen", pOptions->sAddress,
            "Address of this machine to listen on; with any but the default other machines may see the cloud")
        ->capture_default_str()
        ->type_name("ADDRESS");
    pCommand->footer("The address to open is printed on standard output. Ctrl-C ends it.");
    pCommand->callback(
        [pOptions, &console]
        {
            if (!RunServer(*pOptions, console))
                throw CLI::RuntimeError(1); // the failure has been told when it came
        });
}

} // namespace zorcld

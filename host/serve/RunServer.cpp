#include <host/serve/RunServer.h>

#include <host/files/LoadCloud.h>
#include <host/files/OpenInputFile.h>
#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/PrintMessage.h>
#include <host/serve/Answer.h>
#include <host/serve/CGate.h>
#include <host/serve/CHttpServer.h>
#include <host/serve/CServed.h>
#include <host/serve/CollectFacts.h>
#include <host/serve/OpenBrowser.h>

#include <fmt/format.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <random>
#include <thread>

namespace zorcld
{

namespace
{

/// Thrown out of the progress of a load that nobody waits for any more.
struct CStopped
{
};

/// Loads the file beside the server, on a thread of its own.
class CLoader
{
public:
    CLoader(CInputFile& file, CServed& served, const CConsole& console)
        : m_file(file), m_served(served), m_console(console), m_cloud(&m_colors)
    {
        m_console.SetWatcher(
            [this](const std::string& sDoing, int nPercent)
            {
                if (m_bStop)
                    throw CStopped();
                m_served.SetProgress(sDoing, nPercent);
            });
        m_thread = std::thread([this] { Load(); });
    }

    /// Stops what is still going on.
    ~CLoader()
    {
        m_bStop = true;
        m_thread.join();
    }

    CLoader(const CLoader&) = delete;
    CLoader& operator=(const CLoader&) = delete;

private:
    void Load()
    {
        try
        {
            const CLoadFacts facts = LoadOrAdvise(m_cloud, m_file, m_console);
            m_served.SetReady(m_cloud, {CollectFacts(m_cloud, m_file, facts), facts.coords});
        }
        catch (const CStopped&)
        {
        }
        catch (const CFailure& failure)
        {
            m_served.SetFailed(failure.GetCause());
            PrintMessage(stderr, fmt::format("zorcld: {}", failure.what()));
        }
        catch (const std::exception&)
        {
            m_served.SetFailed("not enough memory");
            PrintMessage(stderr, fmt::format("zorcld: {}: not enough memory", m_file.GetPath()));
        }
    }

    CInputFile& m_file;
    CServed& m_served;
    CConsole m_console; // with a watcher of its own
    CFileColors m_colors;
    CPntCld m_cloud;
    std::atomic<bool> m_bStop{false};
    std::thread m_thread;
};

/// A number that no other run is likely to begin with: browsers keep tiles, by their paths, for ever.
std::int64_t MakeFirstVersion()
{
    return static_cast<std::int64_t>(std::random_device{}() % 1000000000U) + 1;
}

std::string FormatUrl(const CServeOptions& options, int nPort, const std::string& sToken)
{
    const bool bAny = options.sAddress == "0.0.0.0" || options.sAddress == "::";
    const std::string sHost = bAny ? "127.0.0.1" : options.sAddress;
    return fmt::format("http://{}:{}/?token={}",
                       sHost.find(':') == std::string::npos ? sHost : "[" + sHost + "]", nPort, sToken);
}

void WarnOfOthers(const std::string& sAddress, const CConsole& console)
{
    if (sAddress.compare(0, 4, "127.") != 0 && sAddress != "::1")
        console.Note(
            fmt::format("{}: other machines may reach the cloud, and the token goes over the network as "
                        "it is: whoever reads it sees the cloud",
                        sAddress));
}

/// Ends the program if what is still going on, the building of an octree for instance, does not notice soon
/// that it is to stop. No file is being written.
void EndSoon(int nStatus)
{
    std::thread(
        [nStatus]
        {
            std::this_thread::sleep_for(std::chrono::seconds(2));
            std::_Exit(nStatus);
        })
        .detach();
}

} // namespace

bool RunServer(const CServeOptions& options, const CConsole& console)
{
    const std::unique_ptr<CInputFile> pFile = OpenInputFile(options.input);
    CServed served(options.input, MakeFirstVersion(), options.nBudget);
    std::unique_ptr<CGate> pGate;
    CHttpOptions http;
    http.sAddress = options.sAddress;
    http.nPort = options.nPort;
    CHttpServer server(http, {[&](const CRequest& request) { return Answer(request, *pGate, served); },
                              [](const CRequest& request) { return IsSlow(request); }});
    pGate = std::make_unique<CGate>(options.sAddress, server.GetPort(), MakeToken());
    WarnOfOthers(options.sAddress, console);
    const std::string sUrl = FormatUrl(options, server.GetPort(), pGate->GetToken());
    server.Start();
    fmt::print("{}\n", sUrl);
    static_cast<void>(std::fflush(stdout));
    const CLoader loader(*pFile, served, console);
    if (options.bOpen)
        OpenBrowser(sUrl, console);
    server.Wait();
    served.GetJobs().StopAll();
    const bool bLoaded = served.GetProgress().eState != CServed::enumState::Failed;
    EndSoon(bLoaded ? 0 : 1);
    return bLoaded;
}

} // namespace zorcld

#include <host/serve/CHttpServer.h>

#include <host/output/CFailure.h>
#include <host/serve/CSession.h>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>
#include <vector>

namespace zorcld
{

namespace
{

namespace asio = boost::asio;
using TError = boost::system::error_code;

/// A few, whatever the machine: while one makes a large tile the others answer.
int CalcNumThreads()
{
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 4U, 8U));
}

constexpr int c_nNumSlowThreads = 2;

} // namespace

class CHttpServer::CImpl
{
public:
    CImpl(const CHttpOptions& options, CCallbacks callbacks)
        : m_share{options, std::move(callbacks), m_slowLane}, m_acceptor(m_context), m_retry(m_context),
          m_signals(m_context), m_slowLane(c_nNumSlowThreads)
    {
        Listen(options);
    }

    ~CImpl()
    {
        Stop();
        m_context.stop();
        m_slowLane.stop();
        for (std::thread& thread : m_vecThreads)
            thread.join();
        m_slowLane.join();
    }

    int GetPort() const { return m_nPort; }

    void Start()
    {
        for (const int nSignal : {SIGINT, SIGTERM, SIGHUP})
            m_signals.add(nSignal);
        m_signals.async_wait(
            [this](TError error, int)
            {
                if (!error)
                    Stop();
            });
        Accept();
        for (int i = 0; i < CalcNumThreads(); ++i)
            m_vecThreads.emplace_back([this] { RunThread(); });
    }

    void Wait()
    {
        std::unique_lock lock(m_mutex);
        m_stopped.wait(lock, [this] { return m_bStopped; });
    }

    void Stop()
    {
        const std::lock_guard lock(m_mutex);
        m_bStopped = true;
        m_stopped.notify_all();
    }

private:
    void Listen(const CHttpOptions& options)
    {
        TError error;
        const auto check = [&]
        {
            if (error)
                throw CFailure(fmt::format("{}:{}", options.sAddress, options.nPort), error.message());
        };
        const auto address = asio::ip::make_address(options.sAddress, error);
        if (error)
            throw CUsageError(fmt::format("--listen: '{}' is no address", options.sAddress));
        const asio::ip::tcp::endpoint endpoint(address, static_cast<unsigned short>(options.nPort));
        m_acceptor.open(endpoint.protocol(), error);
        check();
        m_acceptor.set_option(asio::socket_base::reuse_address(true), error);
        m_acceptor.bind(endpoint, error);
        check();
        m_acceptor.listen(asio::socket_base::max_listen_connections, error);
        check();
        m_nPort = m_acceptor.local_endpoint(error).port();
        check();
    }

    void Accept()
    {
        m_acceptor.async_accept(asio::make_strand(m_context),
                                [this](TError error, asio::ip::tcp::socket socket)
                                {
                                    if (error || !TryRun(std::move(socket)))
                                        AcceptLater();
                                    else
                                        Accept();
                                });
    }

    /// Where the system or the memory has no room for a connection, it may have soon.
    void AcceptLater()
    {
        m_retry.expires_after(std::chrono::milliseconds(100));
        m_retry.async_wait(
            [this](TError error)
            {
                if (!error)
                    Accept();
            });
    }

    bool TryRun(asio::ip::tcp::socket&& socket)
    {
        try
        {
            std::make_shared<CSession>(std::move(socket), m_share)->Run();
            return true;
        }
        catch (const std::exception&)
        {
            return false;
        }
    }

    /// Where memory runs out the connection goes, the server stays.
    void RunThread()
    {
        while (!m_context.stopped())
        {
            try
            {
                m_context.run();
            }
            catch (const std::exception&)
            {
            }
        }
    }

    // In this order: connections lie in the two queues until these go.
    CSessionShare m_share;
    asio::io_context m_context;
    asio::ip::tcp::acceptor m_acceptor;
    asio::steady_timer m_retry;
    asio::signal_set m_signals;
    asio::thread_pool m_slowLane;
    int m_nPort = 0;
    std::vector<std::thread> m_vecThreads;
    std::mutex m_mutex; // for what follows
    std::condition_variable m_stopped;
    bool m_bStopped = false;
};

CHttpServer::CHttpServer(const CHttpOptions& options, CCallbacks callbacks)
    : m_pImpl(std::make_unique<CImpl>(options, std::move(callbacks)))
{
}

CHttpServer::~CHttpServer() = default;

int CHttpServer::GetPort() const
{
    return m_pImpl->GetPort();
}

void CHttpServer::Start()
{
    m_pImpl->Start();
}

void CHttpServer::Wait()
{
    m_pImpl->Wait();
}

void CHttpServer::Stop()
{
    m_pImpl->Stop();
}

} // namespace zorcld

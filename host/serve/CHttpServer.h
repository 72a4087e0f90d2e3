#ifndef HOST_SERVE_CHTTPSERVER_H
#define HOST_SERVE_CHTTPSERVER_H

#include <host/serve/CReply.h>
#include <host/serve/CRequest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace zorcld
{

/// Where a server listens, and what it allows its clients.
struct CHttpOptions
{
    std::string sAddress = "127.0.0.1"; ///< an IP address
    int nPort = 0;                      ///< 0: a free one
    int nMaxClients = 64;
    std::chrono::milliseconds timeRequest{30000}; ///< for the next request to arrive, whole
    std::chrono::milliseconds timePiece{30000};   ///< for a piece of a reply to leave
};

/// Speaks HTTP/1.1 with its clients, on threads of its own, and knows nothing of what it serves. A request
/// without a body is one of at most 8 KiB; each connection has one under way at a time.
class CHttpServer
{
public:
    struct CCallbacks
    {
        /// Called on any of the server's threads, several at once; throws std::bad_alloc only.
        std::function<CReply(const CRequest&)> answer;

        /// Is the answer to wait its turn among the slow ones, so that quick ones need not?
        std::function<bool(const CRequest&)> isSlow;
    };

    /// Listens; nobody is answered yet.
    /// @throws CFailure when the address or the port cannot be had.
    CHttpServer(const CHttpOptions& options, CCallbacks callbacks);

    /// Ends its threads; answers under way are waited for.
    ~CHttpServer();
    CHttpServer(const CHttpServer&) = delete;
    CHttpServer& operator=(const CHttpServer&) = delete;

    int GetPort() const;

    /// Begins to answer.
    void Start();

    /// Waits until somebody interrupts the program (SIGINT, SIGTERM, SIGHUP), or `Stop` is called. From
    /// `Start` on these signals do nothing else.
    void Wait();

    void Stop();

private:
    class CImpl;
    std::unique_ptr<CImpl> m_pImpl;
};

} // namespace zorcld

#endif

#ifndef HOST_SERVE_CHTTPSERVER_H
#define HOST_SERVE_CHTTPSERVER_H

#include <host/serve/CHttpOptions.h>

#include <memory>

namespace zorcld
{

/// Speaks HTTP/1.1 with its clients, on threads of its own, and knows nothing of what it serves. A request
/// without a body is one of at most 8 KiB; each connection has one under way at a time.
class CHttpServer
{
public:
    using CCallbacks = CHttpCallbacks;

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

#ifndef HOST_SERVE_CHTTPOPTIONS_H
#define HOST_SERVE_CHTTPOPTIONS_H

#include <host/serve/CReply.h>
#include <host/serve/CRequest.h>

#include <chrono>
#include <functional>
#include <string>

namespace zorcld
{

/// Where a server listens, and what it allows its clients.
struct CHttpOptions
{
    std::string sAddress = "127.0.0.1"; ///< an IP address
    int nPort = 0;                      ///< 0: a free one
    int nMaxClients = 64;
    std::chrono::milliseconds timeFirst{5000};    ///< for the first request of a connection to arrive, whole
    std::chrono::milliseconds timeRequest{30000}; ///< for each further one
    std::chrono::milliseconds timePiece{30000};   ///< for a piece of a reply to leave
    std::chrono::milliseconds timeToGo{2000};     ///< that a connection has which is not answered any more
};

/// What a server asks to be done.
struct CHttpCallbacks
{
    /// Called on any of the server's threads, several at once; throws std::bad_alloc only.
    std::function<CReply(const CRequest&)> answer;

    /// Is the answer to wait its turn among the slow ones, so that quick ones need not?
    std::function<bool(const CRequest&)> isSlow;
};

} // namespace zorcld

#endif

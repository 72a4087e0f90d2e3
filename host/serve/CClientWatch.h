#ifndef HOST_SERVE_CCLIENTWATCH_H
#define HOST_SERVE_CCLIENTWATCH_H

#include <boost/beast/core/tcp_stream.hpp>

#include <atomic>
#include <memory>

namespace zorcld
{

/// Looks whether the client of a connection is still there while an answer is made for it: nothing is read
/// from it meanwhile. Runs on the connection's strand.
class CClientWatch
{
public:
    explicit CClientWatch(boost::beast::tcp_stream& stream) : m_stream(stream) {}

    /// @param pOwner   of the stream and of this object.
    /// @param bProbes  the client knows replies of status 100, which stand before others. Without them one
    ///                 that closes its sending end is taken to be gone.
    /// @return becomes true when the client has gone.
    std::shared_ptr<const std::atomic<bool>> Start(const std::shared_ptr<void>& pOwner, bool bProbes);

    /// From now on nothing is sent by this.
    void Stop();

private:
    void Listen(const std::shared_ptr<void>& pOwner);
    void OnHeard(const std::shared_ptr<void>& pOwner);
    void Probe(const std::shared_ptr<void>& pOwner);
    boost::beast::error_code Peek();

    boost::beast::tcp_stream& m_stream;
    std::shared_ptr<std::atomic<bool>> m_pGone; // null: nothing is watched
    bool m_bProbes = false;
};

} // namespace zorcld

#endif

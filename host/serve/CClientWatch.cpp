#include <host/serve/CClientWatch.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <cstddef>
#include <string_view>

namespace zorcld
{

namespace
{

namespace asio = boost::asio;
namespace beast = boost::beast;
using TSocket = asio::ip::tcp::socket;

} // namespace

std::shared_ptr<const std::atomic<bool>> CClientWatch::Start(const std::shared_ptr<void>& pOwner,
                                                             bool bProbes)
{
    m_pGone = std::make_shared<std::atomic<bool>>(false);
    m_bProbes = bProbes;
    Listen(pOwner);
    return m_pGone;
}

void CClientWatch::Stop()
{
    beast::error_code error;
    m_pGone = nullptr;
    m_stream.socket().cancel(error); // nothing else waits
}

void CClientWatch::Listen(const std::shared_ptr<void>& pOwner)
{
    m_stream.socket().async_wait(TSocket::wait_read,
                                 [this, pOwner, pGone = m_pGone](beast::error_code error)
                                 {
                                     if (!error && m_pGone == pGone) // else the answer was quicker
                                         OnHeard(pOwner);
                                 });
}

/// @return what reading would meet: none where there is something to be read.
beast::error_code CClientWatch::Peek()
{
    char c = 0;
    beast::error_code error;
    m_stream.socket().non_blocking(true, error);
    m_stream.socket().receive(asio::buffer(&c, 1), asio::socket_base::message_peek, error);
    return error;
}

/// The wait may also end without anything new: an event of the request itself, which another thread had
/// taken from the system but not yet told of when the request was read.
void CClientWatch::OnHeard(const std::shared_ptr<void>& pOwner)
{
    const beast::error_code error = Peek();
    if (error == asio::error::would_block || error == asio::error::try_again)
        Listen(pOwner);
    else if (error == asio::error::eof && m_bProbes)
        Probe(pOwner);
    else if (error)
        *m_pGone = true;
}

/// A client that has closed its sending end may still wait for the answer, or may have gone altogether. Its
/// system tells which when something is sent: so it gets what clients pass over.
void CClientWatch::Probe(const std::shared_ptr<void>& pOwner)
{
    constexpr std::string_view c_sPassedOver = "HTTP/1.1 100 Continue\r\n\r\n";
    m_stream.socket().async_wait(TSocket::wait_error,
                                 [pOwner, pGone = m_pGone](beast::error_code error)
                                 {
                                     if (!error)
                                         *pGone = true;
                                 });
    beast::error_code error;
    const std::size_t nSent =
        m_stream.socket().send(asio::buffer(c_sPassedOver.data(), c_sPassedOver.size()), 0, error);
    if (!error && nSent == c_sPassedOver.size())
        return;
    *m_pGone = true;
    m_stream.close(); // a piece of it may have left
}

} // namespace zorcld

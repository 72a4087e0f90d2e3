#include <host/serve/CSession.h>

#include <boost/asio/dispatch.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/read.hpp>

#include <chrono>
#include <cstddef>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

namespace zorcld
{

namespace
{

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

constexpr std::size_t c_nMaxHead = 8192;
constexpr std::chrono::milliseconds c_timeToGo{2000}; // that a connection has which is not answered any more

std::string TextFrom(beast::string_view sText)
{
    return {sText.data(), sText.size()};
}

bool IsTooLarge(beast::error_code error)
{
    return error == http::error::header_limit || error == http::error::body_limit ||
           error == http::error::buffer_overflow || error == http::error::unexpected_body;
}

/// Is it the request that is wrong, not the connection?
bool IsOfRequest(beast::error_code error)
{
    return error.category() == http::make_error_code(http::error::bad_method).category() &&
           error != http::error::end_of_stream;
}

/// All that is left in one go: the library's own condition hands 64 KiB at a time to the system, each with a
/// timer of its own.
std::size_t WriteAll(beast::error_code error, std::size_t)
{
    return error ? 0 : std::numeric_limits<std::size_t>::max();
}

/// A reply for which there is no memory is one that takes none.
CReply AnswerAnyway(const CHttpCallbacks& callbacks, const CRequest& request)
{
    try
    {
        if (request.IsForNobody()) // it has waited for its turn
            return MakeLineReply(503, "the client has gone");
        return callbacks.answer(request);
    }
    catch (const std::bad_alloc&)
    {
        CReply reply;
        reply.nStatus = 503;
        reply.sType = "text/plain";
        reply.sBody = "no memory\n";
        return reply;
    }
}

} // namespace

CSession::CSession(asio::ip::tcp::socket&& socket, CSessionShare& share)
    : m_stream(std::move(socket)), m_share(share), m_buffer(2 * c_nMaxHead)
{
}

CSession::~CSession()
{
    m_share.seats.Leave(*this);
}

void CSession::Run()
{
    beast::error_code error;
    m_stream.socket().set_option(asio::ip::tcp::no_delay(true), error); // slower without, and no worse
    m_bSeated =
        m_share.seats.TryTake(shared_from_this()); // here, so that seats are taken in the order of arrival
    m_bGivesWay = MaySendAway();
    asio::dispatch(m_stream.get_executor(), [pSelf = shared_from_this()] { pSelf->Read(); });
}

void CSession::GiveWay()
{
    asio::post(m_stream.get_executor(),
               [pSelf = shared_from_this()]
               {
                   pSelf->m_bSeated = false;
                   if (pSelf->m_bGivesWay)
                       pSelf->m_stream.close();
               });
}

void CSession::Read()
{
    m_stream.expires_after(!m_bSeated ? c_timeToGo
                           : m_bFirst ? m_share.options.timeFirst
                                      : m_share.options.timeRequest);
    m_bFirst = false;
    m_bEmptyLine = false;
    m_bGivesWay = MaySendAway();
    ReadOn();
}

void CSession::ReadOn()
{
    m_parser.emplace();
    m_parser->header_limit(c_nMaxHead);
    m_parser->body_limit(std::uint64_t{0});
    http::async_read(m_stream, m_buffer, *m_parser,
                     [pSelf = shared_from_this()](beast::error_code error, std::size_t nSize)
                     { pSelf->OnRead(error, nSize); });
}

/// Before a request one is passed over, which some clients send behind the one before.
bool CSession::SkipEmptyLine()
{
    const char* const pBytes = static_cast<const char*>(m_buffer.cdata().data());
    if (m_bEmptyLine || m_buffer.size() < 2 || pBytes[0] != '\r' || pBytes[1] != '\n')
        return false;
    m_bEmptyLine = true;
    m_buffer.consume(2);
    return true;
}

void CSession::OnRead(beast::error_code error, std::size_t nSize)
{
    if (IsOfRequest(error) && SkipEmptyLine())
        return ReadOn();
    m_bGivesWay = false;
    if (!m_bSeated && (!error || IsOfRequest(error)))
        return Refuse(503, "too many connections");
    if (IsTooLarge(error) || (!error && nSize > c_nMaxHead)) // the parser's limit is a few bytes wide
        return Refuse(413, "a request has at most 8 KiB and no body");
    if (IsOfRequest(error))
        return Refuse(400, "this is no request of HTTP");
    if (error)
        return; // the client has gone or is too slow
    CRequest request = TakeRequest();
    if (m_parser->get().count(http::field::host) > 1 || m_parser->get().count(http::field::origin) > 1 ||
        !ParseTarget({m_parser->get().target().data(), m_parser->get().target().size()}, request))
        return Refuse(400, "the request's target, host or origin is none");
    m_bKeepAlive = m_parser->get().keep_alive();
    m_stream.expires_never();
    if (m_share.callbacks.isSlow(request))
        AnswerSlowly(std::move(request));
    else
        Send(AnswerAnyway(m_share.callbacks, request));
}

CRequest CSession::TakeRequest() const
{
    const auto& message = m_parser->get();
    CRequest request;
    request.sMethod = TextFrom(message.method_string());
    request.sHost = TextFrom(message[http::field::host]);
    request.sOrigin = TextFrom(message[http::field::origin]);
    request.sFetchSite = TextFrom(message["Sec-Fetch-Site"]);
    request.sCookie = TextFrom(message[http::field::cookie]);
    request.sIfNoneMatch = TextFrom(message[http::field::if_none_match]);
    request.sAcceptEncoding = TextFrom(message[http::field::accept_encoding]);
    return request;
}

void CSession::AnswerSlowly(CRequest request)
{
    request.pGone = m_watch.Start(shared_from_this(), m_parser->get().version() >= 11);
    asio::post(m_share.slowLane,
               [pSelf = shared_from_this(), request = std::move(request)]
               {
                   try
                   {
                       CReply reply = AnswerAnyway(pSelf->m_share.callbacks, request);
                       asio::post(pSelf->m_stream.get_executor(), [pSelf, reply = std::move(reply)]() mutable
                                  { pSelf->SendSlow(std::move(reply)); });
                   }
                   catch (const std::exception&) // no memory: the connection goes, with its last holder
                   {
                   }
               });
}

void CSession::SendSlow(CReply reply)
{
    m_watch.Stop();
    Send(std::move(reply));
}

/// Where the request line was none, or not whole, it has not been taken from what has arrived.
bool CSession::IsHead() const
{
    constexpr std::string_view c_sHead = "HEAD ";
    if (!m_parser->get().method_string().empty())
        return m_parser->get().method() == http::verb::head;
    const std::string_view sArrived(static_cast<const char*>(m_buffer.cdata().data()), m_buffer.size());
    return sArrived.substr(0, c_sHead.size()) == c_sHead;
}

void CSession::Refuse(int nStatus, const char* pLine)
{
    m_bKeepAlive = false;
    CReply reply = MakeLineReply(nStatus, pLine);
    if (IsHead())
        reply.sBody = {};
    Send(std::move(reply));
}

void CSession::Send(CReply reply)
{
    m_reply = std::move(reply);
    m_bLetIn = m_bLetIn || m_reply.nStatus != 403;
    m_bGivesWay = MaySendAway(); // from before the client can know of the reply
    m_eBody = FindBody(m_reply, m_parser && m_parser->is_header_done() && m_parser->get().version() < 11);
    m_bKeepAlive = m_bKeepAlive && m_eBody != enumBody::ToTheEnd;
    m_sHead = FormatHead(m_reply, m_eBody, m_bKeepAlive);
    m_stream.expires_after(m_share.options.timePiece);
    asio::async_write(m_stream,
                      std::array{asio::const_buffer(m_sHead.data(), m_sHead.size()),
                                 asio::const_buffer(m_reply.sBody.data(), m_reply.sBody.size())},
                      WriteAll,
                      [pSelf = shared_from_this()](beast::error_code error, std::size_t)
                      { pSelf->OnSent(error); });
}

void CSession::OnSent(beast::error_code error)
{
    if (error)
        return;
    if (m_reply.pPieces != nullptr)
        return SendNextPiece();
    m_reply = {};
    std::string().swap(m_sPiece); // many connections may be kept that wait for nothing
    if (m_bKeepAlive)
        Read();
    else
        Linger();
}

void CSession::SendNextPiece()
{
    if (m_reply.pPieces->MakeNext(m_sPiece))
    {
        if (m_eBody == enumBody::Chunked)
            m_sPiece = FormatChunk(m_sPiece);
    }
    else
    {
        m_reply.pPieces = nullptr;
        m_sPiece = m_eBody == enumBody::Chunked ? "0\r\n\r\n" : "";
    }
    m_stream.expires_after(m_share.options.timePiece);
    asio::async_write(m_stream, asio::buffer(m_sPiece), WriteAll,
                      [pSelf = shared_from_this()](beast::error_code error, std::size_t)
                      { pSelf->OnSent(error); });
}

/// Waits a little for the client to close: a connection closed while something unread has arrived would take
/// the reply away with it.
void CSession::Linger()
{
    constexpr int c_nMaxRests = 64;
    if (m_nNumRests == 0)
    {
        beast::error_code error;
        m_stream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, error);
        m_stream.expires_after(c_timeToGo);
        m_share.seats.Leave(*this);
    }
    if (m_nNumRests++ == c_nMaxRests)
        return;
    m_stream.async_read_some(asio::buffer(m_acRest),
                             [pSelf = shared_from_this()](beast::error_code error, std::size_t)
                             {
                                 if (!error)
                                     pSelf->Linger();
                             });
}

} // namespace zorcld

#ifndef HOST_SERVE_CSESSION_H
#define HOST_SERVE_CSESSION_H

#include <host/serve/CClientWatch.h>
#include <host/serve/CHttpOptions.h>
#include <host/serve/CSeats.h>
#include <host/serve/FormatHead.h>

#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>

#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <string>

namespace zorcld
{

/// What the connections of a server share; outlives them.
struct CSessionShare
{
    CHttpOptions options;
    CHttpCallbacks callbacks;
    boost::asio::thread_pool& slowLane;
    CSeats seats{options.nMaxClients};
};

/// One connection: reads a request, answers it, and so on until either side closes it. Holds itself while
/// anything is under way. Its members run one after the other, on the connection's own strand.
class CSession final : public ISeated, public std::enable_shared_from_this<CSession>
{
public:
    CSession(boost::asio::ip::tcp::socket&& socket, CSessionShare& share);
    ~CSession() override;
    CSession(const CSession&) = delete;
    CSession& operator=(const CSession&) = delete;

    void Run();

    bool MayGiveWay() const override { return m_bGivesWay; }
    void GiveWay() override;

private:
    using TParser = boost::beast::http::request_parser<boost::beast::http::empty_body>;

    /// Has it a seat that a client has who has not been let in?
    bool MaySendAway() const { return m_bSeated && !m_bLetIn; }

    void Read();
    void ReadOn();
    bool SkipEmptyLine();
    bool IsHead() const;
    void OnRead(boost::beast::error_code error, std::size_t nSize);
    void AnswerSlowly(CRequest request);
    void SendSlow(CReply reply);
    void Refuse(int nStatus, const char* pLine);
    void Send(CReply reply);
    void OnSent(boost::beast::error_code error);
    void SendNextPiece();
    void Linger();
    CRequest TakeRequest() const;

    boost::beast::tcp_stream m_stream;
    CClientWatch m_watch{m_stream};
    CSessionShare& m_share;
    boost::beast::flat_buffer m_buffer;
    std::optional<TParser> m_parser;
    CReply m_reply;
    std::string m_sHead;
    std::string m_sPiece;
    enumBody m_eBody = enumBody::None;
    bool m_bKeepAlive = false;
    bool m_bFirst = true;      // no request has arrived yet
    bool m_bSeated = false;    // is answered
    bool m_bLetIn = false;     // a request has brought the token
    bool m_bEmptyLine = false; // one has come before the request
    std::atomic<bool> m_bGivesWay{false};
    std::array<char, 4096> m_acRest{}; // what a client sends to a connection that is given up
    int m_nNumRests = 0;
};

} // namespace zorcld

#endif

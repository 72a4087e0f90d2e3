#ifndef TESTS_HOST_SERVE_SUPPORT_CHTTPCLIENT_H
#define TESTS_HOST_SERVE_SUPPORT_CHTTPCLIENT_H

#include <string>

/// What a server sent back.
struct CHttpReply
{
    /// @return the value of a header, empty where there is none; names in lower case.
    std::string FindHeader(const std::string& sName) const;

    int nStatus = 0; ///< 0: no reply, or one that is cut off
    std::string sHead;
    std::string sBody; ///< chunks put together
};

/// A connection to a server on this machine, and nothing else, that sends whatever it is told.
class CHttpClient
{
public:
    explicit CHttpClient(int nPort);
    ~CHttpClient();
    CHttpClient(const CHttpClient&) = delete;
    CHttpClient& operator=(const CHttpClient&) = delete;

    /// @return false where the server has closed the connection.
    bool Send(const std::string& sBytes);

    /// Reads one reply, for up to a time.
    CHttpReply Receive(int nMilliseconds = 20000);

    /// Everything that comes until the server closes the connection.
    std::string ReceiveAll(int nMilliseconds = 5000);

    /// Tells the server that nothing more will be sent; what it sends is still read.
    void CloseSending();

    /// Sends a request as browsers do, and reads the reply.
    CHttpReply Get(const std::string& sTarget, const std::string& sHeaders = "");

    /// Has the server closed the connection? Waits for that up to a time; what it still sends is dropped.
    bool IsClosed(int nMilliseconds);

private:
    bool ReadMore(int nMilliseconds);
    bool TakeChunks(std::string& sBody, int nMilliseconds);
    bool TakeLine(std::string& sLine, int nMilliseconds);
    bool TakeBytes(std::size_t nBytes, std::string& sBytes, int nMilliseconds);

    int m_nPort;
    int m_nSocket;
    std::string m_sRead; // and not yet taken
};

#endif

#include <tests/host/serve/support/CHttpClient.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

std::string CHttpReply::FindHeader(const std::string& sName) const
{
    std::string sLower = sHead;
    std::transform(sLower.begin(), sLower.end(), sLower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const std::size_t nPos = sLower.find("\r\n" + sName + ": ");
    if (nPos == std::string::npos)
        return {};
    const std::size_t nBegin = nPos + sName.size() + 4;
    return sHead.substr(nBegin, sHead.find("\r\n", nBegin) - nBegin);
}

CHttpClient::CHttpClient(int nPort) : m_nPort(nPort), m_nSocket(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(nPort));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(m_nSocket, static_cast<const sockaddr*>(static_cast<const void*>(&address)),
                sizeof(address)) != 0)
    {
        close(m_nSocket);
        m_nSocket = -1;
    }
}

CHttpClient::~CHttpClient()
{
    if (m_nSocket >= 0)
        close(m_nSocket);
}

bool CHttpClient::Send(const std::string& sBytes)
{
    std::size_t nSent = 0;
    while (nSent < sBytes.size())
    {
        const ssize_t n = send(m_nSocket, sBytes.data() + nSent, sBytes.size() - nSent, MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        nSent += static_cast<std::size_t>(n);
    }
    return true;
}

bool CHttpClient::ReadMore(int nMilliseconds)
{
    pollfd poll_{m_nSocket, POLLIN, 0};
    if (poll(&poll_, 1, nMilliseconds) <= 0)
        return false;
    char acBytes[65536];
    const ssize_t n = recv(m_nSocket, acBytes, sizeof(acBytes), 0);
    if (n > 0)
        m_sRead.append(acBytes, static_cast<std::size_t>(n));
    return n > 0;
}

bool CHttpClient::TakeBytes(std::size_t nBytes, std::string& sBytes, int nMilliseconds)
{
    while (m_sRead.size() < nBytes)
        if (!ReadMore(nMilliseconds))
            return false;
    sBytes.append(m_sRead, 0, nBytes);
    m_sRead.erase(0, nBytes);
    return true;
}

bool CHttpClient::TakeLine(std::string& sLine, int nMilliseconds)
{
    std::size_t nEnd = 0;
    while ((nEnd = m_sRead.find("\r\n")) == std::string::npos)
        if (!ReadMore(nMilliseconds))
            return false;
    sLine = m_sRead.substr(0, nEnd);
    m_sRead.erase(0, nEnd + 2);
    return true;
}

bool CHttpClient::TakeChunks(std::string& sBody, int nMilliseconds)
{
    std::string sLine;
    while (TakeLine(sLine, nMilliseconds))
    {
        const std::size_t nSize = std::strtoul(sLine.c_str(), nullptr, 16);
        if (!TakeBytes(nSize, sBody, nMilliseconds) || !TakeLine(sLine, nMilliseconds))
            return false;
        if (nSize == 0)
            return true;
    }
    return false;
}

CHttpReply CHttpClient::Receive(int nMilliseconds)
{
    CHttpReply reply;
    std::string sLine;
    do
    {
        if (!TakeLine(sLine, nMilliseconds))
            return {};
        reply.sHead += sLine + "\r\n";
    } while (!sLine.empty());
    constexpr std::size_t c_nStatusAt = 9; // behind HTTP/1.1
    const int nStatus = std::atoi(reply.sHead.c_str() + std::min(c_nStatusAt, reply.sHead.size()));
    bool bWhole = true;
    const std::string sLength = reply.FindHeader("content-length");
    if (reply.FindHeader("transfer-encoding") == "chunked")
        bWhole = TakeChunks(reply.sBody, nMilliseconds);
    else if (!sLength.empty())
        bWhole = TakeBytes(std::strtoul(sLength.c_str(), nullptr, 10), reply.sBody, nMilliseconds);
    else if (nStatus != 304 && nStatus != 100) // to the end of the connection
    {
        while (ReadMore(nMilliseconds))
        {
        }
        reply.sBody = m_sRead;
    }
    reply.nStatus = bWhole ? nStatus : 0;
    return reply;
}

std::string CHttpClient::ReceiveAll(int nMilliseconds)
{
    while (ReadMore(nMilliseconds))
    {
    }
    return std::exchange(m_sRead, {});
}

void CHttpClient::CloseSending()
{
    shutdown(m_nSocket, SHUT_WR);
}

CHttpReply CHttpClient::Get(const std::string& sTarget, const std::string& sHeaders)
{
    const std::string sHost = "Host: 127.0.0.1:" + std::to_string(m_nPort) + "\r\n";
    if (!Send("GET " + sTarget + " HTTP/1.1\r\n" + sHost + sHeaders + "\r\n"))
        return {};
    return Receive();
}

bool CHttpClient::IsClosed(int nMilliseconds)
{
    pollfd poll_{m_nSocket, POLLIN, 0};
    while (poll(&poll_, 1, nMilliseconds) > 0)
        if (!ReadMore(0))
            return true;
    return false;
}

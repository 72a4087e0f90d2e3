#include <host/serve/FormatHead.h>

#include <host/serve/CReply.h>

#include <fmt/format.h>

namespace zorcld
{

namespace
{

const char* FindReason(int nStatus)
{
    switch (nStatus)
    {
    case 200:
        return "OK";
    case 304:
        return "Not Modified";
    case 400:
        return "Bad Request";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 413:
        return "Payload Too Large";
    case 503:
        return "Service Unavailable";
    default:
        return "Internal Server Error";
    }
}

// Nothing is loaded from anywhere else, no other page may frame or embed what comes from here, and nobody
// guesses types.
constexpr const char* c_pForAll =
    "Content-Security-Policy: default-src 'self'; img-src 'self' data: blob:; object-src 'none'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'\r\n"
    "Cross-Origin-Opener-Policy: same-origin\r\n"
    "Cross-Origin-Resource-Policy: same-origin\r\n"
    "Referrer-Policy: no-referrer\r\n"
    "X-Content-Type-Options: nosniff\r\n";

} // namespace

enumBody FindBody(const CReply& reply, bool bOldClient)
{
    if (reply.nStatus == 304)
        return enumBody::None;
    if (reply.pPieces == nullptr || reply.pPieces->GetSize() >= 0)
        return enumBody::Sized;
    return bOldClient ? enumBody::ToTheEnd : enumBody::Chunked;
}

std::string FormatHead(const CReply& reply, enumBody eBody, bool bKeepAlive)
{
    std::string sHead = fmt::format("HTTP/1.1 {} {}\r\n", reply.nStatus, FindReason(reply.nStatus));
    if (eBody != enumBody::None)
        sHead += fmt::format("Content-Type: {}\r\n", reply.sType);
    if (eBody == enumBody::Sized)
        sHead += fmt::format("Content-Length: {}\r\n", reply.pPieces != nullptr
                                                           ? reply.pPieces->GetSize()
                                                           : static_cast<std::int64_t>(reply.sBody.size()));
    if (eBody == enumBody::Chunked)
        sHead += "Transfer-Encoding: chunked\r\n";
    sHead += bKeepAlive ? "Connection: keep-alive\r\n" : "Connection: close\r\n";
    for (const auto& [sName, sValue] : reply.vecHeaders)
        sHead += fmt::format("{}: {}\r\n", sName, sValue);
    return sHead + c_pForAll + "\r\n";
}

std::string FormatChunk(const std::string& sPiece)
{
    return fmt::format("{:x}\r\n{}\r\n", sPiece.size(), sPiece);
}

} // namespace zorcld

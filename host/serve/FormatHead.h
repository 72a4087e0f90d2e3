#ifndef HOST_SERVE_FORMATHEAD_H
#define HOST_SERVE_FORMATHEAD_H

#include <string>

namespace zorcld
{

struct CReply;

/// How the bytes of a body come.
enum class enumBody
{
    None,    ///< of a reply that never has one
    Sized,   ///< their number is told before
    Chunked, ///< each piece tells its own
    ToTheEnd ///< of the connection, for clients of HTTP/1.0
};

/// Bodies of replies, and which of them their clients understand.
enumBody FindBody(const CReply& reply, bool bOldClient);

/// The status line and headers of a reply.
/// @param bKeepAlive  the connection stays.
std::string FormatHead(const CReply& reply, enumBody eBody, bool bKeepAlive);

/// A piece of a chunked body, with its length before it.
std::string FormatChunk(const std::string& sPiece);

} // namespace zorcld

#endif

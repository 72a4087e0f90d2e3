#ifndef HOST_SERVE_CREPLY_H
#define HOST_SERVE_CREPLY_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorcld
{

/// A body that is made piece by piece while it is sent, so that it never lies in memory as a whole.
class IPieces
{
public:
    virtual ~IPieces() = default;

    /// Bytes of all pieces; -1: not known before the end.
    virtual std::int64_t GetSize() const = 0;

    /// Puts the next piece into `sPiece`, never an empty one.
    /// @return false when there is none left.
    virtual bool MakeNext(std::string& sPiece) = 0;
};

/// What a client gets.
struct CReply
{
    CReply() = default;
    CReply(std::string sMimeType, std::string sText)
        : sType(std::move(sMimeType)), pOwner(std::make_shared<std::string>(std::move(sText)))
    {
        sBody = *static_cast<const std::string*>(pOwner.get());
    }

    int nStatus = 200;
    std::string sType;
    std::vector<std::pair<std::string, std::string>> vecHeaders; ///< besides those that every reply has
    std::string_view sBody;
    std::shared_ptr<const void> pOwner; ///< of the body's bytes; null: they are the program's own
    std::shared_ptr<IPieces> pPieces;   ///< instead of `sBody`; null: none
    std::shared_ptr<void> pHeld;        ///< whatever is to be let go with the reply; null: nothing
};

/// One line, for people.
inline CReply MakeLineReply(int nStatus, const std::string& sLine)
{
    CReply reply("text/plain; charset=utf-8", sLine + "\n");
    reply.nStatus = nStatus;
    reply.vecHeaders.emplace_back("Cache-Control", "no-store"); // the next time it may be otherwise
    return reply;
}

} // namespace zorcld

#endif

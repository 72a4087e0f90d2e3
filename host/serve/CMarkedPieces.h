#ifndef HOST_SERVE_CMARKEDPIECES_H
#define HOST_SERVE_CMARKEDPIECES_H

#include <host/serve/CPntChoice.h>
#include <host/serve/CReply.h>
#include <zor4data/CCldCadPnt.h>

#include <functional>
#include <memory>
#include <string>

namespace zorcld
{

/// What is written of points as a file that is sent while it is made.
class IMarkedWriter
{
public:
    virtual ~IMarkedWriter() = default;

    /// Appends what stands before the points.
    virtual void Begin(std::string& sBytes) = 0;
    virtual void Add(const CCldCadPnt& pnt, std::string& sBytes) = 0;
};

/// Marked points, in the order of the array. Only the marks are kept: a bit a point of the cloud.
class CMarkedPieces final : public IPieces
{
public:
    /// @param nSize  bytes of all; -1: not known.
    /// @param slot   is let go with this object.
    CMarkedPieces(CMarkedPnts&& marked, std::unique_ptr<IMarkedWriter> pWriter, std::int64_t nSize,
                  std::shared_ptr<void> slot)
        : m_marked(std::move(marked)), m_pWriter(std::move(pWriter)), m_nSize(nSize), m_slot(std::move(slot))
    {
    }

    std::int64_t GetSize() const override { return m_nSize; }
    bool MakeNext(std::string& sPiece) override;

private:
    CMarkedPnts m_marked;
    std::unique_ptr<IMarkedWriter> m_pWriter;
    std::int64_t m_nSize;
    std::shared_ptr<void> m_slot;
    std::size_t m_nNext = 0;
    bool m_bBegun = false;
};

} // namespace zorcld

#endif

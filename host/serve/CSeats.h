#ifndef HOST_SERVE_CSEATS_H
#define HOST_SERVE_CSEATS_H

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

namespace zorcld
{

/// A connection that may have a seat.
class ISeated
{
public:
    virtual ~ISeated() = default;

    /// Does it wait for a client who has not been let in yet, or tell it so? Asked on any thread.
    virtual bool MayGiveWay() const = 0;

    /// It has lost its seat, and ends where it still waits so. Called on any thread.
    virtual void GiveWay() = 0;
};

/// The connections that a server answers, of which there are so many and no more. Those that only wait for
/// their client to close have none. Safe on several threads.
class CSeats
{
public:
    explicit CSeats(int nNumSeats);

    /// Where all are taken, the connection that has held its own for longest of those that may give way loses
    /// it, and ends.
    /// @return false where there is none.
    bool TryTake(const std::shared_ptr<ISeated>& pSeated);

    /// Does nothing for one that has none.
    void Leave(const ISeated& seated);

private:
    struct CSeat
    {
        const ISeated* pSeated; // lives: it leaves before it goes
        std::weak_ptr<ISeated> pHold;
    };

    std::mutex m_mutex;
    std::size_t m_nNumSeats;
    std::vector<CSeat> m_vecTaken; // in the order in which they were
};

} // namespace zorcld

#endif

#ifndef HOST_SERVE_CBYTEBUDGET_H
#define HOST_SERVE_CBYTEBUDGET_H

#include <atomic>
#include <cstdint>
#include <memory>

namespace zorcld
{

/// So many bytes, which replies under way hold in parts: however many clients are slow to read, they keep no
/// more than that. Every member may be called on any thread.
class CByteBudget
{
public:
    explicit CByteBudget(std::int64_t nBytes) : m_pLeft(std::make_shared<std::atomic<std::int64_t>>(nBytes))
    {
    }

    /// @return what holds the bytes until its last copy is gone; null: so many are not left.
    std::shared_ptr<void> TryTake(std::int64_t nBytes) const
    {
        const bool bRoom = (*m_pLeft -= nBytes) >= 0;
        std::shared_ptr<void> held(m_pLeft.get(), [pLeft = m_pLeft, nBytes](void*) { *pLeft += nBytes; });
        return bRoom ? held : nullptr; // which else gives them back at once
    }

    std::int64_t GetLeft() const { return *m_pLeft; }

private:
    std::shared_ptr<std::atomic<std::int64_t>> m_pLeft;
};

} // namespace zorcld

#endif

#ifndef SUPPORT_FAILEVERYALLOC_H
#define SUPPORT_FAILEVERYALLOC_H

#include <tests/support/CFailingAlloc.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>

/// What is to fail while one attempt runs.
class CAllocPlan
{
public:
    CAllocPlan(std::int64_t nNumGood, std::int64_t nNumBad) : m_nNumGood(nNumGood), m_nNumBad(nNumBad) {}

    /// Runs the operation while allocations fail.
    /// @return whether it got through: it then has to have its right result, whatever failed on the way. If
    ///         not, it has thrown std::bad_alloc.
    template <class TOperation>
    bool Run(TOperation operation)
    {
        const std::int64_t nBefore = CFailingAlloc::GetNumFailed();
        bool bThrough = false;
        try
        {
            const CFailingAlloc failing(m_nNumGood, m_nNumBad);
            operation();
            bThrough = true;
        }
        catch (const std::bad_alloc&)
        {
            m_bThrown = true;
        }
        m_bFailed = CFailingAlloc::GetNumFailed() != nBefore;
        return bThrough;
    }

    bool IsThrown() const { return m_bThrown; }
    bool HasFailed() const { return m_bFailed; }

private:
    std::int64_t m_nNumGood;
    std::int64_t m_nNumBad;
    bool m_bThrown = false;
    bool m_bFailed = false; // an allocation was made to fail
};

/// Makes attempts with each allocation failing in turn: it alone, so that nothing later hides that a failure
/// was passed over in silence; and all from it on, as where memory is really short. A run that throws nothing
/// is not the end of it: the attempts go on until no allocation is asked for that could fail.
///
/// @param attempt  `void(CAllocPlan&)`: prepares, calls `Run` once, and looks at the result if that is true,
///                 or else at what a failure leaves.
/// @param nStep    fails only every so many of the allocations, where there are very many.
/// @return how many attempts threw.
template <class TAttempt>
int FailEveryAlloc(TAttempt attempt, int nStep = 1)
{
    constexpr std::int64_t c_nMax = 20000;
    constexpr std::int64_t c_nAll = std::numeric_limits<std::int64_t>::max();
    int nNumThrown = 0;
    for (const std::int64_t nNumBad : {std::int64_t{1}, c_nAll})
    {
        std::int64_t nNumGood = 0;
        for (bool bFailed = true; bFailed && !::testing::Test::HasFailure(); nNumGood += nStep)
        {
            SCOPED_TRACE(::testing::Message() << nNumGood << " allocations let through, then "
                                              << (nNumBad == 1 ? "one fails" : "all fail"));
            CAllocPlan plan(nNumGood, nNumBad);
            attempt(plan);
            bFailed = plan.HasFailed();
            nNumThrown += plan.IsThrown() ? 1 : 0;
            if (nNumGood > c_nMax)
                ADD_FAILURE() << "it never ends";
        }
    }
    return nNumThrown;
}

#endif

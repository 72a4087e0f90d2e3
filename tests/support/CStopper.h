#ifndef SUPPORT_CSTOPPER_H
#define SUPPORT_CSTOPPER_H

#include <tests/support/CFailingAlloc.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

/// What a host throws to stop an operation: nothing that the library could know.
struct CStop
{
};

/// The slots that an operation calls.
enum enumSlot
{
    Slot_None,
    Slot_OnPnts,
    Slot_GetColor,
    Slot_SetZRange,
    Slot_SetPos,
    Slot_OnProgress,
    Slot_OnReadType,
    Slot_OnReadNumPnts,
    Slot_OnReadPnt,
    Slot_OnReadEnd
};

/// A host with all of its listeners. It throws at one call of one slot.
class CStopHost final : public IPntCldListener,
                        public ICldColorListener,
                        public IDlgProgress,
                        public IPclProgressListener
{
public:
    void OnPnts(int, CCldCadPnt*) override { Call(Slot_OnPnts); }
    void GetColor(double, float&, float&, float&) override { Call(Slot_GetColor); }
    void SetZRange(double, double) override { Call(Slot_SetZRange); }
    void Start() override {}
    void Stop() override {}
    bool SetPos(int) override
    {
        Call(Slot_SetPos);
        return true;
    }
    void OnProgress(int) override { Call(Slot_OnProgress); }

    /// To be called by each slot. Throws CStop at the one that was set.
    void Call(enumSlot eSlot)
    {
        if (eSlot == m_eSlot && m_nNumLeft-- == 0)
            throw CStop();
    }

    /// Has the call of a slot stop what runs that comes behind `nNumGood` others; Slot_None: nothing stops.
    void SetStop(enumSlot eSlot, int nNumGood)
    {
        m_eSlot = eSlot;
        m_nNumLeft = nNumGood;
    }

private:
    enumSlot m_eSlot = Slot_None;
    int m_nNumLeft = 0;
};

/// Stops an operation at the first call of a slot, at the second, and so on, until it gets through.
///
/// @param nStep    stops only at every so many of the calls, where there are very many.
/// @param attempt  `void(run)`: prepares, calls `run(operation)` once, which says whether the operation got
///                 through, and looks at what it has left. What it makes must be gone when it returns.
/// @return how often the operation was stopped.
template <class TAttempt>
int StopEverywhere(CStopHost& host, enumSlot eSlot, int nStep, TAttempt attempt)
{
    int nNumStopped = 0;
    for (bool bThrough = false; !bThrough && !::testing::Test::HasFailure();)
    {
        const int nNumGood = nNumStopped * nStep;
        SCOPED_TRACE(::testing::Message() << "slot " << eSlot << ", call " << nNumGood);
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        attempt(
            [&](const auto& operation)
            {
                host.SetStop(eSlot, nNumGood);
                try
                {
                    operation();
                    bThrough = true;
                }
                catch (const CStop&)
                {
                    ++nNumStopped;
                }
                host.SetStop(Slot_None, 0);
                return bThrough;
            });
        EXPECT_EQ(CFailingAlloc::GetNumLive(), nNumLive) << "something is left behind";
    }
    return nNumStopped;
}

#endif

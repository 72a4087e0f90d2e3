#ifndef FUZZ_CALLS_CCALLS_H
#define FUZZ_CALLS_CCALLS_H

#include <fuzz/CInput.h>
#include <fuzz/calls/CCallHost.h>
#include <fuzz/calls/CModelCld.h>
#include <tests/support/CFailingAlloc.h>
#include <zor3geom/PLANE_3D.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <new>
#include <string>
#include <vector>

/// How a call ended.
enum class enumEnd
{
    Done,
    Stopped, ///< the host threw
    NoMemory ///< std::bad_alloc came out of it
};

/// Some clouds and a model of each; calls of the whole public interface with arguments from the input, some
/// of them with a listener that throws or an allocation that fails. After each call a cloud is what its model
/// is.
class CCalls
{
public:
    explicit CCalls(CInput& input);

    /// Makes one call after the other until the input ends.
    void Run();

private:
    static constexpr int c_nNumClds = 3;
    static constexpr int c_nMaxPnts = 400;

    struct CCall;

    /// One of the calls below, as often as its share says.
    const CCall& PickCall();

    struct CPair
    {
        explicit CPair(ICldColorListener* pColors) : cld(pColors) {}

        CPntCld cld;
        CModelCld model;
    };

    // Filling and changing
    void CallOnReadType();
    void CallInit();
    void CallAddPnts();
    void CallComputeTree();
    void CallOnReadEnd();
    void CallClear();
    void CallFlags();
    void CallSelect();
    void CallDelete();
    void CallCopy();
    void CallKeepPnts();
    void CallMorph();

    // Files
    void CallWriteAndLoad();
    void CallSaveCloud();
    void CallReadPly();
    void CallFileFacts();

    // Questions
    void CallWalks();
    void CallRect();
    void CallNearLine();
    void CallContours();
    void CallPolygons();
    void CallPick();
    void CallLodRuns();
    void CallArrays();
    void CallOutline();
    void CallGround();
    void CallGeometry();

    /// Runs a call, sometimes with something that fails in it.
    template <class TCall>
    enumEnd Try(TCall call, bool bMemoryMayFail = true);

    /// Asks something that delivers points: what comes must be `vecExpected`, and the cloud stay as it was.
    template <class TCall>
    void Ask(const std::vector<int>& vecExpected, TCall call, const char* sWhat);

    /// The cloud that the next call is about.
    CPair& PickPair() { return m_vecPairs[static_cast<std::size_t>(m_input.Below(c_nNumClds))]; }

    void CompareAll() const;
    static void Compare(const CPair& pair);
    static void CompareArrays(const CPair& pair, const Ref::CStore& store);
    static void CompareTree(const CPair& pair, const Ref::CStore& store);

    /// After a build that ran out of memory: the same points in any order, which the model takes over.
    static void TakeOrder(CPair& pair);

    /// After a reading that was broken off: cloud and model without points, with the same origin and version.
    static void Empty(CPair& pair);

    static Ref::CStore Look(const CPair& pair);
    static bool IsFresh(const CPair& pair);
    static std::vector<zor::geom::PNT_3D> ListPlaces(const Ref::CStore& store);

    /// A number that means nothing, or a small one.
    double Number() { return m_input.Coord(m_input.Below(8) == 0, m_dStep); }
    float Float();
    double Spacing() { return m_input.Below(4) == 0 ? Number() : m_input.Below(256) * 0.05 * m_dStep; }
    std::vector<zor::geom::PLANE_3D> Planes();
    std::array<std::uint8_t, 3> Color();
    int Batch() { return m_input.Below(8) == 0 ? m_input.Get<std::int16_t>() : 1 + m_input.Below(64); }

    /// Where SaveCloud puts its files, and what is there.
    const std::string& GetFolder();

    CInput& m_input;
    double m_dStep;
    CCallHost m_host;
    std::vector<CPair> m_vecPairs;
    CPntArrays m_kept;        ///< arrays that outlive what is done to their cloud
    std::string m_sSavedFile; ///< what SaveCloud has left
};

template <class TCall>
enumEnd CCalls::Try(TCall call, bool bMemoryMayFail)
{
    constexpr std::int64_t c_nAll = std::numeric_limits<std::int64_t>::max();
    const int nFault = m_input.Below(4);
    const bool bStop = nFault == 2;
    const bool bFail = nFault == 3 && bMemoryMayFail;
    const std::int64_t nNumGood = m_input.Below(256);
    const std::int64_t nNumBad = m_input.Bool() ? 1 : c_nAll;
    m_host.SetStop(bStop ? static_cast<int>(nNumGood) : -1);
    enumEnd eEnd = enumEnd::Done;
    try
    {
        const CFailingAlloc failing(bFail ? nNumGood : c_nAll, nNumBad);
        call();
    }
    catch (const CHostStop&)
    {
        eEnd = enumEnd::Stopped;
    }
    catch (const std::bad_alloc&)
    {
        eEnd = enumEnd::NoMemory;
    }
    m_host.SetStop(-1);
    Check(eEnd != enumEnd::Stopped || bStop, "the host's exception is the host's");
    Check(eEnd != enumEnd::NoMemory || bFail, "memory runs out where it does");
    return eEnd;
}

template <class TCall>
void CCalls::Ask(const std::vector<int>& vecExpected, TCall call, const char* sWhat)
{
    if (Try(call) == enumEnd::Done)
        Check(m_host.GetIndices() == vecExpected, sWhat);
}

#endif

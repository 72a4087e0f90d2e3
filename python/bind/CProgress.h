#ifndef PYTHON_BIND_CPROGRESS_H
#define PYTHON_BIND_CPROGRESS_H

#include <zor4data/IDlgProgress.h>
#include <zor4data/IPclProgressListener.h>

#include <pybind11/pybind11.h>

#include <chrono>

namespace zorpy
{

/// Throws what Python's signal handlers raise, KeyboardInterrupt say. Takes the interpreter's lock for it; on
/// other threads than the main one nothing is ever raised.
void CheckSignals();

/// Looks for signals where work comes in many small steps: often asked, and nearly free.
class CSignalWatch
{
public:
    /// One of many steps, of microseconds at most.
    void Poll()
    {
        constexpr unsigned c_nPollsPerLook = 1024; // the clock is not for nothing
        if (++m_nNumPolls % c_nPollsPerLook == 0)
            PollClock();
    }

    /// One of fewer and longer steps. Throws as `CheckSignals`, which it calls a few times a second.
    void PollClock();

    /// Counts as a look.
    void Reset() { m_lastLook = TClock::now(); }

private:
    using TClock = std::chrono::steady_clock;

    unsigned m_nNumPolls = 0;
    TClock::time_point m_lastLook = TClock::now();
};

/// Carries the progress of an operation to a Python callable, and signals and exceptions back: both leave the
/// slot as C++ exceptions, which stop the operation.
///
/// The operation runs without the interpreter's lock; it is taken where the percentage has changed, and a few
/// times a second besides.
class CProgress final : public IDlgProgress, public IPclProgressListener
{
public:
    /// @param callback  takes the percentage, an int; None: nobody is told. REQUIRES: outlives the object.
    explicit CProgress(const pybind11::object& callback) : m_callback(callback) {}

    void Start() override {}
    void Stop() override {}
    bool SetPos(int nPos) override;
    void OnProgress(int nPos) override { SetPos(nPos); }

    /// Looks for signals now and then; nearly free otherwise.
    void Poll() { m_watch.Poll(); }

private:
    void Tell(int nPos);

    const pybind11::object& m_callback;
    int m_nLastPos = -1;
    CSignalWatch m_watch;
};

} // namespace zorpy

#endif

#ifndef PYTHON_BIND_GIL_H
#define PYTHON_BIND_GIL_H

#include <pybind11/pybind11.h>

#include <cxxabi.h>

namespace zorpy
{

// The interpreter's lock. A thread that asks for it when the interpreter is ending is ended by Python, in a
// way that unwinds the stack through C++ and so aborts the process. Here such a thread waits instead, until
// the process is gone: it runs as a daemon, or the interpreter would have waited for it.

/// Waits until the process ends.
[[noreturn]] void WaitForEnd() noexcept;

/// Lets the lock go for the time of its life. REQUIRES: the thread holds it.
class CReleasedGil
{
public:
    CReleasedGil();
    ~CReleasedGil();

    CReleasedGil(const CReleasedGil&) = delete;
    CReleasedGil& operator=(const CReleasedGil&) = delete;

private:
    PyThreadState* m_pOuter; // of the thread's guard before this one, or null
};

/// Takes the lock within the life of the thread's `CReleasedGil`; where there is none the thread holds it
/// already.
class CTakenGil
{
public:
    CTakenGil();
    ~CTakenGil();

    CTakenGil(const CTakenGil&) = delete;
    CTakenGil& operator=(const CTakenGil&) = delete;

private:
    PyThreadState* m_pState;
};

/// Throws an OSError of what the system said; MemoryError: there is no memory. Takes the lock for it.
[[noreturn]] void ThrowErrno(int nError);

/// Calls what runs code of the user's, within which the interpreter may end. REQUIRES: the thread holds the
/// lock.
template <class TFn>
void CallPython(TFn fn)
{
    try
    {
        fn();
    }
    catch (const abi::__forced_unwind&)
    {
        WaitForEnd();
    }
}

} // namespace zorpy

#endif

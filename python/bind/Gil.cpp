#include <python/bind/Gil.h>

#include <unistd.h>

#include <cerrno>
#include <new>
#include <utility>

namespace zorpy
{

namespace
{

/// The state of this thread while it is without the lock; null: it has it.
thread_local PyThreadState* t_pReleased = nullptr;

/// Takes the lock, or never returns.
void Restore(PyThreadState* pState) noexcept
{
    try
    {
        PyEval_RestoreThread(pState);
    }
    catch (...) // Python throws nothing: this is the thread's end
    {
        WaitForEnd();
    }
}

} // namespace

void WaitForEnd() noexcept
{
    for (;;)
        pause();
}

void ThrowErrno(int nError)
{
    if (nError == ENOMEM)
        throw std::bad_alloc();
    const CTakenGil lock;
    errno = nError;
    PyErr_SetFromErrno(PyExc_OSError);
    throw pybind11::error_already_set();
}

CReleasedGil::CReleasedGil() : m_pOuter(t_pReleased)
{
    t_pReleased = PyEval_SaveThread();
}

CReleasedGil::~CReleasedGil()
{
    Restore(std::exchange(t_pReleased, m_pOuter));
}

CTakenGil::CTakenGil() : m_pState(std::exchange(t_pReleased, nullptr))
{
    if (m_pState != nullptr)
        Restore(m_pState);
}

CTakenGil::~CTakenGil()
{
    if (m_pState != nullptr)
        t_pReleased = PyEval_SaveThread();
}

} // namespace zorpy

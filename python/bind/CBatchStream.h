#ifndef PYTHON_BIND_CBATCHSTREAM_H
#define PYTHON_BIND_CBATCHSTREAM_H

#include <python/bind/CQuery.h>

#include <sys/types.h>

namespace zorpy
{

/// The answer to a query batch by batch, with room for two batches however many points there are.
///
/// The library hands points over, Python asks for them: between the two stands a thread, which waits while
/// nobody asks. It knows nothing of Python. It begins with the first batch that is asked for.
class CBatchStream
{
public:
    /// @param nBatch  indices a batch, at least 1.
    CBatchStream(TCloudPtr pCloud, CQuery query, int nBatch);

    /// Ends the thread. In a process made by fork, which has no such thread, what it would have used stays.
    ~CBatchStream();

    CBatchStream(const CBatchStream&) = delete;
    CBatchStream& operator=(const CBatchStream&) = delete;

    /// @return the next batch; none: the end. Waits without the interpreter's lock; what signal
    ///         handlers raise comes out of it.
    pybind11::array_t<std::int32_t> GetNext();

    /// Ends the thread. After it there are no batches.
    void Close();

private:
    class CState;

    std::unique_ptr<CState> m_pState;
    pid_t m_nProcess;
};

} // namespace zorpy

#endif

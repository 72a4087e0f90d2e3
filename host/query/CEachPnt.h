#ifndef HOST_QUERY_CEACHPNT_H
#define HOST_QUERY_CEACHPNT_H

#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

namespace zorcld
{

constexpr int c_nBatch = 4096; ///< points that a query of this room hands over at a time

/// Listener that hands point by point to a function, which outlives it.
template <class TFn>
class CEachPnt final : public IPntCldListener
{
public:
    explicit CEachPnt(TFn& fn) : m_fn(fn) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_fn(pPnts[i]);
    }

private:
    TFn& m_fn;
};

} // namespace zorcld

#endif

#ifndef EXAMPLES_TPNTLISTENER_H
#define EXAMPLES_TPNTLISTENER_H

#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <utility>

// [listener]
/// Hands each point that a query finds to a function.
template <class TOnPnt>
class TPntListener final : public IPntCldListener
{
public:
    explicit TPntListener(TOnPnt onPnt) : m_onPnt(std::move(onPnt)) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_onPnt(pPnts[i]);
    }

private:
    TOnPnt m_onPnt;
};
// [/listener]

#endif

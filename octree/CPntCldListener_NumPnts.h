#ifndef OCTREE_CPNTCLDLISTENER_NUMPNTS_H
#define OCTREE_CPNTCLDLISTENER_NUMPNTS_H

#include <octree/Compact.h>
#include <zor4data/IPntCldListener.h>

/// Counts what a query delivers and ignores the points.
class CPntCldListener_NumPnts final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt*) override { m_nNumPnts = WrapAdd(m_nNumPnts, nNumPnts); }

    std::int32_t m_nNumPnts = 0;
};

#endif

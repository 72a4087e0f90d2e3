#ifndef OCTREE_CPNTCLDLISTENER_NUMPNTS_H
#define OCTREE_CPNTCLDLISTENER_NUMPNTS_H

#include <formats/Compact.h>
#include <zor4data/IPntCldListener.h>

#include <cstdint>

/// Counts the points of a query and looks at none of them.
class CPntCldListener_NumPnts final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt*) override { m_nNumPnts = WrapAdd(m_nNumPnts, nNumPnts); }

    std::int32_t GetNumPnts() const noexcept { return m_nNumPnts; }

private:
    std::int32_t m_nNumPnts = 0;
};

#endif

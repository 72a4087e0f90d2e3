#ifndef SUPPORT_CTESTCLD_H
#define SUPPORT_CTESTCLD_H

#include <tests/support/CPntTrait.h>
#include <tests/support/CRecListener.h>
#include <tests/support/CldCases.h>
#include <zor4data/CPntCld.h>

#include <vector>

/// A cloud as a host makes it: filled point by point with the points of a case. Colours follow from the
/// order of filling.
template <class T>
class CTestCld
{
public:
    explicit CTestCld(const CCldCase& cldCase) : m_cld(&m_color)
    {
        Fill(cldCase);
        m_cld.ComputeTree();
    }

    explicit CTestCld(const std::vector<zor::geom::PNT_3D>& vecPnts) : CTestCld(CCldCase("", vecPnts)) {}

    CPntCld* operator->() { return &m_cld; }
    CPntCld& operator*() { return m_cld; }

    zor::geom::PNT_3D GetPnt(int nIndex) const
    {
        zor::geom::PNT_3D pnt;
        m_cld.GetPnt(nIndex, pnt);
        return pnt;
    }

    /// @return indices, ascending, of the points for which `isWanted` holds: looks at every one.
    template <class F>
    std::vector<int> Scan(F isWanted) const
    {
        std::vector<int> vecIndices;
        for (int i = 0; i < m_cld.GetNumPnts(); ++i)
            if (isWanted(GetPnt(i)))
                vecIndices.push_back(i);
        return vecIndices;
    }

private:
    void Fill(const CCldCase& cldCase)
    {
        m_cld.OnReadType(CPntTrait<T>::c_eType);
        m_cld.Init(static_cast<int>(cldCase.GetPnts().size()));
        unsigned n = 0;
        for (const zor::geom::PNT_3D& pnt : cldCase.GetPnts())
        {
            m_cld.AddPnt(pnt.x, pnt.y, pnt.z, static_cast<unsigned char>(n),
                         static_cast<unsigned char>(n >> 8U), static_cast<unsigned char>(n * 7U));
            ++n;
        }
    }

    CRecColorListener m_color;
    CPntCld m_cld;
};

#endif

#ifndef COMPANIONS_CRECIPECLD_H
#define COMPANIONS_CRECIPECLD_H

#include <tests/support/CPntTrait.h>
#include <tests/support/CRandom.h>
#include <tests/support/CRecListener.h>
#include <tests/support/RandomCld.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>

/// A cloud as a host makes it, of the points of a random recipe and a random origin.
template <class T>
class CRecipeCld
{
public:
    explicit CRecipeCld(const CCldRecipe& recipe, bool bTree = true) : m_random(recipe.seed + 7)
    {
        static const std::vector<double> vecShifts{0.0, 12.34, -500.5, 4000000.25};
        const double dX = m_random.Pick(vecShifts);
        const double dY = m_random.Pick(vecShifts);
        const std::vector<Ref::CPnt> vecPnts = MakePnts(recipe);
        m_cld.OnReadType(CPntTrait<T>::c_eType);
        m_cld.Init(static_cast<int>(vecPnts.size()));
        for (const Ref::CPnt& pnt : vecPnts)
            m_cld.AddPnt(pnt.x / 10000.0 + dX, pnt.y / 10000.0 + dY, pnt.z / 10000.0, pnt.r, pnt.g, pnt.b);
        if (bTree)
            m_cld.ComputeTree();
    }

    /// Marks points deleted, one in `nOneIn`, 0: none. No host leaves such marks; the queries respect them.
    void Delete(int nOneIn)
    {
        for (int i = 0; nOneIn > 0 && i < m_cld.GetNumPnts(); ++i)
            if (m_random.Chance(nOneIn))
                DeletePnt(i);
    }

    void DeletePnt(int nIndex)
    {
        auto* const pBits =
            const_cast<unsigned char*>(GetPntArrays(m_cld).pDelBits); // its memory is not const
        pBits[nIndex / 8] = static_cast<unsigned char>(pBits[nIndex / 8] | (1U << (nIndex % 8)));
    }

    bool IsLive(int nIndex) const
    {
        return ((GetPntArrays(m_cld).pDelBits[nIndex / 8] >> (nIndex % 8)) & 1) == 0;
    }

    zor::geom::PNT_3D GetPnt(int nIndex) const
    {
        zor::geom::PNT_3D pnt;
        m_cld.GetPnt(nIndex, pnt);
        return pnt;
    }

    CPntCld* operator->() { return &m_cld; }
    CPntCld& operator*() { return m_cld; }
    CRandom& GetRandom() { return m_random; }

private:
    CRandom m_random;
    CRecColorListener m_color;
    CPntCld m_cld{&m_color};
};

#endif

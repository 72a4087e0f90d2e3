#ifndef SUPPORT_CTESTSTORE_H
#define SUPPORT_CTESTSTORE_H

#include <cloud/COcTree.h>
#include <octree/COcTreeIndex.h>
#include <octree/Query3D.h>
#include <tests/support/CPntTrait.h>
#include <tests/support/CRandom.h>
#include <tests/support/CRecListener.h>
#include <tests/support/CRefQuery.h>

#include <string>
#include <vector>

/// A store of the library filled with compact points, and the model's store beside it.
template <class T>
class CTestStore
{
public:
    CTestStore(const std::vector<Ref::CPnt>& pnts, const std::array<float, 3>& org)
        : m_store(&m_color), m_color(&m_log)
    {
        m_store.Init(static_cast<std::int32_t>(pnts.size()));
        for (std::size_t i = 0; i < pnts.size(); ++i)
            m_store.m_pPnts[static_cast<std::ptrdiff_t>(i)] = CPntTrait<T>::Make(pnts[i]);
        m_store.m_nNumAdded = m_store.m_nNumPnts;
        m_store.m_fOrgX = org[0];
        m_store.m_fOrgY = org[1];
        m_store.m_fOrgZ = org[2];
        m_ref.org = org;
        for (const Ref::CPnt& pnt : pnts)
            m_ref.pnts.push_back(CPntTrait<T>::Read(CPntTrait<T>::Make(pnt)));
        m_ref.deleted.resize(pnts.size());
        m_ref.selected.resize(pnts.size());
    }

    void ComputeTree()
    {
        m_store.ComputeTree();
        m_ref.tree = Ref::BuildTree(m_ref.pnts);
        m_ref.hasTree = true;
    }

    /// Marks points, one in `nOneInDeleted` and one in `nOneInSelected`; 0: none.
    void Mark(CRandom& random, int nOneInDeleted, int nOneInSelected)
    {
        for (int i = 0; i < m_store.m_nNumPnts; ++i)
        {
            if (nOneInDeleted > 0 && random.Chance(nOneInDeleted))
                Delete(i);
            if (nOneInSelected > 0 && random.Chance(nOneInSelected))
                Select(i);
        }
    }

    void Delete(int i)
    {
        m_store.MarkDeleted(i);
        m_ref.deleted[static_cast<std::size_t>(i)] = true;
    }

    void Select(int i)
    {
        m_store.SelPnt(i, false);
        m_ref.selected[static_cast<std::size_t>(i)] = true;
    }

    /// @return the store's records, for comparison with the model's.
    std::vector<Ref::CPnt> GetPnts() const
    {
        std::vector<Ref::CPnt> pnts;
        for (std::int32_t i = 0; i < m_store.m_nNumPnts; ++i)
            pnts.push_back(CPntTrait<T>::Read(m_store.m_pPnts[i]));
        return pnts;
    }

    COcTree<T>& operator*() { return m_store; }
    COcTree<T>* operator->() { return &m_store; }
    const Ref::CStore& GetRef() const { return m_ref; }

private:
    COcTree<T> m_store;
    CCallLog m_log; // of no interest: each query of a test has listeners of its own
    CRecColorListener m_color;
    Ref::CStore m_ref;
};

#endif

#ifndef FUZZ_CALLS_CMODELCLD_H
#define FUZZ_CALLS_CMODELCLD_H

#include <tests/support/CRefQuery.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// Points that copies of a store share.
struct CModelArray
{
    std::vector<Ref::CPnt> pnts;
    int nNumChanges = 0; ///< how often points were stored or moved
};

/// A tree, and the points that it was built for.
struct CModelTree
{
    Ref::CTree tree;
    std::weak_ptr<CModelArray> pArray;
    int nNumChanges = 0;
};

/// What one store of a cloud holds, plainly. Copies share what copies of a cloud share.
struct CModelStore
{
    std::shared_ptr<CModelArray> pArray;          ///< null: no points announced
    std::shared_ptr<std::vector<bool>> pSelected; ///< one a point
    std::shared_ptr<CModelTree> pTree;            ///< null: never built
    std::array<float, 3> org{4027580416.0F, 4027580416.0F, 4027580416.0F};
    int nNumAdded = 0;
    bool bModified = false;
    int nVersion = 0;

    /// What a file holds whose cloud had no point type: nothing, in version -1.
    static CModelStore NoStore();

    int GetNumPnts() const { return pArray == nullptr ? 0 : static_cast<int>(pArray->pnts.size()); }

    /// Was the tree built for the points as they are?
    bool IsTreeFresh() const;

    /// What the queries of the model ask.
    Ref::CStore Look() const;

    bool Init(int n);
    bool Add(double x, double y, double z, const std::array<std::uint8_t, 3>& color);
    bool ComputeTree();
    void ReadEnd();
    void Select(int nIndex, bool bToggle);
    void UnSelect();
    void DelSel();
    void Keep(const std::vector<int>& vecIndices);
    void Clear();
    void SetModified(bool b);

    /// Takes what a file holds that `saved` has been written to.
    void Load(const CModelStore& saved);

    /// Takes over an order of the points that a build has left which ran out of memory.
    void TakeOrder(const std::vector<Ref::CPnt>& pnts);
};

/// A cloud: two stores of which one is live.
struct CModelCld
{
    int nType = -1;
    CModelStore plain;
    CModelStore colored;
    int nFileType = -1;
    std::string sPath;

    /// @return null for a cloud without point type.
    CModelStore* GetStore() { return nType == 0 ? &plain : nType == 1 ? &colored : nullptr; }

    /// Stores a point as AddPnt does with a colour.
    bool Add(double x, double y, double z, const std::array<std::uint8_t, 3>& color);
};

#endif

#ifndef SUPPORT_CREFQUERY_H
#define SUPPORT_CREFQUERY_H

#include <tests/support/RefTree.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class CRecColorListener;
class CRecListener;
class CCallLog;

namespace Ref
{

struct CPlane
{
    double a;
    double b;
    double c;
    double d;

    bool InFront(double x, double y, double z) const { return a * x + b * y + c * z + d > 0.0; }
};

/// A store of the model: points in tree order, marks, origin.
struct CStore
{
    std::vector<CPnt> pnts;
    CTree tree;
    bool hasTree = false;
    std::vector<bool> deleted;
    std::vector<bool> selected;
    std::array<float, 3> org{};
};

/// What a query delivers by the model: point indices in order, and the tree's counters after it.
class CQuery
{
public:
    explicit CQuery(const CStore& store) : m_store(store) {}

    void All();
    void Lod(double lod);
    void Clip(const std::vector<CPlane>& planes);
    void LodClip(double lod, const std::vector<CPlane>& planes);

    const std::vector<int>& GetIndices() const { return m_indices; }
    int GetPntCounter() const { return m_numPnts; }
    int GetLeafCounter() const { return m_numLeaves; } ///< leaves counted by this query alone

private:
    std::int64_t CalcLimit(double lod) const;
    std::vector<CPlane> ToStoreFrame(const std::vector<CPlane>& planes) const;
    int FindRepresentative(const CNode& node) const;
    int FindLive(const CChild& leaf) const;
    bool IsDeleted(int i) const { return m_store.deleted[static_cast<std::size_t>(i)]; }
    void WalkLod(const CNode& node, std::int64_t depth, std::int64_t limit);
    void WalkClip(const CNode& node, const std::vector<CPlane>& planes, const CCube& cube);
    void WalkLodClip(const CNode& node, std::int64_t depth, std::int64_t limit,
                     const std::vector<CPlane>& planes, const CCube& cube);
    void ClipLeaf(const CChild& leaf, const std::vector<CPlane>& planes, const CCube& cube, bool onePnt);

    const CStore& m_store;
    std::vector<int> m_indices;
    int m_numPnts = 0;
    int m_numLeaves = 0;
};

/// How the recording listeners were set for a query.
struct CHost
{
    bool color; ///< the store is one with colour
    bool alter; ///< the colour listener changes colours
    bool spoil; ///< the host writes into the records
    int batch;  ///< records a batch, as given
};

/// Compares everything that the listeners recorded of one query with what the model says: calls and
/// their order, batches, records bit for bit, colours as they came in. @return empty, or the difference.
std::string DiffDelivery(const CStore& store, const std::vector<int>& indices, const CHost& host,
                         const CRecListener& rec, const CRecColorListener& recColor, const CCallLog& log);

} // namespace Ref

#endif

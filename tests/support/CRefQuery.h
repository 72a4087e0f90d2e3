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

struct Plane
{
    double a;
    double b;
    double c;
    double d;

    bool InFront(double x, double y, double z) const { return a * x + b * y + c * z + d > 0.0; }
};

/// A store of the model: points in tree order, marks, origin.
struct Store
{
    std::vector<Pnt> pnts;
    Tree tree;
    bool hasTree = false;
    std::vector<bool> deleted;
    std::vector<bool> selected;
    std::array<float, 3> org{};
};

/// What a query delivers by the model: point indices in order, and the tree's counters after it.
class CQuery
{
public:
    explicit CQuery(const Store& store) : m_store(store) {}

    void All();
    void Lod(double lod);
    void Clip(const std::vector<Plane>& planes);
    void LodClip(double lod, const std::vector<Plane>& planes);

    const std::vector<int>& GetIndices() const { return m_indices; }
    int GetPntCounter() const { return m_numPnts; }
    int GetLeafCounter() const { return m_numLeaves; } ///< leaves counted by this query alone

private:
    std::int64_t CalcLimit(double lod) const;
    std::vector<Plane> ToStoreFrame(const std::vector<Plane>& planes) const;
    int FindRepresentative(const Node& node) const;
    int FindLive(const Child& leaf) const;
    bool IsDeleted(int i) const { return m_store.deleted[static_cast<std::size_t>(i)]; }
    void WalkLod(const Node& node, std::int64_t depth, std::int64_t limit);
    void WalkClip(const Node& node, const std::vector<Plane>& planes, const Cube& cube);
    void WalkLodClip(const Node& node, std::int64_t depth, std::int64_t limit,
                     const std::vector<Plane>& planes, const Cube& cube);
    void ClipLeaf(const Child& leaf, const std::vector<Plane>& planes, const Cube& cube, bool onePnt);

    const Store& m_store;
    std::vector<int> m_indices;
    int m_numPnts = 0;
    int m_numLeaves = 0;
};

/// How the recording listeners were set for a query.
struct Host
{
    bool color; ///< the store is one with colour
    bool alter; ///< the colour listener changes colours
    bool spoil; ///< the host writes into the records
    int batch;  ///< records a batch, as given
};

/// Compares everything that the listeners recorded of one query with what the model says: calls and
/// their order, batches, records bit for bit, colours as they came in. @return empty, or the difference.
std::string DiffDelivery(const Store& store, const std::vector<int>& indices, const Host& host,
                         const CRecListener& rec, const CRecColorListener& recColor, const CCallLog& log);

} // namespace Ref

#endif

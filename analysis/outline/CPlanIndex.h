#ifndef ANALYSIS_OUTLINE_CPLANINDEX_H
#define ANALYSIS_OUTLINE_CPLANINDEX_H

#include <analysis/outline/COpenPnts.h>
#include <analysis/outline/CStepRings.h>
#include <octree/COcTreeIndex.h>
#include <octree/CPlanSquare.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

/// The points of a set by their place in plan view, found as the tree would find them.
///
/// The tree finds a point through the square of its leaf, in which it need not lie (L4), and shows points
/// leaf by leaf. The index keeps the squares of those that lie outside, which are few, and relies on leaves
/// that follow each other in the array, so that points come by their indices.
template <class T>
class CPlanIndex
{
public:
    /// @param pOpen  one bit a point: the set.
    /// @return null where leaves do not follow each other, or many points lie outside their squares.
    ///         Throws std::bad_alloc.
    static std::unique_ptr<CPlanIndex> Make(const COcTreeIndex& tree, const T* pPnts,
                                            const unsigned char* pOpen);

    COpenPnts& GetPnts() noexcept { return m_pnts; }

    /// @return the first ring around a place in which the tree finds a point, CStepRings::GetNum() for none.
    /// @param dSquare  of the distance between them.
    int FindRing(const CStepRings& rings, std::int32_t nIndex, const T& place, double dSquare) const noexcept
    {
        const int nRing = rings.Find(dSquare, 0);
        return m_vecOutside.empty() ? nRing : FindOutside(rings, nIndex, place, nRing);
    }

private:
    /// A point that does not lie in the square of its leaf.
    struct COutside
    {
        std::int32_t nIndex;
        CPlanSquare square;
    };

    class CMaker;

    CPlanIndex(std::vector<COpenPnts::CEntry> vecEntries, std::vector<COutside> vecOutside)
        : m_pnts(std::move(vecEntries)), m_vecOutside(std::move(vecOutside))
    {
    }

    int FindOutside(const CStepRings& rings, std::int32_t nIndex, const T& place, int nRing) const noexcept;

    COpenPnts m_pnts;
    std::vector<COutside> m_vecOutside; // by index
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class CPlanIndex<CTruncPnt>;
extern template class CPlanIndex<CTruncPnt_Color>;

#endif

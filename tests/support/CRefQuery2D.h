#ifndef SUPPORT_CREFQUERY2D_H
#define SUPPORT_CREFQUERY2D_H

#include <tests/support/CRefQuery.h>
#include <zor3geom/PNT_2D.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <vector>

namespace Ref
{

/// The contour queries and the search for a point, plain: every square is handed to the polygon clipper
/// with the whole region, every point is tested against the whole ring.
class CQuery2D
{
public:
    explicit CQuery2D(const CStore& store) : m_store(store) {}

    void IntCnt(const std::vector<zor::geom::PNT_2D>& contour);
    void Cnts(const std::vector<zor::geom::PNT_2D>& outer,
              const std::vector<std::vector<zor::geom::PNT_2D>>& holes);

    /// @return index of the first live point at a compact plan position, or -1.
    int FindExact(std::int32_t x, std::int32_t y) const;

    const std::vector<int>& GetIndices() const { return m_indices; }

private:
    void WalkContour(const CNode& node, const CCube& cube, bool check);
    void VisitLeaf(const CChild& leaf, bool check);
    bool IsWanted(int i) const;
    int Classify(const CCube& cube) const;
    int FindExact(const CNode& node, const CCube& cube, std::int32_t x, std::int32_t y) const;

    const CStore& m_store;
    zor::geom::TMultiPartPolygon m_region;
    bool m_inverted = false;
    std::vector<int> m_indices;
};

} // namespace Ref

#endif

#ifndef ZOR3GEOM_CRINGINDEX_H
#define ZOR3GEOM_CRINGINDEX_H

#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_2D.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zor::geom
{

/// A ring prepared for many questions: its edges by bands of y, so that a point is held against the edges
/// near its height only.
///
/// Cost: linear to make; a question costs about as many edges as a horizontal line meets. Exact, as
/// `IsPntInsidePolygon` is.
class CRingIndex
{
public:
    enum class enumPlace
    {
        Outside,
        OnEdge,
        Inside ///< by the odd-even rule where the ring crosses itself
    };

    /// @param ring  closing edge implied, either way round. Fewer than three points, or a coordinate that is
    ///              not finite: everything is outside.
    explicit CRingIndex(const std::vector<PNT_2D>& ring);

    enumPlace Find(const PNT_2D& pnt) const noexcept;

    /// @return the box of the ring; where everything is outside, a box that holds nothing.
    const RECT_2D& GetBox() const noexcept { return m_box; }

private:
    struct CEdge
    {
        PNT_2D a;
        PNT_2D b;
    };

    std::size_t FindBand(double y) const noexcept;
    std::size_t FindFirst(const CEdge& edge) const noexcept;
    std::size_t FindLast(const CEdge& edge) const noexcept;
    std::size_t ChooseNumBands();

    std::vector<CEdge> m_vecEdges;
    RECT_2D m_box;
    std::size_t m_nNumBands = 1;
    std::vector<std::size_t> m_vecBegin;     // where each band begins, and where the last one ends
    std::vector<std::uint32_t> m_vecInBands; // edges, band after band
};

} // namespace zor::geom

#endif

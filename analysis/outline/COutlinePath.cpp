#include <analysis/outline/COutlinePath.h>

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <zor3geom/LINE_2D.h>

#include <algorithm>
#include <cmath>
#include <utility>

using zor::geom::LINE_2D;
using zor::geom::TPlanBox;

namespace
{

template <class T>
LINE_2D MakeLine(const T& a, const T& b) noexcept
{
    return {static_cast<double>(a.m_nX), static_cast<double>(a.m_nY), static_cast<double>(b.m_nX),
            static_cast<double>(b.m_nY)};
}

template <class T>
TPlanBox<std::int32_t> MakeBox(const T& a, const T& b) noexcept
{
    return TPlanBox<std::int32_t>::Around(a.m_nX, a.m_nY, b.m_nX, b.m_nY);
}

template <class T>
bool AreStacked(const T& a, const T& b) noexcept
{
    return a.m_nX == b.m_nX && a.m_nY == b.m_nY;
}

} // namespace

/// A segment that might become the next one of a path.
template <class T>
class COutlinePath<T>::CCandidate
{
public:
    /// @param bCloses  whether it closes the path: it then ends at the path's first point.
    CCandidate(const T& from, const T& to, bool bCloses) noexcept
        : m_line(MakeLine(from, to)), m_box(MakeBox(from, to)), m_to(to), m_bCloses(bCloses),
          m_dx(m_line.x2 - m_line.x1), m_dy(m_line.y2 - m_line.y1)
    {
    }

    const LINE_2D& GetLine() const noexcept { return m_line; }
    bool Meets(const LINE_2D& line) const noexcept { return m_line.intersect(line); }
    bool MeetsBox(const TBox& box) const noexcept { return m_box.Meets(box); }

    /// May it meet a segment that begins there?
    bool MayTouch(const T& begin) const noexcept { return m_bCloses && AreStacked(begin, m_to); }

    /// @return false only for a box in which nothing can meet the segment: one beside its box, or
    ///         wholly on one side of its line.
    bool MayMeet(const TBox& box) const noexcept
    {
        if (!m_box.Meets(box))
            return false;
        constexpr double c_dRounding = 1.0e-14;
        const double dHalfX = (static_cast<double>(box.xmax) - static_cast<double>(box.xmin)) / 2.0;
        const double dHalfY = (static_cast<double>(box.ymax) - static_cast<double>(box.ymin)) / 2.0;
        const double a = m_dx * (static_cast<double>(box.ymin) + dHalfY - m_line.y1);
        const double b = m_dy * (static_cast<double>(box.xmin) + dHalfX - m_line.x1);
        const double dReach = std::fabs(m_dx) * dHalfY + std::fabs(m_dy) * dHalfX;
        return std::fabs(a - b) <= dReach + c_dRounding * (std::fabs(a) + std::fabs(b) + dReach);
    }

private:
    LINE_2D m_line;
    TBox m_box;
    const T& m_to;
    bool m_bCloses;
    double m_dx;
    double m_dy;
};

/// Box of segment i (level 0), or box i of the level below.
template <class T>
typename COutlinePath<T>::TBox COutlinePath<T>::GetItem(std::size_t nLevel, std::size_t i) const noexcept
{
    return nLevel == 0 ? MakeBox(GetPnt(i), GetPnt(i + 1)) : m_vecLevels[nLevel - 1][i];
}

template <class T>
typename COutlinePath<T>::TBox COutlinePath<T>::CalcBlock(std::size_t nLevel,
                                                          std::size_t nBlock) const noexcept
{
    const std::size_t nBegin = nBlock * c_nFanOut;
    const std::size_t nEnd = std::min(nBegin + c_nFanOut, GetNumItems(nLevel));
    TBox box = GetItem(nLevel, nBegin);
    for (std::size_t i = nBegin + 1; i < nEnd; ++i)
        box.Extend(GetItem(nLevel, i));
    return box;
}

// A level above the first exists as long as it has two items or more to stand around, so the topmost level
// has one box.
template <class T>
void COutlinePath<T>::Push(std::int32_t nIndex)
{
    m_vecPath.push_back(nIndex);
    if (m_vecPath.size() < 2)
        return;
    std::size_t i = m_vecPath.size() - 2;
    const TBox box = GetItem(0, i);
    if (m_pGrid != nullptr)
    {
        m_pGrid->Push(box);
        return;
    }
    for (std::size_t nLevel = 0; nLevel == 0 || i != 0; ++nLevel)
    {
        if (nLevel == m_vecLevels.size())
            m_vecLevels.emplace_back();
        std::vector<TBox>& vecBoxes = m_vecLevels[nLevel];
        i /= c_nFanOut;
        if (i == vecBoxes.size())
            vecBoxes.push_back(CalcBlock(nLevel, i));
        else
            vecBoxes[i].Extend(box);
    }
}

template <class T>
void COutlinePath<T>::Pop() noexcept
{
    if (m_pGrid != nullptr)
    {
        if (m_vecPath.size() > 1)
            m_pGrid->Pop(GetItem(0, m_vecPath.size() - 2));
        m_vecPath.pop_back();
        return;
    }
    m_vecPath.pop_back();
    if (m_vecPath.empty())
        return;
    std::size_t i = m_vecPath.size() - 1; // the segment, and on each level the item, that changes
    for (std::size_t nLevel = 0; nLevel < m_vecLevels.size(); ++nLevel)
    {
        std::vector<TBox>& vecBoxes = m_vecLevels[nLevel];
        if (nLevel > 0 && GetNumItems(nLevel) < 2)
        {
            m_vecLevels.pop_back();
            return;
        }
        i /= c_nFanOut;
        if (i * c_nFanOut < GetNumItems(nLevel))
            vecBoxes[i] = CalcBlock(nLevel, i);
        else
            vecBoxes.pop_back();
    }
}

/// Does the candidate meet segment i in a way that counts?
template <class T>
bool COutlinePath<T>::MeetsSegment(const CCandidate& candidate, std::size_t i) const noexcept
{
    const T& from = GetPnt(i);
    const T& to = GetPnt(i + 1);
    return candidate.MeetsBox(MakeBox(from, to)) && candidate.Meets(MakeLine(from, to)) &&
           !candidate.MayTouch(from);
}

/// Does the candidate meet a segment under a box? The recursion is bounded: eight levels hold more
/// segments than there are indices.
template <class T>
bool COutlinePath<T>::MeetsBlock(const CCandidate& candidate, std::size_t nLevel,
                                 std::size_t nBlock) const noexcept
{
    const std::size_t nBegin = nBlock * c_nFanOut;
    // The last segment ends where the candidate begins.
    const std::size_t nNumItems = nLevel == 0 ? GetNumItems(0) - 1 : GetNumItems(nLevel);
    for (std::size_t i = std::min(nBegin + c_nFanOut, nNumItems); i-- > nBegin;)
    {
        ++m_nNumLooks;
        if (nLevel == 0
                ? MeetsSegment(candidate, i)
                : candidate.MayMeet(m_vecLevels[nLevel - 1][i]) && MeetsBlock(candidate, nLevel - 1, i))
            return true;
    }
    return false;
}

template <class T>
void COutlinePath<T>::MakeGrid(TBox box, std::size_t nNumCells)
{
    for (const std::int32_t nIndex : m_vecPath)
        box.Add(m_pPnts[nIndex].m_nX, m_pPnts[nIndex].m_nY);
    auto pGrid = std::make_unique<CSegmentGrid>(box, nNumCells);
    for (std::size_t i = 0; i + 1 < m_vecPath.size(); ++i)
        pGrid->Push(GetItem(0, i));
    m_pGrid = std::move(pGrid);
    m_vecLevels.clear();
}

template <class T>
bool COutlinePath<T>::IsCrossedBy(std::int32_t nIndex) const noexcept
{
    if (m_vecPath.size() < 3)
        return false;
    const CCandidate candidate(m_pPnts[GetLast()], m_pPnts[nIndex], nIndex == GetFirst());
    if (m_pGrid != nullptr)
    {
        const auto meets = [&](std::int32_t nSegment)
        {
            ++m_nNumLooks;
            const auto i = static_cast<std::size_t>(nSegment);
            return i + 2 < m_vecPath.size() && MeetsSegment(candidate, i); // the last one ends here
        };
        return m_pGrid->FindAlong(candidate.GetLine(), meets);
    }
    return MeetsBlock(candidate, m_vecLevels.size() - 1, 0);
}

template class COutlinePath<CTruncPnt>;
template class COutlinePath<CTruncPnt_Color>;

#include <tests/support/CRefQuery.h>

#include <tests/support/CRecListener.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

namespace Ref
{

namespace
{

enum class enumSide
{
    Inside,
    Straddling,
    Outside
};

enumSide ClassifyCube(const CPlane& plane, const CCube& cube)
{
    const std::int64_t h = cube.edge / 2;
    bool first = false;
    for (int corner = 0; corner < 8; ++corner)
    {
        const double x = static_cast<double>(corner >= 4 ? cube.x + h : cube.x - h);
        const double y = static_cast<double>(corner % 4 >= 2 ? cube.y + h : cube.y - h);
        const double z = static_cast<double>(corner % 2 == 1 ? cube.z + h : cube.z - h);
        const bool inFront = plane.InFront(x, y, z);
        if (corner == 0)
            first = inFront;
        else if (inFront != first)
            return enumSide::Straddling;
    }
    return first ? enumSide::Outside : enumSide::Inside;
}

/// @return false when the cube lies outside one of the planes; else `list` holds those that straddle it.
bool Narrow(const std::vector<CPlane>& planes, const CCube& cube, std::vector<CPlane>& list)
{
    for (const CPlane& plane : planes)
    {
        const enumSide side = ClassifyCube(plane, cube);
        if (side == enumSide::Outside)
            return false;
        if (side == enumSide::Straddling)
            list.push_back(plane);
    }
    return true;
}

/// A floating result as a 32-bit integer, saturated.
std::int64_t ToInt32(double d)
{
    return static_cast<std::int64_t>(std::max(-2147483648.0, std::min(2147483647.0, d)));
}

bool IsSpacing(double lod)
{
    return !std::isnan(lod) && lod > 0.0;
}

template <class N>
bool HasSameBits(N a, N b)
{
    return std::memcmp(&a, &b, sizeof a) == 0; // NOLINT(bugprone-suspicious-memory-comparison,cert-*)
}

} // namespace

std::int64_t CQuery::CalcLimit(double lod) const
{
    // Of an integer the rounded-up logarithm is a matter of counting bits.
    std::int64_t up = -2147483648LL;
    if (m_store.tree.cube.edge > 0)
        for (up = 0; (std::int64_t{1} << up) < m_store.tree.cube.edge;)
            ++up;
    return up - ToInt32(std::floor(std::log2(lod * 10000.0)));
}

std::vector<CPlane> CQuery::ToStoreFrame(const std::vector<CPlane>& planes) const
{
    std::vector<CPlane> moved = planes;
    for (CPlane& plane : moved)
    {
        plane.d = plane.d + (plane.a * static_cast<double>(m_store.org[0]) +
                             plane.b * static_cast<double>(m_store.org[1]) +
                             plane.c * static_cast<double>(m_store.org[2]));
        plane.d = plane.d * 10000.0;
    }
    return moved;
}

int CQuery::FindLive(const CChild& leaf) const
{
    for (int i = leaf.first; i < leaf.first + leaf.count; ++i)
        if (!IsDeleted(i))
            return i;
    return -1;
}

int CQuery::FindRepresentative(const CNode& node) const
{
    const CChild* last = nullptr;
    for (const auto& child : node.child)
    {
        if (child == nullptr)
            continue;
        if (child->leaf)
            return FindLive(*child);
        last = child.get();
    }
    return last == nullptr ? -1 : FindRepresentative(*last->node);
}

void CQuery::All()
{
    for (std::size_t i = 0; i < m_store.pnts.size(); ++i)
        if (!m_store.deleted[i])
            m_indices.push_back(static_cast<int>(i));
}

void CQuery::Lod(double lod)
{
    if (m_store.tree.root != nullptr)
        WalkLod(*m_store.tree.root, 0, IsSpacing(lod) ? CalcLimit(lod) : -1);
}

void CQuery::WalkLod(const CNode& node, std::int64_t depth, std::int64_t limit)
{
    if (depth == limit)
    {
        const int i = FindRepresentative(node);
        if (i != -1)
            m_indices.push_back(i);
        return;
    }
    for (const auto& child : node.child)
    {
        if (child == nullptr)
            continue;
        if (!child->leaf)
        {
            WalkLod(*child->node, depth + 1, limit);
        }
        else if (depth == limit - 1)
        {
            const int i = FindLive(*child);
            if (i != -1)
                m_indices.push_back(i);
        }
        else
        {
            for (int i = child->first; i < child->first + child->count; ++i)
                if (!IsDeleted(i))
                    m_indices.push_back(i);
            ++m_numLeaves;
        }
    }
}

void CQuery::Clip(const std::vector<CPlane>& planes)
{
    if (m_store.tree.root != nullptr)
        WalkClip(*m_store.tree.root, ToStoreFrame(planes), m_store.tree.cube);
}

void CQuery::WalkClip(const CNode& node, const std::vector<CPlane>& planes, const CCube& cube)
{
    std::vector<CPlane> list;
    if (!Narrow(planes, cube, list))
        return;
    for (int k = 0; k < 8; ++k)
    {
        const CChild* const child = node.child[static_cast<std::size_t>(k)].get();
        if (child == nullptr)
            continue;
        if (child->leaf)
            ClipLeaf(*child, list, ChildCube(cube, k), false);
        else
            WalkClip(*child->node, list, ChildCube(cube, k));
    }
}

void CQuery::ClipLeaf(const CChild& leaf, const std::vector<CPlane>& planes, const CCube& cube, bool onePnt)
{
    std::vector<CPlane> list;
    if (!Narrow(planes, cube, list))
        return;
    if (onePnt)
    {
        const int i = FindLive(leaf);
        if (i == -1)
            return;
        m_indices.push_back(i);
        ++m_numPnts;
        return;
    }
    for (int i = leaf.first; i < leaf.first + leaf.count; ++i)
    {
        const CPnt& pnt = m_store.pnts[static_cast<std::size_t>(i)];
        bool rejected = IsDeleted(i);
        for (const CPlane& plane : list)
            rejected = rejected || plane.InFront(pnt.x, pnt.y, pnt.z);
        if (rejected)
            continue;
        m_indices.push_back(i);
        ++m_numPnts;
    }
    ++m_numLeaves;
}

void CQuery::LodClip(double lod, const std::vector<CPlane>& planes)
{
    if (!IsSpacing(lod))
        Clip(planes);
    else if (m_store.tree.root != nullptr)
        WalkLodClip(*m_store.tree.root, 0, CalcLimit(lod), ToStoreFrame(planes), m_store.tree.cube);
}

void CQuery::WalkLodClip(const CNode& node, std::int64_t depth, std::int64_t limit,
                         const std::vector<CPlane>& planes, const CCube& cube)
{
    if (depth == limit)
    {
        const int i = FindRepresentative(node);
        if (i != -1)
        {
            m_indices.push_back(i);
            ++m_numPnts;
            return;
        }
    }
    const bool onePnt = depth >= limit - 1;
    std::vector<CPlane> list;
    if (!Narrow(planes, cube, list))
        return;
    for (int k = 0; k < 8; ++k)
    {
        const CChild* const child = node.child[static_cast<std::size_t>(k)].get();
        if (child == nullptr)
            continue;
        if (child->leaf)
            ClipLeaf(*child, list, ChildCube(cube, k), onePnt);
        else
            WalkLodClip(*child->node, depth + 1, limit, list, ChildCube(cube, k));
    }
}

namespace
{

/// The records that the host gets, one after the other, and the colours that the colour listener gets:
/// a simulation of the query's buffer, in which a record keeps its colour from one batch to the next.
struct CDelivery
{
    std::vector<CCldCadPnt> pnts;
    std::vector<CRecColorListener::CEntry> entries;
    std::vector<int> calls{CCallLog::c_nSetZRange};
};

void SetFields(CCldCadPnt& rec, const CStore& store, int index, bool color)
{
    const CPnt& pnt = store.pnts[static_cast<std::size_t>(index)];
    rec.m_pnt.x = pnt.x / 10000.0 + static_cast<double>(store.org[0]);
    rec.m_pnt.y = pnt.y / 10000.0 + static_cast<double>(store.org[1]);
    rec.m_pnt.z = pnt.z / 10000.0 + static_cast<double>(store.org[2]);
    if (color)
    {
        rec.m_fR = static_cast<float>(pnt.r / 255.0);
        rec.m_fG = static_cast<float>(pnt.g / 255.0);
        rec.m_fB = static_cast<float>(pnt.b / 255.0);
    }
    rec.m_nIndex = index;
    rec.m_bSel = store.selected[static_cast<std::size_t>(index)];
}

CDelivery Simulate(const CStore& store, const std::vector<int>& indices, const CHost& host)
{
    CDelivery delivery;
    const std::size_t size = host.batch < 1 ? 1 : static_cast<std::size_t>(host.batch);
    std::vector<CCldCadPnt> buffer(std::min(size, indices.size()));
    std::size_t fill = 0;
    for (std::size_t i = 0; i < indices.size(); ++i)
    {
        CCldCadPnt& rec = buffer[fill];
        SetFields(rec, store, indices[i], host.color);
        delivery.entries.push_back({rec.m_pnt.z, rec.m_fR, rec.m_fG, rec.m_fB});
        delivery.calls.push_back(CCallLog::c_nGetColor);
        if (host.alter)
            CRecColorListener::Alter(rec.m_pnt.z, rec.m_fR, rec.m_fG, rec.m_fB);
        delivery.pnts.push_back(rec);
        if (++fill < size && i + 1 < indices.size())
            continue;
        delivery.calls.push_back(static_cast<int>(fill));
        for (std::size_t k = 0; host.spoil && k < fill; ++k)
        {
            buffer[k].m_fR = 0.125F;
            buffer[k].m_fG = 0.25F;
            buffer[k].m_fB = 0.375F;
        }
        fill = 0;
    }
    return delivery;
}

bool IsSame(const CCldCadPnt& a, const CCldCadPnt& b)
{
    return HasSameBits(a.m_pnt.x, b.m_pnt.x) && HasSameBits(a.m_pnt.y, b.m_pnt.y) &&
           HasSameBits(a.m_pnt.z, b.m_pnt.z) && HasSameBits(a.m_fR, b.m_fR) && HasSameBits(a.m_fG, b.m_fG) &&
           HasSameBits(a.m_fB, b.m_fB) && a.m_nIndex == b.m_nIndex && a.m_bSel == b.m_bSel;
}

bool IsSame(const CRecColorListener::CEntry& a, const CRecColorListener::CEntry& b)
{
    return HasSameBits(a.z, b.z) && HasSameBits(a.r, b.r) && HasSameBits(a.g, b.g) && HasSameBits(a.b, b.b);
}

template <class V>
std::string DiffEach(const char* what, const V& is, const V& shall)
{
    std::ostringstream text;
    for (std::size_t i = 0; i < std::min(is.size(), shall.size()); ++i)
    {
        if (IsSame(is[i], shall[i]))
            continue;
        text << what << " " << i << " differs";
        return text.str();
    }
    if (is.size() != shall.size())
        text << is.size() << " " << what << "s instead of " << shall.size();
    return text.str();
}

} // namespace

std::string DiffDelivery(const CStore& store, const std::vector<int>& indices, const CHost& host,
                         const CRecListener& rec, const CRecColorListener& recColor, const CCallLog& log)
{
    const std::vector<int> delivered = rec.GetIndices();
    if (delivered != indices)
    {
        const auto at = std::mismatch(delivered.begin(), delivered.end(), indices.begin(), indices.end());
        std::ostringstream text;
        text << delivered.size() << " points instead of " << indices.size() << ", position "
             << at.first - delivered.begin() << " differs";
        return text.str();
    }
    const CDelivery delivery = Simulate(store, indices, host);
    if (log.GetCalls() != delivery.calls)
        return "calls or batches differ";
    std::array<double, 6> box{1.7e200, 1.7e200, 1.7e200, 1.7e200, 1.7e200, 1.7e200};
    if (store.hasTree)
        box = CalcBox(store.tree, store.org);
    if (!HasSameBits(recColor.GetRanges().at(0).first, box[2]) ||
        !HasSameBits(recColor.GetRanges().at(0).second, box[5]))
        return "height range differs";
    const std::string diff = DiffEach("record", rec.GetPnts(), delivery.pnts);
    return diff.empty() ? DiffEach("colour call", recColor.GetEntries(), delivery.entries) : diff;
}

} // namespace Ref

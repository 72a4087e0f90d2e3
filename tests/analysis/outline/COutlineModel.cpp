#include <tests/analysis/outline/COutlineModel.h>

#include <algorithm>
#include <cmath>

namespace
{

__extension__ typedef __int128 TWide;

constexpr double c_dPi = 3.14159265358979323846;

bool IsBeside(const Ref::CCube& cube, const std::array<double, 4>& box)
{
    const std::int64_t h = cube.edge / 2;
    return static_cast<double>(cube.x - h) > box[2] || box[0] > static_cast<double>(cube.x + h) ||
           static_cast<double>(cube.y - h) > box[3] || box[1] > static_cast<double>(cube.y + h);
}

void Collect(const Ref::CNode& node, const Ref::CCube& cube, const std::array<double, 4>& box,
             std::vector<std::pair<int, int>>& vecLeaves)
{
    if (IsBeside(cube, box))
        return;
    for (int k = 0; k < 8; ++k)
    {
        const Ref::CChild* const pChild = node.child[static_cast<std::size_t>(k)].get();
        const Ref::CCube childCube = Ref::ChildCube(cube, k);
        if (pChild == nullptr)
            continue;
        if (!pChild->leaf)
            Collect(*pChild->node, childCube, box, vecLeaves);
        else if (!IsBeside(childCube, box))
            vecLeaves.emplace_back(pChild->first, pChild->count);
    }
}

} // namespace

int CRefSegment::Side(std::int64_t x, std::int64_t y) const
{
    const TWide n = static_cast<TWide>(bx - ax) * (y - ay) - static_cast<TWide>(by - ay) * (x - ax);
    return n > 0 ? 1 : n < 0 ? -1 : 0;
}

bool CRefSegment::Holds(std::int64_t x, std::int64_t y) const
{
    return Side(x, y) == 0 && std::min(ax, bx) <= x && x <= std::max(ax, bx) && std::min(ay, by) <= y &&
           y <= std::max(ay, by);
}

// A true crossing, or an end of one on the other.
bool CRefSegment::Meets(const CRefSegment& o) const
{
    if (Side(o.ax, o.ay) * Side(o.bx, o.by) < 0 && o.Side(ax, ay) * o.Side(bx, by) < 0)
        return true;
    return Holds(o.ax, o.ay) || Holds(o.bx, o.by) || o.Holds(ax, ay) || o.Holds(bx, by);
}

COutlineModel::COutlineModel(const Ref::CStore& store, double d)
    : m_store(store), m_dDistance(d * 10000.0), m_nNum(static_cast<int>(store.pnts.size()))
{
    FindClusters();
    FindLargest();
    if (m_store.tree.root)
        FindStart();
    if (m_nStart != -1)
        Walk();
}

std::set<int> COutlineModel::GetOpen()
{
    std::set<int> setOpen;
    for (int i = 0; i < m_nNum; ++i)
        if (FindRoot(i) == m_nLargest && m_setDead.count(i) == 0)
            setOpen.insert(i);
    return setOpen;
}

std::vector<int> COutlineModel::GetClusters()
{
    std::vector<int> vecFirst;
    for (int i = 0; i < m_nNum; ++i)
    {
        int k = 0;
        while (FindRoot(k) != FindRoot(i))
            ++k;
        vecFirst.push_back(k);
    }
    return vecFirst;
}

std::vector<std::pair<int, int>> COutlineModel::CollectLeaves(const Ref::CTree& tree,
                                                              const std::array<double, 4>& box)
{
    std::vector<std::pair<int, int>> vecLeaves;
    if (tree.root)
        Collect(*tree.root, tree.cube, box, vecLeaves);
    return vecLeaves;
}

std::vector<int> COutlineModel::CollectPnts(int i, double r) const
{
    const double x = static_cast<double>(X(i));
    const double y = static_cast<double>(Y(i));
    std::vector<int> vecPnts;
    for (const auto& leaf : CollectLeaves(m_store.tree, {x - r, y - r, x + r, y + r}))
        for (int k = leaf.first; k < leaf.first + leaf.second; ++k)
            vecPnts.push_back(k);
    return vecPnts;
}

bool COutlineModel::IsFar(int a, int b, double r) const
{
    const double dx = static_cast<double>(X(b) - X(a));
    const double dy = static_cast<double>(Y(b) - Y(a));
    return dx * dx + dy * dy > r * r;
}

double COutlineModel::Angle(int a, int b) const
{
    return std::atan2(static_cast<double>(Y(b) - Y(a)), static_cast<double>(X(b) - X(a)));
}

// --- clusters ----------------------------------------------------------------------------------

int COutlineModel::FindRoot(int i)
{
    int nRoot = i;
    while (m_vecParent[static_cast<std::size_t>(nRoot)] != nRoot)
        nRoot = m_vecParent[static_cast<std::size_t>(nRoot)];
    while (i != nRoot)
        i = std::exchange(m_vecParent[static_cast<std::size_t>(i)], nRoot);
    return nRoot;
}

void COutlineModel::FindClusters()
{
    for (int i = 0; i < m_nNum; ++i)
        m_vecParent.push_back(i);
    for (int i = 0; i < m_nNum; ++i)
    {
        m_vecProgress.push_back(static_cast<int>(i * 100.0 / m_nNum));
        if (m_setReached.count(i) == 0)
            Expand(i);
    }
}

void COutlineModel::Expand(int i)
{
    for (const int k : CollectPnts(i, m_dDistance))
    {
        if (m_store.deleted[static_cast<std::size_t>(k)] || IsStacked(i, k) || IsFar(i, k, m_dDistance) ||
            k <= i)
            continue;
        m_setReached.insert(k);
        const int a = FindRoot(i);
        const int b = FindRoot(k);
        if (a != b)
            m_vecParent[static_cast<std::size_t>(b)] = a;
    }
}

void COutlineModel::FindLargest()
{
    std::vector<std::pair<int, int>> vecTally;
    for (int p = 0; p < m_nNum; ++p)
    {
        const int nRoot = FindRoot(p);
        const auto it = std::find_if(vecTally.begin(), vecTally.end(),
                                     [=](const auto& entry) { return entry.first == nRoot; });
        if (it == vecTally.end())
            vecTally.emplace_back(nRoot, 1);
        else
            ++it->second;
    }
    int nBest = 0;
    for (const auto& entry : vecTally)
    {
        if (entry.second > nBest)
        {
            nBest = entry.second;
            m_nLargest = entry.first;
        }
    }
}

// --- start point -------------------------------------------------------------------------------

bool COutlineModel::HoldsCluster(const Ref::CChild& leaf)
{
    for (int i = leaf.first; i < leaf.first + leaf.count; ++i)
        if (FindRoot(i) == m_nLargest)
            return true;
    return false;
}

void COutlineModel::SearchLeaves(const Ref::CNode& node, const Ref::CCube& cube, std::int64_t& nLimit)
{
    bool bLowerLeaf = false;
    for (int k = 0; k < 8; ++k)
    {
        const Ref::CChild* const pChild = node.child[static_cast<std::size_t>(k)].get();
        const Ref::CCube childCube = Ref::ChildCube(cube, k);
        const std::int64_t h = childCube.edge / 2;
        if (pChild == nullptr || (k >= 4 && bLowerLeaf) || childCube.x - h >= nLimit)
            continue;
        if (!pChild->leaf)
            SearchLeaves(*pChild->node, childCube, nLimit);
        else if (HoldsCluster(*pChild))
        {
            m_vecRecorded.push_back({childCube.x - h, pChild->first, pChild->count});
            nLimit = std::min(nLimit, childCube.x + h);
            bLowerLeaf = bLowerLeaf || k < 4;
        }
    }
}

void COutlineModel::FindStart()
{
    std::int64_t nLimit = m_store.tree.cube.x + m_store.tree.cube.edge / 2;
    SearchLeaves(*m_store.tree.root, m_store.tree.cube, nLimit);
    std::int64_t nBest = nLimit;
    for (const CRecorded& recorded : m_vecRecorded)
    {
        if (recorded.nXMin > nLimit)
            continue;
        for (int i = recorded.nFirst; i < recorded.nFirst + recorded.nCount; ++i)
        {
            if (FindRoot(i) == m_nLargest && X(i) < nBest)
            {
                nBest = X(i);
                m_nStart = i;
            }
        }
    }
}

// --- walk --------------------------------------------------------------------------------------

void COutlineModel::Walk()
{
    const double s = m_dDistance;
    m_vecPath.push_back(m_nStart);
    while (true)
    {
        double r = 0.0;
        int nFound = -1;
        do
        {
            r += s;
            nFound = FindNext(r);
        } while (nFound == -1 && r < 10 * s);
        if (nFound != -1)
        {
            m_vecPath.push_back(nFound);
        }
        else
        {
            m_setDead.insert(m_vecPath.back());
            m_vecPath.pop_back();
        }
        if (m_vecPath.empty())
            return;
        if (nFound == m_nStart)
            break;
    }
    m_bClosed = m_vecPath.size() > 2;
}

bool COutlineModel::IsCandidate(int k, double r)
{
    const int cur = m_vecPath.back();
    const int prev = m_vecPath.size() > 1 ? m_vecPath[m_vecPath.size() - 2] : -1;
    return k != cur && k != prev && m_setDead.count(k) == 0 && FindRoot(k) == m_nLargest &&
           !IsStacked(k, cur) && !IsFar(cur, k, r);
}

int COutlineModel::FindNext(double r)
{
    const int cur = m_vecPath.back();
    const bool bFirst = m_vecPath.size() == 1;
    double dBest = bFirst ? 0.0 : 2.0 * c_dPi;
    int nBest = -1;
    for (const int k : CollectPnts(cur, r))
    {
        if (!IsCandidate(k, r))
            continue;
        if (bFirst)
        {
            if (Angle(cur, k) <= dBest)
                continue;
            dBest = Angle(cur, k);
            nBest = k;
            continue;
        }
        double dTurn = Angle(m_vecPath[m_vecPath.size() - 2], cur) - Angle(cur, k);
        if (dTurn < -c_dPi)
            dTurn += 2.0 * c_dPi;
        if (dTurn > c_dPi)
            dTurn -= 2.0 * c_dPi;
        if (dTurn == -c_dPi || dTurn >= dBest || Crosses(cur, k))
            continue;
        dBest = dTurn;
        nBest = k;
    }
    return nBest;
}

bool COutlineModel::Crosses(int cur, int k) const
{
    for (int i = static_cast<int>(m_vecPath.size()) - 3; i >= 0; --i)
    {
        const int a = m_vecPath[static_cast<std::size_t>(i)];
        const int b = m_vecPath[static_cast<std::size_t>(i) + 1];
        const bool bExempt = k == m_vecPath.front() && IsStacked(a, k);
        if (!bExempt && Segment(cur, k).Meets(Segment(a, b)))
            return true;
    }
    return false;
}

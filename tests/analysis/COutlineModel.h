#ifndef TESTS_ANALYSIS_COUTLINEMODEL_H
#define TESTS_ANALYSIS_COUTLINEMODEL_H

#include <octree/COcTreeData.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

/// The octree over points that already lie in the order of a build: slow, and by itself.
class CModelTree
{
public:
    struct CLeaf
    {
        int nCount;
        int nFirst;
    };

    struct CNode
    {
        std::int64_t nX = 0;
        std::int64_t nY = 0;
        std::int64_t nZ = 0;
        std::int64_t nEdge = 0;
        bool bLeaf = false;
        CLeaf leaf{0, 0};
        std::array<std::vector<CNode>, 8> children; // none or one each
    };

    struct CXYZ
    {
        std::int64_t c[3];
    };

    explicit CModelTree(std::vector<CXYZ> vecPnts) : m_vecPnts(std::move(vecPnts))
    {
        std::int64_t nCentre[3] = {0, 0, 0};
        for (std::size_t a = 0; a < 3 && !m_vecPnts.empty(); ++a)
        {
            std::int64_t nMin = m_vecPnts[0].c[a];
            std::int64_t nMax = nMin;
            for (const CXYZ& pnt : m_vecPnts)
            {
                nMin = std::min(nMin, pnt.c[a]);
                nMax = std::max(nMax, pnt.c[a]);
            }
            nCentre[a] = static_cast<std::int64_t>(std::trunc(static_cast<double>(nMin + nMax) * 0.5));
            m_root.nEdge = std::max(m_root.nEdge, std::min<std::int64_t>(nMax - nMin, 2147483647));
        }
        m_root.nX = nCentre[0];
        m_root.nY = nCentre[1];
        m_root.nZ = nCentre[2];
        if (!m_vecPnts.empty())
            Build(m_root, 0, 0, static_cast<int>(m_vecPnts.size()));
    }

    const CNode& GetRoot() const { return m_root; }

private:
    int CalcOctant(const CNode& node, int i) const
    {
        const CXYZ& pnt = m_vecPnts[static_cast<std::size_t>(i)];
        return (pnt.c[0] >= node.nX ? 4 : 0) + (pnt.c[1] >= node.nY ? 2 : 0) + (pnt.c[2] >= node.nZ ? 1 : 0);
    }

    void Build(CNode& node, int nDepth, int nFirst, int nNum)
    {
        const std::int64_t q = node.nEdge / 2 / 2;
        int i = nFirst;
        for (int k = 0; k < 8; ++k)
        {
            const int nBegin = i;
            while (i < nFirst + nNum && CalcOctant(node, i) == k)
                ++i;
            const int nCount = i - nBegin;
            if (nCount == 0)
                continue;
            CNode child;
            child.nX = node.nX + ((k & 4) != 0 ? q : -q);
            child.nY = node.nY + ((k & 2) != 0 ? q : -q);
            child.nZ = node.nZ + ((k & 1) != 0 ? q : -q);
            child.nEdge = node.nEdge / 2;
            child.bLeaf = nDepth == 20 || nCount <= 10 || (nCount < 1000 && node.nEdge <= 1000);
            child.leaf = {nCount, nBegin};
            if (!child.bLeaf)
                Build(child, nDepth + 1, nBegin, nCount);
            node.children[static_cast<std::size_t>(k)].push_back(std::move(child));
        }
    }

    std::vector<CXYZ> m_vecPnts;
    CNode m_root;
};

/// The outline, step for step and without any haste: linear tally, ordered sets, every segment of the
/// path tested. What CalcCnt gives must be what this gives.
class COutlineModel
{
public:
    template <class T>
    COutlineModel(const COcTreeData<T>& store, double d)
        : m_nNum(store.m_nNumPnts), m_tree(MakePnts(store)), m_dDistance(d * 10000.0)
    {
        for (int i = 0; i < m_nNum; ++i)
        {
            m_vecX.push_back(store.m_pPnts[i].m_nX);
            m_vecY.push_back(store.m_pPnts[i].m_nY);
            m_vecDeleted.push_back(store.IsDeleted(i));
        }
        FindClusters();
        FindStart();
        if (m_nStart != -1)
            Walk();
    }

    bool IsClosed() const { return m_bClosed; }
    int GetStart() const { return m_nStart; }
    const std::vector<int>& GetPath() const { return m_vecPath; }
    const std::vector<int>& GetProgress() const { return m_vecProgress; }
    const std::set<int>& GetReached() const { return m_setReached; }

    /// Points of the largest cluster that the walk did not give up.
    std::set<int> GetOpen()
    {
        std::set<int> setOpen;
        for (int i = 0; i < m_nNum; ++i)
            if (FindRoot(i) == m_nLargest && m_setDead.count(i) == 0)
                setOpen.insert(i);
        return setOpen;
    }

    /// For each point the first point of its cluster.
    std::vector<int> GetClusters()
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

    /// The leaves whose squares meet a rectangle, in walk order: first index and count.
    std::vector<std::pair<int, int>> CollectLeaves(double xmin, double ymin, double xmax, double ymax) const
    {
        std::vector<std::pair<int, int>> vecLeaves;
        if (m_nNum > 0)
            Collect(m_tree.GetRoot(), {xmin, ymin, xmax, ymax}, vecLeaves);
        return vecLeaves;
    }

    /// Do the segments a-b and c-d have a point in common? Exact for whole numbers of 33 bits.
    static bool Intersect(std::int64_t ax, std::int64_t ay, std::int64_t bx, std::int64_t by, std::int64_t cx,
                          std::int64_t cy, std::int64_t dx, std::int64_t dy)
    {
        const int s1 = Side(ax, ay, bx, by, cx, cy);
        const int s2 = Side(ax, ay, bx, by, dx, dy);
        const int s3 = Side(cx, cy, dx, dy, ax, ay);
        const int s4 = Side(cx, cy, dx, dy, bx, by);
        if (s1 * s2 < 0 && s3 * s4 < 0)
            return true;
        return (s1 == 0 && IsBetween(ax, ay, bx, by, cx, cy)) ||
               (s2 == 0 && IsBetween(ax, ay, bx, by, dx, dy)) ||
               (s3 == 0 && IsBetween(cx, cy, dx, dy, ax, ay)) ||
               (s4 == 0 && IsBetween(cx, cy, dx, dy, bx, by));
    }

private:
    __extension__ typedef __int128 CWide;

    static int Side(std::int64_t ax, std::int64_t ay, std::int64_t bx, std::int64_t by, std::int64_t px,
                    std::int64_t py)
    {
        const CWide n = static_cast<CWide>(bx - ax) * (py - ay) - static_cast<CWide>(by - ay) * (px - ax);
        return n > 0 ? 1 : n < 0 ? -1 : 0;
    }

    static bool IsBetween(std::int64_t ax, std::int64_t ay, std::int64_t bx, std::int64_t by, std::int64_t px,
                          std::int64_t py)
    {
        return std::min(ax, bx) <= px && px <= std::max(ax, bx) && std::min(ay, by) <= py &&
               py <= std::max(ay, by);
    }

    template <class T>
    static std::vector<CModelTree::CXYZ> MakePnts(const COcTreeData<T>& store)
    {
        std::vector<CModelTree::CXYZ> vecPnts;
        for (int i = 0; i < store.m_nNumPnts; ++i)
            vecPnts.push_back({{store.m_pPnts[i].m_nX, store.m_pPnts[i].m_nY, store.m_pPnts[i].m_nZ}});
        return vecPnts;
    }

    static bool IsBeside(const CModelTree::CNode& node, const std::array<double, 4>& box)
    {
        const std::int64_t h = node.nEdge / 2;
        return static_cast<double>(node.nX - h) > box[2] || box[0] > static_cast<double>(node.nX + h) ||
               static_cast<double>(node.nY - h) > box[3] || box[1] > static_cast<double>(node.nY + h);
    }

    static void Collect(const CModelTree::CNode& node, const std::array<double, 4>& box,
                        std::vector<std::pair<int, int>>& vecLeaves)
    {
        if (IsBeside(node, box))
            return;
        if (node.bLeaf)
            vecLeaves.emplace_back(node.leaf.nFirst, node.leaf.nCount);
        for (const std::vector<CModelTree::CNode>& child : node.children)
            if (!child.empty())
                Collect(child[0], box, vecLeaves);
    }

    std::int64_t X(int i) const { return m_vecX[static_cast<std::size_t>(i)]; }
    std::int64_t Y(int i) const { return m_vecY[static_cast<std::size_t>(i)]; }

    std::vector<int> CollectPnts(int i, double r) const
    {
        const double x = static_cast<double>(X(i));
        const double y = static_cast<double>(Y(i));
        std::vector<int> vecPnts;
        for (const auto& leaf : CollectLeaves(x - r, y - r, x + r, y + r))
            for (int k = leaf.first; k < leaf.first + leaf.second; ++k)
                vecPnts.push_back(k);
        return vecPnts;
    }

    bool IsFar(int a, int b, double r) const
    {
        const double dx = static_cast<double>(X(b) - X(a));
        const double dy = static_cast<double>(Y(b) - Y(a));
        return dx * dx + dy * dy > r * r;
    }

    bool IsStacked(int a, int b) const { return X(a) == X(b) && Y(a) == Y(b); }

    int FindRoot(int i)
    {
        int nRoot = i;
        while (m_vecParent[static_cast<std::size_t>(nRoot)] != nRoot)
            nRoot = m_vecParent[static_cast<std::size_t>(nRoot)];
        while (i != nRoot)
            i = std::exchange(m_vecParent[static_cast<std::size_t>(i)], nRoot);
        return nRoot;
    }

    void FindClusters()
    {
        for (int i = 0; i < m_nNum; ++i)
            m_vecParent.push_back(i);
        for (int i = 0; i < m_nNum; ++i)
        {
            m_vecProgress.push_back(static_cast<int>(i * 100.0 / m_nNum));
            if (m_setReached.count(i) == 0)
                Expand(i);
        }
        std::vector<std::pair<int, int>> vecTally;
        for (int p = 0; p < m_nNum; ++p)
        {
            const int nRoot = FindRoot(p);
            auto it = std::find_if(vecTally.begin(), vecTally.end(),
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

    void Expand(int i)
    {
        for (const int k : CollectPnts(i, m_dDistance))
        {
            if (m_vecDeleted[static_cast<std::size_t>(k)] || IsStacked(i, k) || IsFar(i, k, m_dDistance) ||
                k <= i)
                continue;
            m_setReached.insert(k);
            const int a = FindRoot(i);
            const int b = FindRoot(k);
            if (a != b)
                m_vecParent[static_cast<std::size_t>(b)] = a;
        }
    }

    struct CRecorded
    {
        std::int64_t nXMin;
        CModelTree::CLeaf leaf;
    };

    void SearchLeaves(const CModelTree::CNode& node, std::int64_t& nLimit,
                      std::vector<CRecorded>& vecRecorded)
    {
        bool bLowerLeaf = false;
        for (std::size_t k = 0; k < 8; ++k)
        {
            if (node.children[k].empty() || (k >= 4 && bLowerLeaf))
                continue;
            const CModelTree::CNode& child = node.children[k][0];
            const std::int64_t h = child.nEdge / 2;
            if (child.nX - h >= nLimit)
                continue;
            if (!child.bLeaf)
            {
                SearchLeaves(child, nLimit, vecRecorded);
                continue;
            }
            bool bHolds = false;
            for (int i = child.leaf.nFirst; i < child.leaf.nFirst + child.leaf.nCount; ++i)
                bHolds = bHolds || FindRoot(i) == m_nLargest;
            if (!bHolds)
                continue;
            vecRecorded.push_back({child.nX - h, child.leaf});
            nLimit = std::min(nLimit, child.nX + h);
            bLowerLeaf = bLowerLeaf || k < 4;
        }
    }

    void FindStart()
    {
        if (m_nNum == 0)
            return;
        const CModelTree::CNode& root = m_tree.GetRoot();
        std::int64_t nLimit = root.nX + root.nEdge / 2;
        std::vector<CRecorded> vecRecorded;
        SearchLeaves(root, nLimit, vecRecorded);
        std::int64_t nBest = nLimit;
        for (const CRecorded& recorded : vecRecorded)
        {
            if (recorded.nXMin > nLimit)
                continue;
            for (int i = recorded.leaf.nFirst; i < recorded.leaf.nFirst + recorded.leaf.nCount; ++i)
            {
                if (FindRoot(i) == m_nLargest && X(i) < nBest)
                {
                    nBest = X(i);
                    m_nStart = i;
                }
            }
        }
    }

    void Walk()
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

    double Angle(int a, int b) const
    {
        return std::atan2(static_cast<double>(Y(b) - Y(a)), static_cast<double>(X(b) - X(a)));
    }

    int FindNext(double r)
    {
        const double dPi = 3.14159265358979323846;
        const int cur = m_vecPath.back();
        const int prev = m_vecPath.size() > 1 ? m_vecPath[m_vecPath.size() - 2] : -1;
        double dBest = prev == -1 ? 0.0 : 2.0 * dPi;
        int nBest = -1;
        for (const int k : CollectPnts(cur, r))
        {
            if (k == cur || k == prev || m_setDead.count(k) != 0 || FindRoot(k) != m_nLargest ||
                IsStacked(k, cur) || IsFar(cur, k, r))
                continue;
            if (prev == -1)
            {
                if (Angle(cur, k) > dBest)
                {
                    dBest = Angle(cur, k);
                    nBest = k;
                }
                continue;
            }
            double dTurn = Angle(prev, cur) - Angle(cur, k);
            if (dTurn < -dPi)
                dTurn += 2.0 * dPi;
            if (dTurn > dPi)
                dTurn -= 2.0 * dPi;
            if (dTurn == -dPi || !(dTurn < dBest) || Crosses(cur, k))
                continue;
            dBest = dTurn;
            nBest = k;
        }
        return nBest;
    }

    bool Crosses(int cur, int k) const
    {
        for (int i = static_cast<int>(m_vecPath.size()) - 3; i >= 0; --i)
        {
            const int a = m_vecPath[static_cast<std::size_t>(i)];
            const int b = m_vecPath[static_cast<std::size_t>(i) + 1];
            if (!Intersect(X(cur), Y(cur), X(k), Y(k), X(a), Y(a), X(b), Y(b)))
                continue;
            if (k == m_vecPath.front() && IsStacked(a, k))
                continue;
            return true;
        }
        return false;
    }

    int m_nNum;
    CModelTree m_tree;
    double m_dDistance;
    std::vector<std::int64_t> m_vecX;
    std::vector<std::int64_t> m_vecY;
    std::vector<bool> m_vecDeleted;
    std::vector<int> m_vecParent;
    std::vector<int> m_vecProgress;
    std::set<int> m_setReached;
    std::set<int> m_setDead;
    std::vector<int> m_vecPath;
    int m_nLargest = -1;
    int m_nStart = -1;
    bool m_bClosed = false;
};

#endif

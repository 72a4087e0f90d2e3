#ifndef TESTS_ANALYSIS_OUTLINE_COUTLINEMODEL_H
#define TESTS_ANALYSIS_OUTLINE_COUTLINEMODEL_H

#include <tests/support/CRefQuery.h>

#include <array>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

/// A segment in plan view, compact units.
struct CRefSegment
{
    std::int64_t ax;
    std::int64_t ay;
    std::int64_t bx;
    std::int64_t by;

    /// Do two segments have a point in common? Exact for numbers of up to 60 bits.
    bool Meets(const CRefSegment& o) const;

private:
    int Side(std::int64_t x, std::int64_t y) const;
    bool Holds(std::int64_t x, std::int64_t y) const;
};

/// The outline, step for step and without any haste: linear tally, ordered sets, every segment of the
/// path tested, no code of the library. What CalcCnt gives must be what this gives.
class COutlineModel
{
public:
    /// @param store  with a tree. @param d  coordinate units.
    COutlineModel(const Ref::CStore& store, double d);

    bool IsClosed() const { return m_bClosed; }
    int GetStart() const { return m_nStart; }
    const std::vector<int>& GetPath() const { return m_vecPath; }
    const std::vector<int>& GetProgress() const { return m_vecProgress; }

    /// Points of the largest cluster that the walk did not give up.
    std::set<int> GetOpen();

    /// For each point the first point of its cluster.
    std::vector<int> GetClusters();

    /// The leaves whose squares meet a rectangle, in walk order: first index and count.
    static std::vector<std::pair<int, int>> CollectLeaves(const Ref::CTree& tree,
                                                          const std::array<double, 4>& box);

private:
    struct CRecorded
    {
        std::int64_t nXMin;
        int nFirst;
        int nCount;
    };

    std::int64_t X(int i) const { return m_store.pnts[static_cast<std::size_t>(i)].x; }
    std::int64_t Y(int i) const { return m_store.pnts[static_cast<std::size_t>(i)].y; }
    CRefSegment Segment(int a, int b) const { return {X(a), Y(a), X(b), Y(b)}; }
    bool IsFar(int a, int b, double r) const;
    bool IsStacked(int a, int b) const { return X(a) == X(b) && Y(a) == Y(b); }
    double Angle(int a, int b) const;
    std::vector<int> CollectPnts(int i, double r) const;

    int FindRoot(int i);
    void FindClusters();
    void FindLargest();
    void Expand(int i);
    bool HoldsCluster(const Ref::CChild& leaf);
    void SearchLeaves(const Ref::CNode& node, const Ref::CCube& cube, std::int64_t& nLimit);
    void FindStart();
    void Walk();
    int FindNext(double r);
    bool IsCandidate(int k, double r);
    bool Crosses(int cur, int k) const;

    const Ref::CStore& m_store;
    double m_dDistance;
    int m_nNum;
    std::vector<int> m_vecParent;
    std::vector<int> m_vecProgress;
    std::set<int> m_setReached;
    std::vector<CRecorded> m_vecRecorded;
    std::set<int> m_setDead;
    std::vector<int> m_vecPath;
    int m_nLargest = -1;
    int m_nStart = -1;
    bool m_bClosed = false;
};

#endif

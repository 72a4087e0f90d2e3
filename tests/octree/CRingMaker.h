#ifndef TESTS_OCTREE_CRINGMAKER_H
#define TESTS_OCTREE_CRINGMAKER_H

#include <tests/support/CRandom.h>
#include <tests/support/CRefQuery.h>
#include <zor3geom/PNT_2D.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

/// Rings that have to do with the points: random, jagged, on the lattice of the tree's squares, through
/// points of the cloud, crossing themselves, with repeated points and spikes, without area.
class CRingMaker
{
public:
    CRingMaker(const Ref::CStore& store, std::uint64_t nSeed) : m_store(store), m_random(nSeed)
    {
        const Ref::CCube& cube = store.tree.cube;
        m_dX = ToX(cube.x);
        m_dY = ToY(cube.y);
        m_dHalf = static_cast<double>(cube.edge) / 20000.0;
    }

    std::vector<zor::geom::PNT_2D> Make()
    {
        std::vector<zor::geom::PNT_2D> ring;
        switch (m_random.Int(0, 6))
        {
        case 0:
            ring = MakeStar(static_cast<int>(m_random.Int(3, 12)));
            break;
        case 1:
            ring = MakeStar(static_cast<int>(m_random.Int(50, 300)));
            break;
        case 2:
            ring = MakeOnSquares();
            break;
        case 3:
            ring = MakeThroughPnts();
            break;
        case 4:
            for (int i = 0; i < 7; ++i)
                ring.push_back(Anywhere());
            break;
        case 5:
            ring = MakeBox();
            break;
        default:
            ring = {Anywhere(), Anywhere()};
            break;
        }
        return Spoil(ring);
    }

    /// A ring so large that it is cut down level by level.
    std::vector<zor::geom::PNT_2D> MakeLarge()
    {
        return Spoil(MakeStar(static_cast<int>(m_random.Int(300, 1500))));
    }

    /// A place over the cloud or beside it.
    zor::geom::PNT_2D Anywhere()
    {
        return {m_dX + (m_random.Unit() - 0.5) * 3.0 * m_dHalf,
                m_dY + (m_random.Unit() - 0.5) * 3.0 * m_dHalf};
    }

private:
    double ToX(std::int64_t n) const
    {
        return static_cast<double>(n) / 10000.0 + static_cast<double>(m_store.org[0]);
    }
    double ToY(std::int64_t n) const
    {
        return static_cast<double>(n) / 10000.0 + static_cast<double>(m_store.org[1]);
    }

    std::vector<zor::geom::PNT_2D> MakeStar(int nNum)
    {
        const zor::geom::PNT_2D centre = Anywhere();
        const double dJag = m_random.Unit();
        const double dSize = m_dHalf * m_random.Unit() * 1.5;
        std::vector<zor::geom::PNT_2D> ring;
        for (int i = 0; i < nNum; ++i)
        {
            const double dAngle = 6.283185307179586 * i / nNum;
            const double dRadius = dSize * (1.0 - dJag * m_random.Unit());
            ring.emplace_back(centre.x + dRadius * std::cos(dAngle), centre.y + dRadius * std::sin(dAngle));
        }
        return ring;
    }

    /// Corners at the corners and centres of squares of the tree.
    std::vector<zor::geom::PNT_2D> MakeOnSquares()
    {
        std::vector<zor::geom::PNT_2D> ring;
        for (std::int64_t i = m_random.Int(3, 6); i > 0; --i)
        {
            Ref::CCube cube = m_store.tree.cube;
            for (std::int64_t nLevel = m_random.Int(0, 5); nLevel > 0; --nLevel)
                cube = Ref::ChildCube(cube, static_cast<int>(m_random.Int(0, 7)));
            ring.emplace_back(ToX(cube.x + m_random.Int(-1, 1) * (cube.edge / 2)),
                              ToY(cube.y + m_random.Int(-1, 1) * (cube.edge / 2)));
        }
        return ring;
    }

    std::vector<zor::geom::PNT_2D> MakeThroughPnts()
    {
        std::vector<zor::geom::PNT_2D> ring;
        for (std::int64_t i = m_random.Int(3, 8); i > 0 && !m_store.pnts.empty(); --i)
        {
            const Ref::CPnt& pnt = m_random.Pick(m_store.pnts);
            ring.emplace_back(ToX(pnt.x), ToY(pnt.y));
        }
        return ring;
    }

    std::vector<zor::geom::PNT_2D> MakeBox()
    {
        const zor::geom::PNT_2D a = Anywhere();
        const zor::geom::PNT_2D b = Anywhere();
        return {a, zor::geom::PNT_2D(a.x, b.y), b, zor::geom::PNT_2D(b.x, a.y)};
    }

    /// Makes it closed, turned round, with a repeated point, a spike, or a coordinate that is no number.
    std::vector<zor::geom::PNT_2D> Spoil(std::vector<zor::geom::PNT_2D> ring)
    {
        if (ring.empty())
            return ring;
        if (m_random.Chance(3))
            std::reverse(ring.begin(), ring.end());
        if (m_random.Chance(4))
            ring.push_back(ring.front());
        if (m_random.Chance(6))
            ring.insert(ring.begin() + 1, ring.front());
        if (m_random.Chance(8))
            ring.insert(ring.begin() + 1, {Anywhere(), ring.front()});
        if (m_random.Chance(60))
            ring[0].x = std::nan("");
        return ring;
    }

    const Ref::CStore& m_store;
    CRandom m_random;
    double m_dX;
    double m_dY;
    double m_dHalf;
};

#endif

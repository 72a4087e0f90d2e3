#include <tests/analysis/outline/OutlineCases.h>

#include <tests/support/CRandom.h>

#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

constexpr double c_dTau = 6.28318530717958647692;

/// Makes one case.
class CCaseMaker
{
public:
    explicit CCaseMaker(std::uint64_t nSeed) : m_random(nSeed), m_nSeed(nSeed) {}

    COutlineCase Make()
    {
        static constexpr std::array<CShape, 12> c_shapes = {{{"uniform", &CCaseMaker::MakeUniform},
                                                             {"lattice", &CCaseMaker::MakeLattice},
                                                             {"ring", &CCaseMaker::MakeRing},
                                                             {"comb", &CCaseMaker::MakeComb},
                                                             {"spiral", &CCaseMaker::MakeSpiral},
                                                             {"L", &CCaseMaker::MakeL},
                                                             {"gap", &CCaseMaker::MakeGap},
                                                             {"stacks", &CCaseMaker::MakeStacks},
                                                             {"tiny", &CCaseMaker::MakeTiny},
                                                             {"span", &CCaseMaker::MakeSpan},
                                                             {"line", &CCaseMaker::MakeLine},
                                                             {"circle", &CCaseMaker::MakeCircle}}};
        const CShape& shape = c_shapes[m_nSeed % c_shapes.size()];
        m_case.sName = std::string(shape.pName) + ", seed " + std::to_string(m_nSeed);
        (this->*shape.pMake)();
        if (Draw(0, 7) == 0)
            m_case.d *= Draw(0, 30) / 10.0;
        return m_case;
    }

private:
    struct CShape
    {
        const char* pName;
        void (CCaseMaker::*pMake)();
    };

    int Draw(int nMin, int nMax) { return static_cast<int>(m_random.Int(nMin, nMax)); }

    void Add(double x, double y)
    {
        const auto saturate = [](double v)
        { return static_cast<std::int32_t>(std::fmin(std::fmax(v, -2147483648.0), 2147483647.0)); };
        m_case.vecPnts.push_back({saturate(x), saturate(y), Draw(-50, 50), 10, 20, 30});
    }

    void MakeUniform()
    {
        const int nSide = Draw(0, 1) == 0 ? 100000 : 1000;
        const int nNum = Draw(1, 120);
        for (int i = 0; i < nNum; ++i)
            Add(Draw(0, nSide), Draw(0, nSide));
        m_case.d = nSide * Draw(2, 30) / 100.0 / 10000.0;
    }

    // Many equal distances, equal angles and stacks.
    void MakeLattice()
    {
        const int nSide = Draw(1, 9);
        const int nUnit = Draw(0, 1) == 0 ? 10000 : Draw(1, 300);
        const int nNum = Draw(1, 100);
        for (int i = 0; i < nNum; ++i)
            Add(nUnit * Draw(-nSide, nSide), nUnit * Draw(-nSide, nSide));
        static constexpr double c_factors[] = {1.0, 1.0, 1.5, 2.0, std::numeric_limits<double>::infinity()};
        m_case.d = nUnit * c_factors[Draw(0, 4)] / 10000.0;
    }

    void MakeRing()
    {
        const int nNum = Draw(8, 110);
        for (int i = 0; i < nNum; ++i)
        {
            const double r = 100000.0 + Draw(-20000, 20000);
            const double a = c_dTau * Draw(0, 100000) / 100000.0;
            Add(r * std::cos(a), r * std::sin(a));
        }
        m_case.d = Draw(20000, 90000) / 10000.0;
    }

    void MakeCircle()
    {
        const int nNum = Draw(3, 90);
        for (int i = 0; i < nNum; ++i)
            Add(300000.0 * std::cos(c_dTau * i / nNum), 300000.0 * std::sin(c_dTau * i / nNum));
        m_case.d = Draw(0, 3) == 0 ? 1.0e3 : 1.1 * 30.0 * c_dTau / nNum;
    }

    void MakeComb()
    {
        const int nTeeth = Draw(2, 5);
        const int nLength = Draw(2, 9);
        const int nJitter = Draw(0, 1) * 1500;
        for (int t = 0; t < nTeeth; ++t)
            for (int k = 0; k < nLength; ++k)
                Add(t * 30000 + Draw(-nJitter, nJitter), k * 10000 + Draw(-nJitter, nJitter));
        for (int x = 0; x < nTeeth * 3; ++x)
            Add(x * 10000 + Draw(-nJitter, nJitter), Draw(-nJitter, nJitter));
        m_case.d = 1.0 + Draw(0, 12) / 10.0;
    }

    void MakeSpiral()
    {
        const int nNum = Draw(10, 110);
        const double dTurns = Draw(1, 4);
        for (int i = 0; i < nNum; ++i)
        {
            const double t = static_cast<double>(i) / nNum;
            const double r = 20000.0 + 200000.0 * t;
            Add(r * std::cos(c_dTau * dTurns * t) + Draw(-999, 999),
                r * std::sin(c_dTau * dTurns * t) + Draw(-999, 999));
        }
        m_case.d = Draw(15000, 60000) / 10000.0;
    }

    void MakeL()
    {
        const int nNum = Draw(20, 120);
        for (int i = 0; i < nNum; ++i)
        {
            const bool bUpright = Draw(0, 1) == 0;
            Add(Draw(0, bUpright ? 20000 : 100000), Draw(0, bUpright ? 100000 : 20000));
        }
        m_case.d = Draw(8000, 30000) / 10000.0;
    }

    // Two blocks, the gap between them just under, at, or just over the distance.
    void MakeGap()
    {
        const int nGap = 20000 + Draw(-1, 1);
        const int nRows = Draw(1, 5);
        const int nSecond = nRows + Draw(-1, 1);
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k < nRows; ++k)
                Add(i * 20000, k * 15000);
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k < nSecond; ++k)
                Add(40000 + nGap + i * 20000, k * 15000);
        m_case.d = 2.0;
    }

    void MakeStacks()
    {
        const int nNum = Draw(2, 100);
        const int nPlaces = Draw(1, 12);
        std::vector<std::pair<int, int>> vecPlaces;
        for (int i = 0; i < nPlaces; ++i)
            vecPlaces.emplace_back(Draw(0, 40000), Draw(0, 40000));
        for (int i = 0; i < nNum; ++i)
        {
            const auto& place = vecPlaces[static_cast<std::size_t>(Draw(0, nPlaces - 1))];
            Add(place.first, place.second);
        }
        m_case.d = Draw(5000, 40000) / 10000.0;
    }

    void MakeTiny()
    {
        const int nNum = Draw(1, 40);
        const int nSide = Draw(0, 6);
        for (int i = 0; i < nNum; ++i)
            Add(Draw(-nSide, nSide), Draw(-nSide, nSide));
        m_case.d = Draw(0, 50) / 100000.0;
    }

    void MakeSpan()
    {
        const int nNum = Draw(3, 60);
        const int nMax = std::numeric_limits<std::int32_t>::max();
        for (int i = 0; i < nNum; ++i)
            Add(Draw(0, 3) == 0 ? (Draw(0, 1) == 0 ? nMax : -nMax - 1) : Draw(-nMax - 1, nMax),
                Draw(0, 3) == 0 ? (Draw(0, 1) == 0 ? nMax : -nMax - 1) : Draw(-nMax - 1, nMax));
        m_case.d = Draw(20000, 300000);
    }

    void MakeLine()
    {
        const int nNum = Draw(2, 60);
        const int nDx = Draw(-3, 3);
        const int nDy = Draw(-3, 3);
        for (int i = 0; i < nNum; ++i)
        {
            const int t = Draw(-60, 60);
            const int nOff = Draw(0, 9) == 0 ? Draw(-2, 2) : 0;
            Add(t * nDx * 1000 + nOff, t * nDy * 1000 - nOff);
        }
        m_case.d = Draw(1, 30) / 10.0;
    }

    CRandom m_random;
    std::uint64_t m_nSeed;
    COutlineCase m_case;
};

} // namespace

COutlineCase MakeOutlineCase(std::uint64_t nSeed)
{
    return CCaseMaker(nSeed).Make();
}

COutlineCase MakeSerratedRing(std::uint64_t nSeed, double dLength)
{
    constexpr double c_dTooth = 8.0;
    constexpr double c_dHeight = 6.0;
    constexpr double c_dBand = 6.0;
    CRandom random(nSeed);
    COutlineCase outlineCase;
    outlineCase.sName = "serrated ring, seed " + std::to_string(nSeed);
    outlineCase.d = 2.0;
    const double dRadius = dLength / c_dTau;
    while (static_cast<double>(outlineCase.vecPnts.size()) < dLength * (c_dBand + c_dHeight / 2.0) * 3.0)
    {
        const double t = random.Unit() * dLength;
        const double h = random.Unit() * (c_dBand + c_dHeight) - c_dBand;
        if (h > c_dHeight * std::fabs(1.0 - 2.0 * std::fmod(t, c_dTooth) / c_dTooth))
            continue; // beyond the teeth
        outlineCase.vecPnts.push_back(
            {static_cast<std::int32_t>(10000.0 * (dRadius + h) * std::cos(t / dRadius)),
             static_cast<std::int32_t>(10000.0 * (dRadius + h) * std::sin(t / dRadius)), 0, 0, 0, 0});
    }
    return outlineCase;
}

COutlineCase MakeRooms(std::uint64_t nSeed, int nNumPnts, double dLength)
{
    CRandom random(nSeed);
    COutlineCase outlineCase;
    outlineCase.sName = "rooms, seed " + std::to_string(nSeed);
    outlineCase.d = 0.04 + 0.01 * static_cast<double>(nSeed % 8);
    const double dWidth = dLength / 3.0;
    const auto add = [&](double x, double y, double z)
    {
        constexpr double c_dRaster = 100.0; // compact units
        const auto round = [](double d)
        { return static_cast<std::int32_t>(std::floor(d * 100.0) * c_dRaster); };
        outlineCase.vecPnts.push_back({round(x), round(y), round(z), 0, 0, 0});
    };
    while (static_cast<int>(outlineCase.vecPnts.size()) < nNumPnts)
    {
        const double t = random.Unit() * dLength;
        const double u = random.Unit() * dWidth;
        const double z = random.Unit() * 3.0;
        const double dBlur = random.Unit() * 0.03;
        switch (random.Int(0, 7))
        {
        case 0: // walls along, across, and around pillars
            add(t, (random.Chance(2) ? 0.0 : dWidth) + dBlur, z);
            break;
        case 1:
            add(dLength / 4.0 * static_cast<double>(random.Int(0, 4)) + dBlur, u, z);
            break;
        case 2:
            add(std::floor(t) + 0.1 * std::cos(u * 40.0), std::floor(u) + 0.1 * std::sin(u * 40.0), z);
            break;
        case 3: // furniture
            add(std::floor(t) + 0.3 * random.Unit(), std::floor(u) + 0.3 * random.Unit(), 1.0);
            break;
        default: // the floor, thinner away from the scanner
            if (random.Unit() * dWidth > std::fabs(u - dWidth / 2.0))
                add(t, u, 0.0);
        }
    }
    return outlineCase;
}

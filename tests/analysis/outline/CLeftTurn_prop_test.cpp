#include <analysis/outline/CLeftTurn.h>

#include <gtest/gtest.h>

#include <random>

namespace
{

/// Whole directions: any, nearly along the heading, nearly straight back.
class CDirections
{
public:
    explicit CDirections(double dSpan) : m_random(1), m_draw(-dSpan, dSpan) {}

    void Draw(double& dx, double& dy)
    {
        do
        {
            dx = std::nearbyint(m_draw(m_random));
            dy = std::nearbyint(m_draw(m_random));
        } while (dx == 0.0 && dy == 0.0);
    }

    /// A multiple of (dx, dy), forwards or backwards, a unit or so beside it.
    void DrawAlong(double dx, double dy, double& dAlongX, double& dAlongY)
    {
        const double t = std::uniform_real_distribution<double>(-1.0, 1.0)(m_random);
        std::uniform_int_distribution<int> drawOff(-1, 1);
        do
        {
            const bool bWhole = drawOff(m_random) == 0;
            dAlongX = bWhole ? -dx : std::nearbyint(t * dx) + drawOff(m_random);
            dAlongY = bWhole ? -dy : std::nearbyint(t * dy) + drawOff(m_random);
        } while (dAlongX == 0.0 && dAlongY == 0.0);
    }

private:
    std::mt19937_64 m_random;
    std::uniform_real_distribution<double> m_draw;
};

} // namespace

// The quick test never holds back a direction that the angles call sharper.
TEST(CLeftTurn_Prop, CanBeat_NeverMissesASharperTurn)
{
    int nNumHeldBack = 0;
    for (const double dSpan : {1.0, 3.0, 20.0, 1.0e4, 4.2e9})
    {
        CDirections directions(dSpan);
        for (int i = 0; i < 3000; ++i)
        {
            double dx = 0.0;
            double dy = 0.0;
            directions.Draw(dx, dy);
            CLeftTurn turn(dx, dy);
            for (int k = 0; k < 20; ++k)
            {
                double x = 0.0;
                double y = 0.0;
                if (k % 2 == 0)
                    directions.Draw(x, y);
                else
                    directions.DrawAlong(dx, dy, x, y);
                const double dTurn = turn.CalcTurn(x, y);
                nNumHeldBack += turn.CanBeat(x, y) ? 0 : 1;
                if (!turn.IsSharper(dTurn))
                    continue;
                ASSERT_TRUE(turn.CanBeat(x, y)) << dx << ' ' << dy << " -> " << x << ' ' << y;
                turn.SetBest(dTurn, x, y);
            }
        }
    }
    EXPECT_GT(nNumHeldBack, 50000); // most directions are dropped without an angle
}

#include <analysis/outline/CLeftTurn.h>

#include <gtest/gtest.h>

namespace
{

constexpr double c_dPi = 3.14159265358979323846;

} // namespace

TEST(CLeftTurn, CalcTurn_LeftIsNegative)
{
    const CLeftTurn north(0.0, 1.0);
    EXPECT_DOUBLE_EQ(north.CalcTurn(-1.0, 0.0), -c_dPi / 2.0);
    EXPECT_DOUBLE_EQ(north.CalcTurn(0.0, 5.0), 0.0);
    EXPECT_DOUBLE_EQ(north.CalcTurn(1.0, 0.0), c_dPi / 2.0);
}

TEST(CLeftTurn, CalcTurn_WithinHalfATurn)
{
    const CLeftTurn west(-1.0, 0.0);
    EXPECT_DOUBLE_EQ(west.CalcTurn(0.0, -1.0), -c_dPi / 2.0); // π + π/2, brought back
    EXPECT_DOUBLE_EQ(west.CalcTurn(0.0, 1.0), c_dPi / 2.0);
    const CLeftTurn south(0.0, -1.0);
    EXPECT_DOUBLE_EQ(south.CalcTurn(-1.0, 0.0), c_dPi / 2.0); // -π/2 - π, brought back
}

// Straight back is refused only where the angles give exactly -π; where they give π, it is the worst turn.
TEST(CLeftTurn, IsSharper_StraightBackDependsOnTheSign_Kept)
{
    const CLeftTurn east(1.0, 0.0);
    EXPECT_EQ(east.CalcTurn(-1.0, 0.0), -c_dPi);
    EXPECT_FALSE(east.IsSharper(east.CalcTurn(-1.0, 0.0)));
    const CLeftTurn north(0.0, 1.0);
    EXPECT_EQ(north.CalcTurn(0.0, -1.0), c_dPi);
    EXPECT_TRUE(north.IsSharper(north.CalcTurn(0.0, -1.0)));
}

TEST(CLeftTurn, IsSharper_EqualTurnsKeepTheFirst)
{
    CLeftTurn turn(1.0, 0.0);
    turn.SetBest(turn.CalcTurn(1.0, 1.0), 1.0, 1.0);
    EXPECT_TRUE(turn.CanBeat(2.0, 2.0));
    EXPECT_FALSE(turn.IsSharper(turn.CalcTurn(2.0, 2.0)));
    EXPECT_FALSE(turn.CanBeat(2.0, 1.0));
}

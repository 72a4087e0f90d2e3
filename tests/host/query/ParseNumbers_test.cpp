// Numbers given to options.
#include <host/output/CFailure.h>
#include <host/query/ParseNumbers.h>
#include <host/query/PlanQuery.h>

#include <gtest/gtest.h>

namespace zorcld
{

TEST(ParseNumbers, ExactlySoManyFiniteNumbers)
{
    EXPECT_EQ(ParseNumbers("1,-2.5,+3e2", ',', 3, "--n"), (std::vector<double>{1.0, -2.5, 300.0}));
    for (const char* pText :
         {"", "1", "1,2,3", "1,", ",2", "1, 2", "1;2", "1,nan", "inf,2", "1,1e999", "1,2 "})
    {
        SCOPED_TRACE(pText);
        EXPECT_THROW(static_cast<void>(ParseNumbers(pText, ',', 2, "--n")), CUsageError);
    }
}

TEST(ParseNumbers, MessageNamesOptionAndText)
{
    try
    {
        static_cast<void>(ParseNumbers("1,x", ',', 2, "--n"));
        FAIL();
    }
    catch (const CUsageError& error)
    {
        EXPECT_STREQ(error.what(), "--n: '1,x' is not 2 numbers with ',' between them");
    }
}

TEST(ParseNumbers, RectAndLine_OrderIsTested)
{
    EXPECT_EQ(ParseRect("1,2,3,4").xmax, 3.0);
    EXPECT_THROW(static_cast<void>(ParseRect("3,2,1,4")), CUsageError);
    EXPECT_EQ(ParseLine("1,2,3,4,0").dWidth, 0.0);
    EXPECT_THROW(static_cast<void>(ParseLine("1,2,3,4,-1")), CUsageError);
}

} // namespace zorcld

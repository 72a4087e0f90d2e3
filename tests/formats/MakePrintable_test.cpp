// Names out of files, made fit for sentences.
#include <formats/MakePrintable.h>

#include <gtest/gtest.h>

TEST(MakePrintable, WhatIsNotUtf8_BecomesQuestionMarks)
{
    EXPECT_EQ(MakePrintable("a\u00e4\u20ac\U0001F600z"), "a\u00e4\u20ac\U0001F600z");
    EXPECT_EQ(MakePrintable("a\xff"
                            "b\xc3"),
              "a?b?");
    EXPECT_EQ(MakePrintable("\xed\xa0\x80\n"), "????");
}

TEST(MakePrintable, Controls_BecomeQuestionMarks)
{
    EXPECT_EQ(MakePrintable("\033[31mflo\tat\x7f"), "?[31mflo?at?");
    EXPECT_EQ(MakePrintable("\u009b31m\u00a0"), "?31m\u00a0"); // those of two bytes, too
    EXPECT_EQ(MakePrintable(std::string_view("\0", 1)), "?");
}

TEST(MakePrintableName, LongNames_AreCutWithAnEllipsis)
{
    const std::string sLongest(80, 'x');
    EXPECT_EQ(MakePrintableName(sLongest), sLongest);
    EXPECT_EQ(MakePrintableName(sLongest + "x"), sLongest + "\u2026");
    EXPECT_EQ(MakePrintableName("a\nb"), "a?b");
}

TEST(ReplaceControls, OtherBytes_Stay)
{
    EXPECT_EQ(ReplaceControls("a\n\u009b\u00e4\xff\033"), "a??\u00e4\xff?");
}

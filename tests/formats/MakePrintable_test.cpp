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

// The first and the last sequence of each length, those just beside them, and bytes that begin none.
TEST(MakePrintable, SequencesAtTheLimits)
{
    for (const char* s : {"\x7e", "\xc2\xa0", "\xdf\xbf", "\xe0\xa0\x80", "\xed\x9f\xbf", "\xee\x80\x80",
                          "\xef\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"})
        EXPECT_EQ(MakePrintable(s), s);
    for (const char* s : {"\x80\x80\x80\x80", "\xbf\x80\x80\x80", "\xc0\x80\x80\x80", "\xc1\xbf\x80\x80",
                          "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xff\xbf\xbf\xbf"})
        EXPECT_EQ(MakePrintable(s), "????");
    for (const char* s : {"\xe0\x9f\xbf", "\xed\xa0\x80", "\xe1\x80\x7f", "\xe1\xc0\x80"})
        EXPECT_EQ(MakePrintable(s).substr(0, 1), "?");
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

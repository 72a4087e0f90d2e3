#ifndef TESTS_HOST_SUPPORT_CTRACEDTEST_H
#define TESTS_HOST_SUPPORT_CTRACEDTEST_H

#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <cstdlib>

/// Runs of the program under a trace of their system calls, where that can be had.
class CTracedTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (CZorcld::IsSanitized())
            GTEST_SKIP() << "sanitizers do not run under a trace";
        if (std::system("strace -o /dev/null true >/dev/null 2>&1") != 0)
            GTEST_SKIP() << "strace is not there, or may not trace";
    }

    const CZorcld m_zorcld;
};

#endif

#ifndef SUPPORT_CHECKPROP_H
#define SUPPORT_CHECKPROP_H

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>

/// How many random cases a property is checked on. Under the address sanitizer, where each takes several
/// times as long, half of them; RC_PARAMS says another number.
inline int PickNumCases(int nDefault, int nNumCases)
{
    const int nAll = std::max(nDefault, nNumCases);
#ifdef __SANITIZE_ADDRESS__
    return std::getenv("RC_PARAMS") == nullptr ? (nAll + 1) / 2 : nAll;
#else
    return nAll;
#endif
}

/// Checks a property on `nNumCases` random cases, at least 100. On failure RapidCheck shrinks the case and
/// prints how to run it again (environment variable RC_PARAMS).
template <class Property>
void CheckProp(int nNumCases, Property&& property)
{
    const auto* const pInfo = ::testing::UnitTest::GetInstance()->current_test_info();
    rc::detail::TestMetadata metadata;
    metadata.id = std::string(pInfo->test_suite_name()) + "/" + pInfo->name();
    metadata.description = metadata.id;
    rc::detail::TestParams params = rc::detail::configuration().testParams;
    params.maxSuccess = PickNumCases(params.maxSuccess, nNumCases);

    const auto result =
        rc::detail::checkProperty(rc::detail::toProperty(std::forward<Property>(property)), metadata, params);
    if (result.template is<rc::detail::SuccessResult>())
        return;
    std::ostringstream text;
    rc::detail::printResultMessage(result, text);
    FAIL() << text.str();
}

#endif

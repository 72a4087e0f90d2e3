#ifndef SUPPORT_CHECKPROP_H
#define SUPPORT_CHECKPROP_H

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>

/// Checks a property on `nNumCases` random cases. On failure RapidCheck shrinks the case and prints how to
/// run it again (environment variable RC_PARAMS).
template <class Property>
void CheckProp(int nNumCases, Property&& property)
{
    const auto* const pInfo = ::testing::UnitTest::GetInstance()->current_test_info();
    rc::detail::TestMetadata metadata;
    metadata.id = std::string(pInfo->test_suite_name()) + "/" + pInfo->name();
    metadata.description = metadata.id;
    rc::detail::TestParams params = rc::detail::configuration().testParams;
    params.maxSuccess = std::max(params.maxSuccess, nNumCases);

    const auto result =
        rc::detail::checkProperty(rc::detail::toProperty(std::forward<Property>(property)), metadata, params);
    if (result.template is<rc::detail::SuccessResult>())
        return;
    std::ostringstream text;
    rc::detail::printResultMessage(result, text);
    FAIL() << text.str();
}

#endif

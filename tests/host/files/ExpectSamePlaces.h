#ifndef TESTS_HOST_FILES_EXPECTSAMEPLACES_H
#define TESTS_HOST_FILES_EXPECTSAMEPLACES_H

#include <formats/IPntSource.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace zorcld
{

/// Does a source deliver many at a time the places and colours that it delivers one by one, and end alike?
inline void ExpectSamePlaces(IPntSource& source)
{
    using TPlace = std::array<char, 30>; // bits, since not-a-number equals nothing
    const auto bits = [](const CSourcePnt& pnt)
    {
        TPlace acBits{};
        const std::array<double, 3> adPlace = {pnt.x, pnt.y, pnt.z};
        const std::array<std::uint16_t, 3> anColor = {pnt.r, pnt.g, pnt.b};
        std::memcpy(acBits.data(), adPlace.data(), sizeof adPlace);
        std::memcpy(acBits.data() + sizeof adPlace, anColor.data(), sizeof anColor);
        return acBits;
    };
    std::vector<TPlace> vecOne;
    std::vector<TPlace> vecMany;
    const std::string sOne = source.ForEach([&](const CSourcePnt& pnt) { vecOne.push_back(bits(pnt)); });
    const std::size_t nNumFindings = source.GetFindings().size();
    const std::string sMany = source.ForEachPlace(
        [&](const CSourcePnt* pPnts, std::size_t nNum)
        {
            for (std::size_t i = 0; i < nNum; ++i)
                vecMany.push_back(bits(pPnts[i]));
        });
    EXPECT_EQ(sMany, sOne);
    EXPECT_TRUE(vecMany == vecOne) << vecMany.size() << " and " << vecOne.size();
    EXPECT_EQ(source.GetFindings().size(), nNumFindings);
}

} // namespace zorcld

#endif

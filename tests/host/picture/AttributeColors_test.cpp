// Colours of classes and returns: told apart by eyes that miss red, green or blue, on both backgrounds.
#include <host/picture/AttributeColors.h>
#include <host/picture/CBackground.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace zorcld
{

namespace
{

using TTriple = std::array<double, 3>;
using TMatrix = std::array<TTriple, 3>;

// What eyes without one of the three kinds of cones see, in linear red, green and blue (Machado, Oliveira and
// Fernandes, 2009); first what all see.
constexpr std::array<TMatrix, 4> c_eyes = {
    {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
     {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}}};

TTriple Multiply(const TMatrix& matrix, const TTriple& v)
{
    TTriple result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
    return result;
}

TTriple Linear(const CRgb& color)
{
    const auto linear = [](double d)
    {
        d /= 255.0;
        return d <= 0.04045 ? d / 12.92 : std::pow((d + 0.055) / 1.055, 2.4);
    };
    return {linear(color.r), linear(color.g), linear(color.b)};
}

/// CIE L*a*b*, in which distances are about what eyes see.
TTriple Lab(const TTriple& linear)
{
    constexpr TMatrix c_xyz = {
        {{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};
    TTriple xyz = Multiply(c_xyz, linear);
    xyz[0] /= 0.95047;
    xyz[2] /= 1.08883;
    for (double& d : xyz)
        d = d > 0.008856 ? std::cbrt(d) : 7.787 * d + 16.0 / 116.0;
    return {116.0 * xyz[1] - 16.0, 500.0 * (xyz[0] - xyz[1]), 200.0 * (xyz[1] - xyz[2])};
}

double CalcDistance(const CRgb& one, const CRgb& other, const TMatrix& eyes)
{
    const auto see = [&eyes](const CRgb& color)
    {
        TTriple seen = Multiply(eyes, Linear(color));
        for (double& d : seen)
            d = std::clamp(d, 0.0, 1.0);
        return Lab(seen);
    };
    const TTriple a = see(one);
    const TTriple b = see(other);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

/// Ratio of brightness, 1 to 21.
double CalcContrast(const CRgb& one, const CRgb& other)
{
    const auto calcBrightness = [](const CRgb& color)
    {
        const TTriple linear = Linear(color);
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2] + 0.05;
    };
    const double dRatio = calcBrightness(one) / calcBrightness(other);
    return std::max(dRatio, 1.0 / dRatio);
}

void ExpectReadable(const std::vector<CRgb>& vecColors, double dMinDistance)
{
    for (std::size_t i = 0; i < vecColors.size(); ++i)
    {
        for (const char* pBackground : {"dark", "light"})
            EXPECT_GT(CalcContrast(vecColors[i], ParseBackground(pBackground).color), 1.45)
                << i << pBackground;
        for (std::size_t k = 0; k < i; ++k)
            for (std::size_t nEyes = 0; nEyes < c_eyes.size(); ++nEyes)
                EXPECT_GT(CalcDistance(vecColors[i], vecColors[k], c_eyes[nEyes]), dMinDistance)
                    << i << " " << k << " " << nEyes;
    }
}

} // namespace

TEST(AttributeColors, CommonClasses_ToldApart)
{
    std::vector<CRgb> vecColors;
    for (const int nClass : {0, 1, 2, 3, 4, 5, 6, 7, 9, 11, 17, 18})
        vecColors.push_back(CalcClassColor(static_cast<std::uint8_t>(nClass)));
    ExpectReadable(vecColors, 15.0);
}

TEST(AttributeColors, Returns_ToldApart)
{
    std::vector<CRgb> vecColors;
    for (std::uint16_t nReturn = 0; nReturn <= 5; ++nReturn)
        vecColors.push_back(CalcReturnColor(nReturn));
    ExpectReadable(vecColors, 15.0);
}

TEST(AttributeColors, EveryClassAndReturn_SeenOnBothBackgrounds)
{
    for (int n = 0; n < 256; ++n)
        ExpectReadable({CalcClassColor(static_cast<std::uint8_t>(n))}, 0.0);
    ExpectReadable({CalcReturnColor(15)}, 0.0);
    ExpectReadable({CalcGrey(0.0), CalcGrey(0.5), CalcGrey(1.0)}, 15.0);
}

TEST(AttributeColors, Swatches_OfWhatThereIs)
{
    std::vector<std::uint32_t> vecCounts(65536);
    vecCounts[2] = 10;
    vecCounts[70] = 1;
    std::vector<CSwatch> vecSwatches = MakeSwatches(vecCounts, LasAttribute_Class);
    ASSERT_EQ(vecSwatches.size(), 2U);
    EXPECT_EQ(vecSwatches[0].sText, "2 ground");
    EXPECT_EQ(vecSwatches[0].nNumPnts, 10);
    EXPECT_EQ(vecSwatches[1].sText, "70");

    vecCounts[70] = 0;
    for (const std::size_t n : {0, 1, 5, 6, 15})
        vecCounts[n] = 3;
    vecSwatches = MakeSwatches(vecCounts, LasAttribute_Return);
    ASSERT_EQ(vecSwatches.size(), 4U); // what has one colour is told in one line
    EXPECT_EQ(vecSwatches[0].sText, "not told");
    EXPECT_EQ(vecSwatches[1].sText, "1");
    EXPECT_EQ(vecSwatches[3].sText, "5 and more");
    EXPECT_EQ(vecSwatches[3].nNumPnts, 9);
}

} // namespace zorcld

#include <zor3geom/CalcWideOrientation.h>

#include <zor3geom/AddOrientation.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace zor::geom
{
namespace
{

constexpr int c_nMantissa = 53;                      // bits of a double
constexpr int c_nLowest = 2 * (-1073 - c_nMantissa); // exponent of the lowest bit that a product is told by
constexpr int c_nHighest = 2 * 1024;                 // products lie below this power of two
constexpr int c_nDigits = (c_nHighest - c_nLowest) / 32 + 4; // 32 bits each; room for the sum to grow
constexpr std::uint64_t c_nMask = 0xFFFFFFFFU;

/// A sum of a few products of positive numbers, kept as one long integer: its bit 0 stands for 2^c_nLowest.
class CWideSum
{
public:
    void AddProduct(double a, double b) noexcept
    {
        int nExponentA = 0;
        int nExponentB = 0;
        const std::uint64_t nA = GetMantissa(a, nExponentA);
        const std::uint64_t nB = GetMantissa(b, nExponentB);
        const auto nBit = static_cast<std::size_t>(nExponentA + nExponentB - c_nLowest);
        Add((nA & c_nMask) * (nB & c_nMask), nBit);
        Add((nA & c_nMask) * (nB >> 32U), nBit + 32U);
        Add((nA >> 32U) * (nB & c_nMask), nBit + 32U);
        Add((nA >> 32U) * (nB >> 32U), nBit + 64U);
    }

    /// @return the sign of the difference of two sums.
    static int Compare(CWideSum x, CWideSum y) noexcept
    {
        x.Carry();
        y.Carry();
        for (std::size_t i = x.m_digits.size(); i-- > 0;)
            if (x.m_digits[i] != y.m_digits[i])
                return x.m_digits[i] > y.m_digits[i] ? 1 : -1;
        return 0;
    }

private:
    static std::uint64_t GetMantissa(double d, int& nExponent) noexcept
    {
        const double dShare = std::frexp(d, &nExponent);
        nExponent -= c_nMantissa;
        return static_cast<std::uint64_t>(std::ldexp(dShare, c_nMantissa));
    }

    /// Digits are not carried yet: each takes up a few dozen summands below 2^32.
    void Add(std::uint64_t n, std::size_t nBit) noexcept
    {
        const std::size_t i = nBit / 32U;
        const std::uint64_t nLow = (n & c_nMask) << (nBit % 32U);
        const std::uint64_t nHigh = (n >> 32U) << (nBit % 32U);
        m_digits[i] += nLow & c_nMask;
        m_digits[i + 1] += (nLow >> 32U) + (nHigh & c_nMask);
        m_digits[i + 2] += nHigh >> 32U;
    }

    void Carry() noexcept
    {
        std::uint64_t nCarry = 0;
        for (std::uint64_t& nDigit : m_digits)
        {
            nCarry += nDigit;
            nDigit = nCarry & c_nMask;
            nCarry >>= 32U;
        }
    }

    std::array<std::uint64_t, c_nDigits> m_digits{};
};

/// The two sides of a comparison.
class CWideDifference
{
public:
    void AddProduct(double a, double b) noexcept
    {
        if (a == 0.0 || b == 0.0)
            return;
        CWideSum& side = (a < 0.0) == (b < 0.0) ? m_plus : m_minus;
        side.AddProduct(std::fabs(a), std::fabs(b));
    }

    int GetSign() const noexcept { return CWideSum::Compare(m_plus, m_minus); }

private:
    CWideSum m_plus;
    CWideSum m_minus;
};

} // namespace

int CalcWideOrientation(const PNT_2D& a, const PNT_2D& b, const PNT_2D& p) noexcept
{
    CWideDifference difference;
    AddOrientation(a, b, p, difference);
    return difference.GetSign();
}

} // namespace zor::geom

#include <formats/LasClasses.h>

#include <array>
#include <cctype>

namespace
{

struct CLasClassName
{
    const char* pName;   ///< words with hyphens between them
    std::uint32_t nBits; ///< one for each class
};

constexpr std::uint32_t Bits(std::uint32_t n)
{
    return 1U << n;
}

/// The first name of a class is the one that is told; the others are understood too. Classes 8 and 12 have
/// these meanings in formats 0 to 5 and none in later ones, where flags took their place.
constexpr std::array c_aNames = {
    CLasClassName{"never-classified", Bits(0)},
    CLasClassName{"unclassified", Bits(1)},
    CLasClassName{"ground", Bits(2)},
    CLasClassName{"low-vegetation", Bits(3)},
    CLasClassName{"medium-vegetation", Bits(4)},
    CLasClassName{"high-vegetation", Bits(5)},
    CLasClassName{"building", Bits(6)},
    CLasClassName{"low-noise", Bits(7)},
    CLasClassName{"key-point", Bits(8)},
    CLasClassName{"water", Bits(9)},
    CLasClassName{"rail", Bits(10)},
    CLasClassName{"road", Bits(11)},
    CLasClassName{"overlap", Bits(12)},
    CLasClassName{"wire-guard", Bits(13)},
    CLasClassName{"wire-conductor", Bits(14)},
    CLasClassName{"transmission-tower", Bits(15)},
    CLasClassName{"wire-connector", Bits(16)},
    CLasClassName{"bridge", Bits(17)},
    CLasClassName{"high-noise", Bits(18)},
    CLasClassName{"overhead-structure", Bits(19)},
    CLasClassName{"ignored-ground", Bits(20)},
    CLasClassName{"snow", Bits(21)},
    CLasClassName{"temporal-exclusion", Bits(22)},
    CLasClassName{"vegetation", Bits(3) | Bits(4) | Bits(5)},
    CLasClassName{"noise", Bits(7) | Bits(18)},
    CLasClassName{"wire", Bits(13) | Bits(14) | Bits(16)},
    CLasClassName{"created", Bits(0)},
    CLasClassName{"buildings", Bits(6)},
    CLasClassName{"low-point", Bits(7)},
    CLasClassName{"low-point-noise", Bits(7)},
    CLasClassName{"model-key-point", Bits(8)},
    CLasClassName{"road-surface", Bits(11)},
    CLasClassName{"overlap-points", Bits(12)},
    CLasClassName{"wire-guard-shield", Bits(13)},
    CLasClassName{"wire-conductor-phase", Bits(14)},
    CLasClassName{"tower", Bits(15)},
    CLasClassName{"wire-structure-connector", Bits(16)},
    CLasClassName{"bridge-deck", Bits(17)},
};

/// How many of them are told where names are listed: behind them the same classes come again.
constexpr std::size_t c_nNumListed = 26;

/// Small letters and digits, a hyphen for whatever stands between them.
std::string Simplify(std::string_view sName)
{
    std::string sSimple;
    for (const char c : sName)
    {
        const auto uc = static_cast<unsigned char>(c);
        if (std::isalnum(uc) != 0)
            sSimple += static_cast<char>(std::tolower(uc));
        else if (!sSimple.empty() && sSimple.back() != '-')
            sSimple += '-';
    }
    while (!sSimple.empty() && sSimple.back() == '-')
        sSimple.pop_back();
    return sSimple;
}

} // namespace

std::string GetLasClassName(std::uint8_t nClass)
{
    for (const CLasClassName& name : c_aNames)
        if (nClass < 32 && name.nBits == Bits(nClass))
        {
            std::string sName = name.pName;
            for (char& c : sName)
                c = c == '-' ? ' ' : c;
            return sName;
        }
    return {};
}

std::string FormatLasClass(std::uint8_t nClass)
{
    const std::string sName = GetLasClassName(nClass);
    return std::to_string(nClass) + (sName.empty() ? "" : " ") + sName;
}

TLasClasses FindLasClasses(std::string_view sName)
{
    const std::string sSimple = Simplify(sName);
    TLasClasses classes;
    for (const CLasClassName& name : c_aNames)
        if (sSimple == name.pName)
            classes = TLasClasses(name.nBits);
    return classes;
}

std::string ListLasClassNames()
{
    std::string sList;
    for (std::size_t i = 0; i < c_nNumListed; ++i)
        sList += (i == 0 ? "" : ", ") + std::string(c_aNames[i].pName);
    return sList;
}

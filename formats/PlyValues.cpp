#include <formats/PlyValues.h>

#include <formats/LittleEndian.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>

namespace
{

/// `fn(a number of the type)`
template <class TFn>
void WithPlyNumber(const CPlyType& type, const TFn& fn)
{
    const bool bSigned = type.eNumber == PlyNumber_Signed;
    if (type.nSize == 1)
        return bSigned ? fn(std::int8_t{}) : fn(std::uint8_t{});
    if (type.nSize == 2)
        return bSigned ? fn(std::int16_t{}) : fn(std::uint16_t{});
    if (type.eNumber == PlyNumber_Floating)
        return type.nSize == 4 ? fn(float{}) : fn(double{});
    if (type.nSize == 4)
        return bSigned ? fn(std::int32_t{}) : fn(std::uint32_t{});
    return bSigned ? fn(std::int64_t{}) : fn(std::uint64_t{});
}

} // namespace

double LoadPlyValue(const CPlyType& type, const unsigned char* pBytes)
{
    double d = 0.0;
    WithPlyNumber(type,
                  [&](auto number) { d = static_cast<double>(LittleEndian::Get<decltype(number)>(pBytes)); });
    return d;
}

std::uint16_t PlyColorFromValue(double d, const CPlyType& type)
{
    const double dMax = type.eNumber == PlyNumber_Floating ? 1.0 : 65535.0;
    if (!(d > 0.0)) // true for not-a-number
        return 0;
    return static_cast<std::uint16_t>(
        std::lround(std::min(d, dMax) * (type.eNumber == PlyNumber_Floating ? 255.0 : 1.0)));
}

void TakePlyColumn(const CPlyColumn& column, const unsigned char* pItems, std::size_t nItemSize,
                   CSourcePnt* pPnts, std::size_t nNum)
{
    constexpr std::array<double CSourcePnt::*, c_nNumPlyCoords> c_coords = {&CSourcePnt::x, &CSourcePnt::y,
                                                                            &CSourcePnt::z};
    constexpr std::array<std::uint16_t CSourcePnt::*, 3> c_channels = {&CSourcePnt::r, &CSourcePnt::g,
                                                                       &CSourcePnt::b};
    const unsigned char* const pFirst = pItems + column.nPos;
    WithPlyNumber(*column.pType,
                  [&](auto number)
                  {
                      using TNumber = decltype(number);
                      if (column.nRole < c_nNumPlyCoords)
                      {
                          const auto coord = c_coords[column.nRole];
                          for (std::size_t i = 0; i < nNum; ++i)
                              pPnts[i].*coord =
                                  static_cast<double>(LittleEndian::Get<TNumber>(pFirst + i * nItemSize));
                          return;
                      }
                      const auto channel = c_channels[column.nRole - c_nNumPlyCoords];
                      for (std::size_t i = 0; i < nNum; ++i)
                      {
                          const auto value = LittleEndian::Get<TNumber>(pFirst + i * nItemSize);
                          if constexpr (std::is_same_v<TNumber, std::uint8_t>)
                              pPnts[i].*channel = value;
                          else
                              pPnts[i].*channel =
                                  PlyColorFromValue(static_cast<double>(value), *column.pType);
                      }
                  });
}

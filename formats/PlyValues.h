#ifndef FORMATS_PLYVALUES_H
#define FORMATS_PLYVALUES_H

#include <formats/CSourcePnt.h>
#include <formats/PlyTypes.h>

#include <cstddef>
#include <cstdint>

/// @param pBytes  a value of that type in this machine's order, which is the little-endian one.
double LoadPlyValue(const CPlyType& type, const unsigned char* pBytes);

/// Floating colours are shares of 1, whole ones are taken as they are.
std::uint16_t PlyColorFromValue(double d, const CPlyType& type);

/// A property of items that stand one behind the other, little-endian, of one size.
struct CPlyColumn
{
    const CPlyType* pType = nullptr;
    std::size_t nPos = 0;  ///< in an item, bytes
    std::size_t nRole = 0; ///< in c_asPlyRoleNames
};

/// Takes one property of many items.
/// @param pItems  the first of them. @param nItemSize  bytes. @param pPnts  as many.
void TakePlyColumn(const CPlyColumn& column, const unsigned char* pItems, std::size_t nItemSize,
                   CSourcePnt* pPnts, std::size_t nNum);

#endif

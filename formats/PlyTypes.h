#ifndef FORMATS_PLYTYPES_H
#define FORMATS_PLYTYPES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The first two lines of the files that the library takes.
inline constexpr std::string_view c_sPlyFirstLine = "ply\n";
inline constexpr std::string_view c_sPlyFormatLine = "format binary_little_endian 1.0\n";

enum enumPlyNumber : std::uint8_t
{
    PlyNumber_Signed,
    PlyNumber_Unsigned,
    PlyNumber_Floating,
};

/// A type of values by either of its names.
struct CPlyType
{
    std::string_view sName;  ///< the classic one
    std::string_view sSized; ///< the later one, which tells the bits
    std::size_t nSize;       ///< bytes of a value
    enumPlyNumber eNumber;
};

/// Every type, those that the library takes first. "bool" is no type of the format, but some programs write
/// it, a byte each.
inline constexpr std::array<CPlyType, 11> c_aPlyTypes = {{{"char", "int8", 1, PlyNumber_Signed},
                                                          {"uchar", "uint8", 1, PlyNumber_Unsigned},
                                                          {"short", "int16", 2, PlyNumber_Signed},
                                                          {"ushort", "uint16", 2, PlyNumber_Unsigned},
                                                          {"int", "int32", 4, PlyNumber_Signed},
                                                          {"uint", "uint32", 4, PlyNumber_Unsigned},
                                                          {"float", "float32", 4, PlyNumber_Floating},
                                                          {"double", "float64", 8, PlyNumber_Floating},
                                                          {"long", "int64", 8, PlyNumber_Signed},
                                                          {"ulong", "uint64", 8, PlyNumber_Unsigned},
                                                          {"bool", "bool", 1, PlyNumber_Unsigned}}};

/// So many of them the library takes, and tries them in this order.
inline constexpr std::uint8_t c_nNumTakenPlyTypes = 8;

inline constexpr std::size_t c_nMaxPlySize = 8; ///< bytes of the largest value

/// The type that the library takes every coordinate for.
inline constexpr const CPlyType& c_plyCoordType = c_aPlyTypes[6];

/// The type that it takes every colour channel for, and the only one it takes for the count of a list.
inline constexpr const CPlyType& c_plyByteType = c_aPlyTypes[1];

/// What a vertex property means to the library, by its name.
enum enumPlyRole : std::uint8_t
{
    PlyRole_None = 0, ///< read and ignored
    PlyRole_X = 1,
    PlyRole_Y = 2,
    PlyRole_Z = 3,
    PlyRole_Red = 4,
    PlyRole_Green = 5,
    PlyRole_Blue = 6,
};

/// The names of the roles, from PlyRole_X on.
inline constexpr std::array<std::string_view, 6> c_asPlyRoleNames = {"x", "y", "z", "red", "green", "blue"};
inline constexpr std::size_t c_nNumPlyCoords = 3; ///< names of coordinates; those of colours follow

/// Other names of the colours, which the library does not take.
inline constexpr std::array<std::string_view, 3> c_asPlyOtherColors = {"diffuse_red", "diffuse_green",
                                                                       "diffuse_blue"};

/// The type that a word means, by either name. @return null when it is none.
const CPlyType* FindPlyType(std::string_view sWord) noexcept;

/// The type that the library takes what begins with `sText` for. @return null when it is none to it.
const CPlyType* FindTakenPlyType(std::string_view sText) noexcept;

#endif

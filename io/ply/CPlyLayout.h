#ifndef IO_PLY_CPLYLAYOUT_H
#define IO_PLY_CPLYLAYOUT_H

#include <formats/CPlyHeader.h>

#include <array>
#include <cstddef>

/// A place for each role, counted in bytes from the start of an item.
using CPlyOffsets = std::array<std::size_t, PlyRole_Blue + 1>;

/// What the properties of one element come to: how many bytes an item takes, and where in it the values
/// of a vertex lie.
class CPlyLayout
{
public:
    CPlyLayout(const CPlyProperty* pProps, std::size_t nNumProps);

    /// @return whether an item of the element has a property of this role.
    bool Has(enumPlyRole eRole) const noexcept { return m_abHas[eRole]; }

    bool HasPosition() const noexcept { return Has(PlyRole_X) && Has(PlyRole_Y) && Has(PlyRole_Z); }

    bool HasColor() const noexcept { return Has(PlyRole_Red) && Has(PlyRole_Green) && Has(PlyRole_Blue); }

    /// @return whether every item takes the same bytes, GetMinSize() of them: no list, nothing unreadable.
    bool IsFixed() const noexcept { return m_bFixed; }

    /// @return whether the layout is fixed and what a vertex needs can be taken from its bytes as they
    ///         stand: x, y and z take four bytes or more each.
    bool IsPlain() const noexcept { return m_bPlain; }

    /// Bytes that an item takes at least: those of its scalars, one for each list.
    std::size_t GetMinSize() const noexcept { return m_nMinSize; }

    /// Where the values lie in an item; means something where IsPlain(), and for the roles it has.
    const CPlyOffsets& GetOffsets() const noexcept { return m_anOffset; }

    /// @return whether `nCount` items can be read from `nNumBytes` bytes, the last value cut off or not.
    bool CanHold(std::int32_t nCount, long nNumBytes) const noexcept;

private:
    bool m_bReadable = true;
    bool m_bFixed = true;
    bool m_bPlain = true;
    std::size_t m_nMinSize = 0;
    std::size_t m_nLastSize = 1; // bytes of the last value
    std::array<bool, PlyRole_Blue + 1> m_abHas{};
    CPlyOffsets m_anOffset{};
};

#endif

#ifndef FORMATS_CPLYHEADER_H
#define FORMATS_CPLYHEADER_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

/// What a vertex property means to the reader, by its name.
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

/// A property of an element: role and type. The types are 1 to 8 for char, uchar, short, ushort, int, uint,
/// float and double, 9 to 16 for lists of them with a one-byte count, 0 for any other.
class CPlyProperty
{
public:
    /// Bytes of the largest value.
    static constexpr std::size_t c_nMaxSize = 8;

    bool IsReadable() const noexcept { return m_ucType != 0; }
    bool IsList() const noexcept { return m_ucType > 8; }

    /// Bytes of the value, of a list those of one of its entries. REQUIRES: IsReadable().
    std::size_t GetSize() const noexcept;

    enumPlyRole m_eRole = PlyRole_None;
    std::uint8_t m_ucType = 0;
};

/// A group of items of one layout: the vertices, the faces and so on.
class CPlyElement
{
public:
    bool m_bVertex = false;       ///< the items are the points
    std::int32_t m_nCount = 0;    ///< number of items, above 0 in a list of elements
    std::size_t m_nFirstProp = 0; ///< its properties are a run of the header's
    std::size_t m_nNumProps = 0;
};

/// The header of a binary little-endian PLY file. Fill it with `Read`, then ask.
///
/// It takes a few times the header's own bytes of memory: nothing in it is sized by a number that the file
/// merely states.
class CPlyHeader
{
public:
    /// Reads the header.
    ///
    /// @param pFile  a binary stream at its start; not null. It is left somewhere behind the header.
    /// @return false when the file is not a binary little-endian PLY of version 1.0. A header that ends
    ///         with the file is no failure: the element that it was in is dropped.
    bool Read(std::FILE* pFile);

    /// The elements of positive count, in their order.
    const std::vector<CPlyElement>& GetElements() const noexcept { return m_vecElements; }

    /// The properties of `element`, which is one of `GetElements`, in their order: `m_nNumProps` of them.
    const CPlyProperty* GetProperties(const CPlyElement& element) const noexcept
    {
        return m_vecProps.data() + element.m_nFirstProp;
    }

    /// Position of the first byte behind the header, as the bytes of the file count.
    long GetDataOffset() const noexcept { return m_nDataOffset; }

private:
    bool ReadLine(std::FILE* pFile);
    bool ReadMagic(std::FILE* pFile);
    void OpenElement();
    void CompleteElement();
    void AddProperty();

    std::string m_sLine; // the line read last, its line end as a line feed, nothing from a zero byte on
    long m_nDataOffset = 0;
    CPlyElement m_open; // the element that properties go to
    std::vector<CPlyElement> m_vecElements;
    std::vector<CPlyProperty> m_vecProps; // those of m_vecElements one after the other, then the open ones
};

#endif

#ifndef TESTS_IO_NATIVE_NATIVEBYTES_H
#define TESTS_IO_NATIVE_NATIVEBYTES_H

#include <tests/support/RefTree.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

/// Native files put together by the book: no code of the library.
namespace NativeBytes
{

template <class Number>
std::string BytesOf(Number number)
{
    std::string sBytes(sizeof number, '\0');
    std::memcpy(sBytes.data(), &number, sizeof number);
    return sBytes;
}

inline const std::string c_sPrologue(":\x01\x01\x00\x00", 5);

/// Prologue, version and point type.
inline std::string Start(int nType, int nVersion = 0)
{
    return c_sPrologue + BytesOf(static_cast<std::int32_t>(nVersion)) +
           BytesOf(static_cast<std::int16_t>(nType));
}

/// Origin and number of points.
inline std::string Count(int nNumPnts, const std::array<float, 3>& org = {})
{
    return BytesOf(org[0]) + BytesOf(org[1]) + BytesOf(org[2]) + BytesOf(static_cast<std::int32_t>(nNumPnts));
}

inline std::string Pnts(const std::vector<Ref::CPnt>& pnts, bool bColor)
{
    std::string sBytes;
    for (const Ref::CPnt& pnt : pnts)
    {
        sBytes += BytesOf(pnt.x) + BytesOf(pnt.y) + BytesOf(pnt.z);
        if (bColor)
            sBytes += BytesOf(pnt.r) + BytesOf(pnt.g) + BytesOf(pnt.b);
    }
    return sBytes;
}

/// `n` points of which no two are equal.
inline std::string SomePnts(int n, bool bColor)
{
    std::vector<Ref::CPnt> pnts;
    for (int i = 0; i < n; ++i)
        pnts.push_back({i * 1000, i * 10, -i, static_cast<std::uint8_t>(i), 2, 3});
    return Pnts(pnts, bColor);
}

/// Centre, edge and extents.
inline std::string TreeHeader(const Ref::CTree& tree)
{
    std::string sBytes;
    for (const std::int64_t n : {tree.cube.x, tree.cube.y, tree.cube.z, tree.cube.edge, tree.extent[0],
                                 tree.extent[1], tree.extent[2]})
        sBytes += BytesOf(static_cast<std::int32_t>(n));
    return sBytes;
}

inline std::string SomeTreeHeader()
{
    Ref::CTree tree;
    tree.cube = {500, 500, 500, 1000};
    tree.extent = {1000, 1000, 1000};
    return TreeHeader(tree);
}

inline std::string Masks(int nChildren, int nLeaves)
{
    return {static_cast<char>(nChildren), static_cast<char>(nLeaves)};
}

inline std::string Leaf(std::uint32_t nCount, std::uint32_t nFirst)
{
    return BytesOf(nCount) + BytesOf(nFirst);
}

inline std::string NodeBytes(const Ref::CNode& node)
{
    int nChildren = 0;
    int nLeaves = 0;
    std::string sChildren;
    for (std::size_t k = 0; k < 8; ++k)
    {
        const Ref::CChild* const pChild = node.child[k].get();
        if (pChild == nullptr)
            continue;
        nChildren |= 1 << k;
        nLeaves |= (pChild->leaf ? 1 : 0) << k;
        sChildren += pChild->leaf ? Leaf(static_cast<std::uint32_t>(pChild->count),
                                         static_cast<std::uint32_t>(pChild->first))
                                  : NodeBytes(*pChild->node);
    }
    return Masks(nChildren, nLeaves) + sChildren;
}

/// The whole file of a built store.
inline std::string File(bool bColor, int nVersion, const std::array<float, 3>& org,
                        const std::vector<Ref::CPnt>& pnts, const Ref::CTree& tree)
{
    return Start(bColor ? 1 : 0, nVersion) + Count(static_cast<int>(pnts.size()), org) + Pnts(pnts, bColor) +
           TreeHeader(tree) + (tree.root == nullptr ? Masks(0, 0) : NodeBytes(*tree.root));
}

} // namespace NativeBytes

#endif

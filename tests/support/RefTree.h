#ifndef SUPPORT_REFTREE_H
#define SUPPORT_REFTREE_H

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

/// A slow and obvious model of the octree: plain vectors and pointers, no code of the library.
namespace Ref
{

struct CPnt
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t z = 0;
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;

    bool operator==(const CPnt& o) const
    {
        return x == o.x && y == o.y && z == o.z && r == o.r && g == o.g && b == o.b;
    }
    bool operator!=(const CPnt& o) const { return !(*this == o); }
};

struct CNode;

/// One present child: a leaf (count, first), or an inner node.
struct CChild
{
    bool leaf = false;
    int count = 0;
    int first = 0;
    std::shared_ptr<CNode> node;
};

struct CNode
{
    std::array<std::unique_ptr<CChild>, 8> child; ///< null: the octant is empty
};

struct CCube
{
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t z = 0;
    std::int64_t edge = 0;
};

/// Cube of the child in octant `k`.
CCube ChildCube(const CCube& cube, int k);

struct CTree
{
    std::shared_ptr<CNode> root; ///< null: no point
    CCube cube;
    std::array<std::int64_t, 3> extent{};
};

/// Records below the plane to the front, keeping their order: each is exchanged with the first record at
/// or above it. @return how many there are. `axis`: 0 x, 1 y, 2 z.
int Partition(std::vector<CPnt>& pnts, int first, int count, int axis, std::int64_t plane);

/// Builds the tree and reorders the points.
CTree BuildTree(std::vector<CPnt>& pnts);

/// Positions, ascending, of the points that share x and y with an earlier one of their leaf.
std::vector<int> FindDuplicates(const std::vector<CPnt>& pnts, const CTree& tree);

/// Box of a built tree: xmin, ymin, zmin, xmax, ymax, zmax.
std::array<double, 6> CalcBox(const CTree& tree, const std::array<float, 3>& org);

/// Offset of a coordinate from the origin, in compact units.
std::int32_t ToCompact(double d, float org);

/// Origin that a first coordinate sets.
float ToOrigin(double d);

} // namespace Ref

#endif

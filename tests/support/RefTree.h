#ifndef SUPPORT_REFTREE_H
#define SUPPORT_REFTREE_H

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

/// A slow and obvious model of the octree: plain vectors and pointers, no code of the library.
namespace Ref
{

struct Pnt
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t z = 0;
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;

    bool operator==(const Pnt& o) const
    {
        return x == o.x && y == o.y && z == o.z && r == o.r && g == o.g && b == o.b;
    }
    bool operator!=(const Pnt& o) const { return !(*this == o); }
};

struct Node;

/// One present child: a leaf (count, first), or an inner node.
struct Child
{
    bool leaf = false;
    int count = 0;
    int first = 0;
    std::shared_ptr<Node> node;
};

struct Node
{
    std::array<std::unique_ptr<Child>, 8> child; ///< null: the octant is empty
};

struct Cube
{
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t z = 0;
    std::int64_t edge = 0;
};

/// Cube of the child in octant `k`.
Cube ChildCube(const Cube& cube, int k);

struct Tree
{
    std::shared_ptr<Node> root; ///< null: no point
    Cube cube;
    std::array<std::int64_t, 3> extent{};
};

/// Records below the plane to the front, keeping their order: each is exchanged with the first record at
/// or above it. @return how many there are. `axis`: 0 x, 1 y, 2 z.
int Partition(std::vector<Pnt>& pnts, int first, int count, int axis, std::int64_t plane);

/// Builds the tree and reorders the points.
Tree BuildTree(std::vector<Pnt>& pnts);

/// Positions, ascending, of the points that share x and y with an earlier one of their leaf.
std::vector<int> FindDuplicates(const std::vector<Pnt>& pnts, const Tree& tree);

/// Box of a built tree: xmin, ymin, zmin, xmax, ymax, zmax.
std::array<double, 6> CalcBox(const Tree& tree, const std::array<float, 3>& org);

/// Offset of a coordinate from the origin, in compact units.
std::int32_t ToCompact(double d, float org);

/// Origin that a first coordinate sets.
float ToOrigin(double d);

} // namespace Ref

#endif

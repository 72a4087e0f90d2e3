#include <tests/support/RefTree.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Ref
{

namespace
{

constexpr std::int64_t c_max = std::numeric_limits<std::int32_t>::max();

std::int64_t Coord(const CPnt& pnt, int axis)
{
    return axis == 0 ? pnt.x : axis == 1 ? pnt.y : pnt.z;
}

bool IsLeaf(int depth, int count, std::int64_t edge)
{
    return depth == 20 || count <= 10 || (count < 1000 && edge <= 1000);
}

void BuildNode(CNode& node, int depth, const CCube& cube, std::vector<CPnt>& pnts, int first, int count)
{
    std::array<int, 9> end{};
    end[0] = first;
    end[8] = first + count;
    end[4] = end[0] + Partition(pnts, end[0], end[8] - end[0], 0, cube.x);
    end[2] = end[0] + Partition(pnts, end[0], end[4] - end[0], 1, cube.y);
    end[6] = end[4] + Partition(pnts, end[4], end[8] - end[4], 1, cube.y);
    for (std::size_t k = 0; k < 8; k += 2)
        end[k + 1] = end[k] + Partition(pnts, end[k], end[k + 2] - end[k], 2, cube.z);

    for (std::size_t k = 0; k < 8; ++k)
    {
        const int sub = end[k + 1] - end[k];
        if (sub == 0)
            continue;
        node.child[k] = std::make_unique<CChild>();
        node.child[k]->leaf = IsLeaf(depth, sub, cube.edge);
        node.child[k]->count = sub;
        node.child[k]->first = end[k];
        if (node.child[k]->leaf)
            continue;
        node.child[k]->node = std::make_shared<CNode>();
        BuildNode(*node.child[k]->node, depth + 1, ChildCube(cube, static_cast<int>(k)), pnts, end[k], sub);
    }
}

void FindInNode(const std::vector<CPnt>& pnts, const CNode& node, std::vector<int>& duplicates)
{
    for (const auto& child : node.child)
    {
        if (child == nullptr)
            continue;
        if (!child->leaf)
        {
            FindInNode(pnts, *child->node, duplicates);
            continue;
        }
        std::vector<bool> isDuplicate(static_cast<std::size_t>(child->count));
        for (std::size_t a = 0; a < isDuplicate.size(); ++a)
        {
            for (std::size_t b = a + 1; !isDuplicate[a] && b < isDuplicate.size(); ++b)
            {
                const CPnt& pntA = pnts[static_cast<std::size_t>(child->first) + a];
                const CPnt& pntB = pnts[static_cast<std::size_t>(child->first) + b];
                if (pntA.x == pntB.x && pntA.y == pntB.y)
                    isDuplicate[b] = true;
            }
        }
        for (std::size_t a = 0; a < isDuplicate.size(); ++a)
            if (isDuplicate[a])
                duplicates.push_back(child->first + static_cast<int>(a));
    }
}

} // namespace

CCube ChildCube(const CCube& cube, int k)
{
    const std::int64_t h = cube.edge / 2 / 2;
    CCube child = cube;
    child.edge = cube.edge / 2;
    child.x += k >= 4 ? h : -h;
    child.y += k == 2 || k == 3 || k == 6 || k == 7 ? h : -h;
    child.z += k % 2 == 1 ? h : -h;
    return child;
}

int Partition(std::vector<CPnt>& pnts, int first, int count, int axis, std::int64_t plane)
{
    int below = 0;
    for (int i = 0; i < count; ++i)
    {
        const auto at = static_cast<std::size_t>(first + i);
        if (Coord(pnts[at], axis) >= plane)
            continue;
        std::swap(pnts[at], pnts[static_cast<std::size_t>(first + below)]);
        ++below;
    }
    return below;
}

CTree BuildTree(std::vector<CPnt>& pnts)
{
    CTree tree;
    if (pnts.empty())
        return tree;
    std::array<double, 3> centre{};
    for (int axis = 0; axis < 3; ++axis)
    {
        double lo = static_cast<double>(Coord(pnts[0], axis));
        double hi = lo;
        for (const CPnt& pnt : pnts)
        {
            lo = std::min(lo, static_cast<double>(Coord(pnt, axis)));
            hi = std::max(hi, static_cast<double>(Coord(pnt, axis)));
        }
        const auto i = static_cast<std::size_t>(axis);
        centre[i] = std::trunc((lo + hi) * 0.5);
        tree.extent[i] = std::min(static_cast<std::int64_t>(hi - lo), c_max);
    }
    tree.cube = {static_cast<std::int64_t>(centre[0]), static_cast<std::int64_t>(centre[1]),
                 static_cast<std::int64_t>(centre[2]),
                 std::max(tree.extent[0], std::max(tree.extent[1], tree.extent[2]))};
    tree.root = std::make_shared<CNode>();
    BuildNode(*tree.root, 0, tree.cube, pnts, 0, static_cast<int>(pnts.size()));
    return tree;
}

std::vector<int> FindDuplicates(const std::vector<CPnt>& pnts, const CTree& tree)
{
    std::vector<int> duplicates;
    if (tree.root != nullptr)
        FindInNode(pnts, *tree.root, duplicates);
    return duplicates;
}

std::array<double, 6> CalcBox(const CTree& tree, const std::array<float, 3>& org)
{
    const std::array<std::int64_t, 3> centre{tree.cube.x, tree.cube.y, tree.cube.z};
    std::array<double, 6> box{};
    for (std::size_t i = 0; i < 3; ++i)
    {
        box[i] = static_cast<double>(centre[i] - tree.extent[i] / 2) / 10000.0 + static_cast<double>(org[i]);
        box[i + 3] =
            static_cast<double>(centre[i] + tree.extent[i] / 2) / 10000.0 + static_cast<double>(org[i]);
    }
    return box;
}

std::int32_t ToCompact(double d, float org)
{
    const double offset = std::trunc((d - static_cast<double>(org)) * 10000.0);
    if (std::isnan(offset))
        return 0;
    if (offset >= 2147483647.0)
        return std::numeric_limits<std::int32_t>::max();
    if (offset <= -2147483648.0)
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(offset);
}

float ToOrigin(double d)
{
    if (std::isnan(d))
        return 0.0F;
    const double largest = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(std::max(-largest, std::min(largest, d)));
}

} // namespace Ref

#include <formats/NativeFacts.h>

#include <formats/CByteReader.h>
#include <formats/CNativeTreeWalk.h>
#include <formats/LittleEndian.h>

namespace
{

/// Counts the points of a tree.
class CPntCount
{
public:
    struct CNode
    {
    };

    class CChildren
    {
    public:
        CChildren(CPntCount& count, CNode& node, std::uint8_t, std::uint8_t) : m_count(count), m_node(node) {}

        void AddLeaf(std::int32_t nCount, std::int32_t) { m_count.m_nNumPnts += nCount; }
        CNode& OpenNode() { return m_node; }
        void KeepNode() {}
        void Close(const CNode&, std::uint8_t) {}

    private:
        CPntCount& m_count;
        CNode& m_node;
    };

    std::int64_t m_nNumPnts = 0;
};

class CTreeBytes
{
public:
    explicit CTreeBytes(CByteReader& reader) : m_reader(reader) {}

    std::size_t Read(void* pBytes, std::size_t nNumBytes) { return m_reader.ReadUpTo(pBytes, nNumBytes); }

private:
    CByteReader& m_reader;
};

void WalkTree(CByteReader& reader, CNativeFacts& facts)
{
    CTreeBytes bytes(reader);
    CPntCount count;
    CPntCount::CNode root;
    CNativeTreeWalk<CTreeBytes, CPntCount> walk(bytes, count, static_cast<std::int32_t>(facts.nNumHeld));
    walk.Walk(root);
    facts.nNumInTree = count.m_nNumPnts;
    facts.bTreeWhole = walk.IsWhole();
    if (facts.bTreeWhole)
        facts.nNumBehind = facts.nFileSize - reader.GetPos() + static_cast<std::int64_t>(walk.GetNumBehind());
}

} // namespace

CNativeFacts FindNativeHead(CByteReader& reader)
{
    CNativeFacts facts;
    facts.nFileSize = reader.GetSize();
    std::array<unsigned char, c_nNativeHeaderSize> acBytes{};
    const std::size_t nSize = reader.ReadUpTo(acBytes.data(), acBytes.size());
    facts.header = CNativeHeader::FromBytes(acBytes, nSize);
    if (!facts.header.IsTypeKnown())
        return facts;
    facts.nNumHeld = facts.header.CalcNumHeld(static_cast<std::uint64_t>(facts.nFileSize - reader.GetPos()));
    const std::int64_t nPntBytes = facts.nNumHeld * static_cast<std::int64_t>(facts.header.GetPntSize());
    std::array<unsigned char, c_nNativeTreeHeaderSize> acTree{};
    if (facts.nNumHeld < facts.header.nNumPnts || !reader.Skip(nPntBytes) ||
        !reader.Read(acTree.data(), acTree.size()))
        return facts;
    facts.bTreeHeader = true;
    facts.treeHeader = CNativeTreeHeader::FromBytes(acTree);
    return facts;
}

CNativeFacts FindNativeFacts(CByteReader& reader)
{
    CNativeFacts facts = FindNativeHead(reader);
    if (facts.bTreeHeader)
        WalkTree(reader, facts);
    return facts;
}

std::int64_t FindNumBeforeTree(CByteReader& reader, const CNativeFacts& facts)
{
    int nNumLeft = 64; // looks at what may be an octree: points can be made so that many places look like one
    const auto nPntSize = static_cast<std::int64_t>(facts.header.GetPntSize());
    std::array<unsigned char, c_nNativeTreeHeaderSize> acTree{};
    for (std::int32_t n = 1; n < facts.nNumHeld && nNumLeft > 0; ++n)
    {
        reader.SetPos(static_cast<std::int64_t>(c_nNativeHeaderSize) + n * nPntSize);
        if (!reader.Read(acTree.data(), acTree.size()))
            return -1;
        if (!CNativeTreeHeader::FromBytes(acTree).IsPossible())
            continue;
        CNativeFacts fewer = facts;
        fewer.nNumHeld = n;
        fewer.nNumInTree = 0;
        WalkTree(reader, fewer);
        if (fewer.bTreeWhole && fewer.nNumInTree == n && fewer.nNumBehind == 0)
            return n;
        --nNumLeft;
    }
    return -1;
}

bool HasBoxOfItsPnts(CByteReader& reader, const CNativeFacts& facts)
{
    const std::size_t nPntSize = facts.header.GetPntSize();
    std::array<CCompactRange, 3> ranges;
    std::array<unsigned char, c_nNativeColorPntSize> acPnt{};
    reader.SetPos(static_cast<std::int64_t>(c_nNativeHeaderSize));
    for (std::int64_t i = 0; i < facts.nNumHeld && reader.Read(acPnt.data(), nPntSize); ++i)
        for (std::size_t k = 0; k < ranges.size(); ++k)
            ranges[k].Add(LittleEndian::Get<std::int32_t>(acPnt.data() + k * sizeof(std::int32_t)));
    return CNativeTreeHeader::FromRanges(ranges) == facts.treeHeader;
}

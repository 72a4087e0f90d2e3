#include <formats/CNativeTreeHeader.h>

#include <formats/LittleEndian.h>

#include <algorithm>

CNativeTreeHeader
CNativeTreeHeader::FromBytes(const std::array<unsigned char, c_nNativeTreeHeaderSize>& acBytes) noexcept
{
    CNativeTreeHeader header;
    const unsigned char* p = acBytes.data();
    const auto take = [&p](std::int32_t& n)
    {
        n = LittleEndian::Get<std::int32_t>(p);
        p += sizeof n;
    };
    for (std::int32_t& nCentre : header.anCentre)
        take(nCentre);
    take(header.nEdge);
    for (std::int32_t& nExtent : header.anExtent)
        take(nExtent);
    return header;
}

CNativeTreeHeader CNativeTreeHeader::FromRanges(const std::array<CCompactRange, 3>& ranges) noexcept
{
    CNativeTreeHeader header;
    for (std::size_t i = 0; i < ranges.size(); ++i)
    {
        header.anCentre[i] = ranges[i].GetCentre();
        header.anExtent[i] = ranges[i].GetExtent();
    }
    header.nEdge = *std::max_element(header.anExtent.begin(), header.anExtent.end());
    return header;
}

bool CNativeTreeHeader::IsPossible() const noexcept
{
    const auto [itMin, itMax] = std::minmax_element(anExtent.begin(), anExtent.end());
    return *itMin >= 0 && *itMax == nEdge;
}

bool CNativeTreeHeader::operator==(const CNativeTreeHeader& other) const noexcept
{
    return anCentre == other.anCentre && nEdge == other.nEdge && anExtent == other.anExtent;
}

#include <formats/CNativeHeader.h>

#include <formats/CountOf.h>
#include <formats/LittleEndian.h>

#include <algorithm>
#include <cmath>

CNativeHeader CNativeHeader::FromBytes(const std::array<unsigned char, c_nNativeHeaderSize>& acBytes,
                                       std::size_t nSize) noexcept
{
    const unsigned char* const p = acBytes.data();
    CNativeHeader header;
    header.nSize = nSize;
    header.bPrologue = std::equal(c_acNativePrologue.begin(), c_acNativePrologue.end(), p);
    header.nVersion = LittleEndian::Get<std::int32_t>(p + c_nNativeVersionPos);
    header.nType = LittleEndian::Get<std::int16_t>(p + c_nNativeTypePos);
    for (std::size_t i = 0; i < header.afOrg.size(); ++i)
        header.afOrg[i] = LittleEndian::Get<float>(p + c_nNativeOriginPos + i * sizeof(float));
    header.nNumPnts = LittleEndian::Get<std::int32_t>(p + c_nNativeNumPntsPos);
    return header;
}

std::int32_t CNativeHeader::CalcNumHeld(std::uint64_t nNumBytes) const noexcept
{
    if (nNumPnts <= 0)
        return 0;
    return static_cast<std::int32_t>(
        std::min<std::uint64_t>(static_cast<std::uint64_t>(nNumPnts), nNumBytes / GetPntSize()));
}

bool CNativeHeader::IsOriginFinite() const noexcept
{
    return std::all_of(afOrg.begin(), afOrg.end(), [](float f) { return std::isfinite(f); });
}

CFileCause CNativeHeader::FindCause() const
{
    if (nSize < c_acNativePrologue.size())
        return {FileCause_NativeTooShort, "not a native cloud file: it has " +
                                              CountOf(static_cast<std::int64_t>(nSize), "byte") + " only"};
    if (!IsTypeKnown())
        return {FileCause_NativeType, (bPrologue ? "" : "not a native cloud file: ") +
                                          std::string("its point type is ") + std::to_string(nType) +
                                          ", 0 and 1 are known"};
    return {FileCause_None, IsOriginFinite() ? "" : "its origin is no finite number: it is damaged"};
}

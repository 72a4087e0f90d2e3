#include <formats/PlyTypes.h>

#include <formats/CountOf.h>
#include <formats/MakePrintable.h>

#include <algorithm>

std::string FormatPlyItems(std::int64_t nCount, std::string_view sElement, bool bVertices)
{
    if (bVertices)
        return std::to_string(nCount) + OneOrMany(nCount, " vertex", " vertices");
    return CountOf(nCount, "item") + " of element " + MakePrintableName(sElement);
}

const CPlyType* FindPlyType(std::string_view sWord) noexcept
{
    const auto* const pFound =
        std::find_if(c_aPlyTypes.begin(), c_aPlyTypes.end(),
                     [&](const CPlyType& type) { return type.sName == sWord || type.sSized == sWord; });
    return pFound == c_aPlyTypes.end() ? nullptr : pFound;
}

// KEPT: types are told by the start of their name, in the order of the table: of the sized names every
// integer is one of four bytes, and so is every floating number (Property_SizedTypesGoByPrefix_Kept,
// Read_SizedTypesGoByPrefix_Kept).
const CPlyType* FindTakenPlyType(std::string_view sText) noexcept
{
    const auto* const pEnd = c_aPlyTypes.begin() + c_nNumTakenPlyTypes;
    const auto* const pFound =
        std::find_if(c_aPlyTypes.begin(), pEnd,
                     [&](const CPlyType& type) { return sText.substr(0, type.sName.size()) == type.sName; });
    return pFound == pEnd ? nullptr : pFound;
}

#ifndef FORMATS_CGEOKEYS_H
#define FORMATS_CGEOKEYS_H

#include <formats/CCoordSystem.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The numbered keys that state a coordinate system, as GeoTIFF has them: a directory of 16-bit numbers, and
/// beside it the real numbers and the texts that it points at. Fill it, then ask.
struct CGeoKeys
{
    std::vector<std::uint16_t> vecDirectory; ///< a head of four numbers, then four a key
    std::vector<double> vecDoubles;
    std::string sTexts;

    /// @return the number of a key; none where the key is missing or has another kind of value.
    std::optional<int> FindNumber(int nKey) const;
    std::optional<double> FindDouble(int nKey) const;

    /// @return the text of a key without the mark at its end; empty: it is missing.
    std::string FindText(int nKey) const;

    /// @return the system that the keys state; none where they do not say that there is one.
    CCoordSystem GetCoordSystem() const;

private:
    const std::uint16_t* FindEntry(int nKey) const;
    CCoordUnit FindUnit(int nKey, int nSizeKey, bool bAngle) const;
    void TakePlan(CCoordSystem& coords, bool bProjected) const;
    void TakeHeight(CCoordSystem& coords) const;
};

#endif

#include <python/bind/FillCloud.h>

#include <python/bind/CProgress.h>
#include <python/bind/Gil.h>
#include <python/bind/ReadIndex.h>
#include <python/bind/Records.h>
#include <zor4data/KeepPnts.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

namespace py = pybind11;

namespace zorpy
{

namespace
{

using TPlace = std::array<double, 3>;

/// What keeps a row from being a point; its place is 0 to 2.
struct CBadRow
{
    std::int64_t nRow;
    std::size_t nAxis;
    double dValue;
    double dOrg;
};

/// The points on their way in.
struct CSource
{
    const py::array& xyz;
    const unsigned char* pRgb; ///< null: none
    std::int64_t nNumPnts;
    bool bOrg;  ///< the origin is not the first point
    TPlace org; ///< but this
};

/// @return the origin as the library stores it; not-a-number where a float does not reach.
TPlace RoundOrigin(const TPlace& place)
{
    constexpr double c_dLargest = std::numeric_limits<float>::max();
    TPlace rounded;
    for (std::size_t k = 0; k < place.size(); ++k)
        rounded[k] = std::fabs(place[k]) <= c_dLargest ? static_cast<double>(static_cast<float>(place[k]))
                                                       : std::numeric_limits<double>::quiet_NaN();
    return rounded;
}

/// @return the place which the library, that cuts towards the origin, stores in the step nearest to `place`:
///         what comes out of a cloud goes into another one of the same origin unchanged.
TPlace MoveToStep(const TPlace& place, const TPlace& org)
{
    constexpr double c_dHalfStep = 0.5 / c_dUnitsPerCoord;
    TPlace moved;
    for (std::size_t k = 0; k < place.size(); ++k)
        moved[k] = place[k] + std::copysign(c_dHalfStep, place[k] - org[k]);
    return moved;
}

/// The first point sets the origin: it moves only on the axes where that stays what it is.
TPlace MoveFirst(const TPlace& place, const TPlace& org)
{
    TPlace moved = MoveToStep(place, org);
    const TPlace rounded = RoundOrigin(moved);
    for (std::size_t k = 0; k < place.size(); ++k)
        if (!(rounded[k] == org[k]))
            moved[k] = place[k];
    return moved;
}

template <class Number>
std::optional<CBadRow> Add(CPntCld& cld, const CSource& source)
{
    const auto* const pXyz = static_cast<const Number*>(source.xyz.data());
    TPlace org = source.org;
    if (source.bOrg)
        static_cast<void>(cld.AddPnt(org[0], org[1], org[2]));
    else if (source.nNumPnts > 0)
        org = {static_cast<double>(pXyz[0]), static_cast<double>(pXyz[1]), static_cast<double>(pXyz[2])};
    org = RoundOrigin(org);
    CSignalWatch watch;
    for (std::int64_t i = 0; i < source.nNumPnts; ++i)
    {
        watch.Poll();
        const Number* const p = pXyz + 3 * i;
        const TPlace given{static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
        const TPlace place = i == 0 && !source.bOrg ? MoveFirst(given, org) : MoveToStep(given, org);
        for (std::size_t k = 0; k < place.size(); ++k)
            if (!IsInReach(place[k], org[k]))
                return CBadRow{i, k, given[k], org[k]};
        if (source.pRgb == nullptr)
            static_cast<void>(cld.AddPnt(place[0], place[1], place[2]));
        else
            static_cast<void>(cld.AddPnt(place[0], place[1], place[2], source.pRgb[3 * i],
                                         source.pRgb[3 * i + 1], source.pRgb[3 * i + 2]));
    }
    return std::nullopt;
}

/// Builds the octree. The point that has set the origin goes.
void Finish(CPntCld& cld, const CSource& source)
{
    if (!source.bOrg)
    {
        static_cast<void>(cld.ComputeTree());
        return;
    }
    std::vector<int> vecIndices(static_cast<std::size_t>(source.nNumPnts));
    std::iota(vecIndices.begin(), vecIndices.end(), 1);
    KeepPnts(cld, vecIndices);
}

std::string FormatNumber(double d)
{
    std::array<char, 32> acText{}; // 24 are the most
    static_cast<void>(std::snprintf(acText.data(), acText.size(), "%.15g", d));
    return acText.data();
}

std::string Describe(const CBadRow& bad)
{
    const std::string sWhere = "xyz[" + std::to_string(bad.nRow) + ", " + std::to_string(bad.nAxis) +
                               "] is " + FormatNumber(bad.dValue);
    if (!std::isfinite(bad.dValue))
        return sWhere + ": coordinates must be finite";
    if (std::isnan(bad.dOrg))
        return sWhere + ", which no float32 holds: the first point is the origin, which is kept as one";
    return sWhere + ", farther than 214748.3647 from the origin (" + FormatNumber(bad.dOrg) +
           " on that axis), which is as far as a cloud reaches";
}

} // namespace

TCloudPtr FillCloud(const py::array& xyz, const py::object& rgb, const py::object& origin)
{
    CSource source{xyz, nullptr, static_cast<std::int64_t>(xyz.shape(0)), !origin.is_none(), {}};
    if (source.nNumPnts == 0)
        source.bOrg = true; // 0, unless given: there is no first point
    if (!origin.is_none())
        source.org = origin.cast<TPlace>();
    if (!rgb.is_none())
        source.pRgb = static_cast<const unsigned char*>(rgb.cast<py::array>().data());
    const bool bIsFloat = py::isinstance<py::array_t<float>>(xyz);
    if (!bIsFloat && !py::isinstance<py::array_t<double>>(xyz))
        throw py::type_error("xyz must be of float64 or float32");
    const std::int64_t nNumSlots = source.nNumPnts + (source.bOrg ? 1 : 0);
    if (nNumSlots > std::numeric_limits<std::int32_t>::max())
        throw py::value_error("a cloud holds at most 2147483646 points");
    const CReleasedGil released;
    CPntCld cld(nullptr);
    cld.OnReadType(rgb.is_none() ? PntCldType_Pnt : PntCldType_PntColor);
    if (!cld.Init(static_cast<int>(nNumSlots)))
        throw std::bad_alloc();
    const std::optional<CBadRow> bad = bIsFloat ? Add<float>(cld, source) : Add<double>(cld, source);
    if (bad)
        throw py::value_error(Describe(*bad));
    CheckSignals();
    Finish(cld, source);
    CheckSignals();
    return std::make_shared<CCloud>(cld);
}

TCloudPtr TakePnts(const CCloud& cloud, const py::array& index)
{
    const CIndexList list(index, cloud.GetArrays().nNumPnts);
    const CReleasedGil released;
    std::vector<int> vecIndices(static_cast<std::size_t>(list.GetNum()));
    std::vector<bool> vecTaken(static_cast<std::size_t>(cloud.GetArrays().nNumPnts));
    list.ForEach(
        [&](std::int64_t i, std::int64_t nIndex)
        {
            if (vecTaken[static_cast<std::size_t>(nIndex)])
                throw py::value_error("point " + std::to_string(nIndex) + " is listed twice");
            vecTaken[static_cast<std::size_t>(nIndex)] = true;
            vecIndices[static_cast<std::size_t>(i)] = static_cast<int>(nIndex);
        });
    CPntCld cld(cloud.GetCld());
    KeepPnts(cld, vecIndices);
    CheckSignals();
    return std::make_shared<CCloud>(cld);
}

} // namespace zorpy

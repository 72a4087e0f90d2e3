#include <python/bind/Analysis.h>

#include <python/bind/ArrayFromVector.h>
#include <python/bind/CProgress.h>
#include <python/bind/Gil.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/CFileFacts.h>
#include <zor4data/CFileUnits.h>
#include <zor4data/FindGround.h>
#include <zor4data/KeepPnts.h>
#include <zor4data/PickPnt.h>

namespace py = pybind11;

using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

namespace zorpy
{

namespace
{

class CCorners final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            m_vecCoords.push_back(pPnts[i].m_pnt.x);
            m_vecCoords.push_back(pPnts[i].m_pnt.y);
        }
    }

    std::vector<double> m_vecCoords;
};

/// @return text that has words of a file in it: UTF-8, else each byte for the character of Latin-1, which
/// none
///         is not.
py::str TextFromFile(const std::string& sText)
{
    const auto nLength = static_cast<Py_ssize_t>(sText.size());
    PyObject* pText = PyUnicode_DecodeUTF8(sText.data(), nLength, nullptr);
    if (pText == nullptr && PyErr_ExceptionMatches(PyExc_UnicodeDecodeError) != 0)
    {
        PyErr_Clear();
        pText = PyUnicode_DecodeLatin1(sText.data(), nLength, nullptr);
    }
    if (pText == nullptr)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(pText);
}

PNT_3D ReadPlace(const double* p)
{
    return {p[0], p[1], p[2]};
}

} // namespace

py::array_t<std::int32_t> PickPnts(const CCloud& cloud, const TPlaceArray& origins,
                                   const TPlaceArray& directions, double dTan, const TPlaneArray& planes)
{
    const std::vector<zor::geom::PLANE_3D> vecPlanes = ReadPlanes(planes);
    const py::ssize_t nNum = origins.size() / 3;
    if (directions.size() != origins.size())
        throw py::value_error("there must be a direction for each origin");
    std::vector<std::int32_t> vecFound(static_cast<std::size_t>(nNum));
    CSignalWatch watch;
    {
        const CReleasedGil released;
        for (py::ssize_t i = 0; i < nNum; ++i)
        {
            watch.PollClock(); // one place may take milliseconds, beside which the clock is nothing
            vecFound[static_cast<std::size_t>(i)] =
                PickPnt(cloud.GetCld(), ReadPlace(origins.data() + 3 * i),
                        ReadPlace(directions.data() + 3 * i), dTan, vecPlanes);
        }
    }
    return ArrayFromVector(std::move(vecFound));
}

py::array_t<std::int32_t> FindNearest(const CCloud& cloud, const TPlaceArray& places, double dMax)
{
    const py::ssize_t nDim = places.ndim() == 2 ? places.shape(1) : 0;
    if (nDim != 2 && nDim != 3)
        throw py::value_error("places must be an N x 3 or N x 2 array");
    const double* const p = places.data();
    std::vector<std::int32_t> vecFound(static_cast<std::size_t>(places.shape(0)));
    CSignalWatch watch;
    {
        const CReleasedGil released;
        for (std::size_t i = 0; i < vecFound.size(); ++i)
        {
            watch.PollClock();
            const double* const pPlace = p + i * static_cast<std::size_t>(nDim);
            vecFound[i] = nDim == 3 ? FindNearestPnt(cloud.GetCld(), ReadPlace(pPlace), dMax)
                                    : FindNearestPnt2D(cloud.GetCld(), PNT_2D(pPlace[0], pPlace[1]), dMax);
        }
    }
    return ArrayFromVector(std::move(vecFound));
}

py::object FindGroundPnts(const CCloud& cloud, double dPlan, double dHeight, const py::object& callback)
{
    CProgress progress(callback);
    std::vector<int> vecGround;
    bool bInReach = false;
    {
        const CReleasedGil released;
        bInReach = FindGround_Scaled(cloud.GetCld(), {dPlan, dHeight}, &progress, vecGround);
    }
    if (!bInReach)
        return py::none();
    return ArrayFromVector(std::move(vecGround));
}

TCloudPtr MakeGround(const CCloud& cloud, double dPlan, double dHeight, const py::object& callback)
{
    CProgress progress(callback);
    const CReleasedGil released;
    CPntCld cld(cloud.GetCld());
    std::vector<int> vecGround;
    if (!FindGround_Scaled(cld, {dPlan, dHeight}, &progress, vecGround))
        return nullptr;
    CheckSignals();
    KeepPnts(cld, vecGround);
    CheckSignals();
    return std::make_shared<CCloud>(cld);
}

py::array_t<double> FindOutline(const CCloud& cloud, double dDistance, const py::object& callback)
{
    CProgress progress(callback);
    CCorners corners;
    {
        const CReleasedGil released;
        static_cast<void>(cloud.GetCld().CalcCnt(&progress, &corners, dDistance));
        progress.SetPos(100);
        CheckSignals();
    }
    return ArrayFromVector(std::move(corners.m_vecCoords));
}

py::tuple FindFacts(const std::string& sPath, int nKind)
{
    CFileFacts facts;
    std::vector<CFileLoss> vecLosses;
    {
        const CReleasedGil released;
        const zor::String sFile(sPath.c_str());
        facts = nKind < 0 ? FindFileFacts(sFile) : FindFileFacts(sFile, static_cast<enumPntCldFile>(nKind));
        if (facts.eCause == FileCause_None)
            vecLosses = FindFileLosses(sFile, facts.eType);
    }
    py::object bounds = py::none();
    if (facts.bBounds)
        bounds = py::make_tuple(facts.bounds.xmin, facts.bounds.ymin, facts.bounds.zmin, facts.bounds.xmax,
                                facts.bounds.ymax, facts.bounds.zmax);
    py::list losses;
    for (const CFileLoss& loss : vecLosses)
        losses.append(py::make_tuple(loss.sCode, TextFromFile(loss.sText)));
    return py::make_tuple(static_cast<int>(facts.eType), static_cast<int>(facts.eCause),
                          TextFromFile(facts.sCause), facts.nAnnounced, facts.bColor, bounds, losses);
}

py::tuple FindUnits(const std::string& sPath, int nKind)
{
    CFileUnits units;
    {
        const CReleasedGil released;
        units = FindFileUnits(zor::String(sPath.c_str()), static_cast<enumPntCldFile>(nKind));
    }
    return py::make_tuple(TextFromFile(units.plan.sName), units.plan.dMetres, units.plan.bAngle,
                          units.height.dMetres);
}

} // namespace zorpy

// A host that uses every function that the installed headers declare, a line each (check_every_call reads the
// lines): it links only if each of them is there.
#include <zor0lang/DoubleDaString.h>
#include <zor0lang/LongDaStringNullZero.h>
#include <zor0lang/String.h>
#include <zor0lang/StringTrimBoth.h>
#include <zor1math/Log2.h>
#include <zor3geom/CalcRectPlanes.h>
#include <zor3geom/DoBoolOperation.h>
#include <zor3geom/IsPntInsidePolygon.h>
#include <zor3geom/LINE_2D.h>
#include <zor3geom/PAR_LINE_2D.h>
#include <zor3geom/RECT_2D.h>
#include <zor4data/CFileFacts.h>
#include <zor4data/CFileUnits.h>
#include <zor4data/CPntArrays.h>
#include <zor4data/CPntCld.h>
#include <zor4data/CRootCube.h>
#include <zor4data/CalcCntWithin.h>
#include <zor4data/FindGround.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindLodRuns.h>
#include <zor4data/FindPntsInPolygons.h>
#include <zor4data/IPntIndexListener.h>
#include <zor4data/KeepPnts.h>
#include <zor4data/LoadNative.h>
#include <zor4data/PickPnt.h>
#include <zor4data/ReadPnts.h>
#include <zor4data/SaveCloud.h>

#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <vector>

using zor::String;
using zor::geom::BOOL_OP;
using zor::geom::LINE_2D;
using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using zor::geom::RECT_3D;
using zor::geom::TMultiPartPolygon;

namespace
{

using uchar = unsigned char;
using TRing = std::vector<PNT_2D>;
using TRings = std::vector<TRing>;
using TPlanes = std::vector<PLANE_3D>;
using TParts = std::vector<TMultiPartPolygon>;
using TBox = zor::geom::TPlanBox<double>;

int g_nNumUsed = 0;

/// Uses a function: keeps the compiler from seeing that its address is never called.
///
/// @tparam TFunction  type of the address; it tells overloads apart.
template <class TFunction>
void Keep(TFunction pFunction)
{
    volatile unsigned char bytes[sizeof pFunction];
    unsigned char copy[sizeof pFunction];
    std::memcpy(copy, &pFunction, sizeof pFunction);
    for (std::size_t i = 0; i < sizeof pFunction; ++i)
        bytes[i] = copy[i];
    g_nNumUsed += bytes[0] == copy[0] ? 1 : 0;
}

/// Uses a constructor.
template <class T, class... TArguments>
void Make(TArguments&&... arguments)
{
    alignas(T) unsigned char bytes[sizeof(T)];
    static_cast<T*>(new (bytes) T(static_cast<TArguments&&>(arguments)...))->~T();
    ++g_nNumUsed;
}

/// Uses a destructor.
template <class T>
void Destroy()
{
    Keep<void (*)(T&)>([](T& object) { object.~T(); });
}

class CColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

void UseLowerLayers()
{
    Keep<double (*)(const std::string&)>(&zor::DoubleDaString);
    Keep<long (*)(const std::string&)>(&zor::LongDaStringNullZero);
    Keep<void (*)(std::string&)>(&zor::StringTrimBoth);
    Make<zor::String>();
    Make<zor::String>("text");
    Make<zor::String>(std::string("text"));
    Keep<const char* (String::*)() const>(&zor::String::c_str);
    Keep<int (String::*)() const>(&zor::String::GetLength);
    Keep<bool (String::*)() const>(&zor::String::IsEmpty);
    Keep<int (String::*)(const char*) const>(&zor::String::Compare);
    Keep<bool (String::*)(const String&, int) const>(&zor::String::StartsWith);
    Keep<int (String::*)(char, int) const>(&zor::String::IndexOf);
    Keep<int (String::*)(char, int) const>(&zor::String::LastIndexOf);
    Keep<String (String::*)(int) const>(&zor::String::Substring);
    Keep<double (*)(double)>(&zor::math::Log2);
}

void UseGeometry()
{
    Keep<void (*)(const PNT_3D&, const PNT_3D&, const PNT_3D&, const PNT_3D&, TPlanes&)>(
        &zor::geom::CalcRectPlanes);
    Keep<void (*)(const TMultiPartPolygon&, const TMultiPartPolygon&, BOOL_OP, TParts&)>(
        &zor::geom::DoBoolOperation);
    Keep<bool (*)(const TRing&, const PNT_2D&)>(&zor::geom::IsPntInsidePolygon);
    Make<zor::geom::LINE_2D>();
    Make<zor::geom::LINE_2D>(1.0, 2.0, 3.0, 4.0);
    Keep<bool (LINE_2D::*)(const LINE_2D&) const>(&zor::geom::LINE_2D::intersect);
    Make<zor::geom::PAR_LINE_2D>(PNT_2D(1.0, 2.0), PNT_2D(3.0, 4.0));
    Keep<double (zor::geom::PAR_LINE_2D::*)() const>(&zor::geom::PAR_LINE_2D::length);
    Keep<void (zor::geom::PAR_LINE_2D::*)(const PNT_2D&, double)>(&zor::geom::PAR_LINE_2D::Rotate);
    Keep<void (zor::geom::PAR_LINE_2D::*)(double, PNT_2D&) const>(&zor::geom::PAR_LINE_2D::calcPt);
    Make<zor::geom::PLANE_3D>();
    Make<zor::geom::PLANE_3D>(1.0, 2.0, 3.0, 4.0);
    Keep<bool (PLANE_3D::*)(double, double, double) const>(&zor::geom::PLANE_3D::IsInFrontOf);
    Make<zor::geom::PNT_2D>();
    Make<zor::geom::PNT_2D>(1.0, 2.0);
    Keep<double (PNT_2D::*)(const PNT_2D&) const>(&zor::geom::PNT_2D::dist_square);
    Make<zor::geom::PNT_3D>();
    Make<zor::geom::PNT_3D>(1.0, 2.0, 3.0);
    Make<zor::geom::RECT_2D>();
    Make<zor::geom::RECT_2D>(1.0, 2.0, 3.0, 4.0);
    Make<zor::geom::RECT_3D>();
    Make<zor::geom::RECT_3D>(1.0, 2.0, 3.0, 4.0, 5.0, 6.0);
    Keep<TBox (*)()>(&zor::geom::TPlanBox<double>::GetEmpty);
    Keep<TBox (*)(double, double, double, double)>(&zor::geom::TPlanBox<double>::Around);
    Keep<bool (TBox::*)() const>(&zor::geom::TPlanBox<double>::IsEmpty);
    Keep<bool (TBox::*)(double, double) const>(&zor::geom::TPlanBox<double>::Contains);
    Keep<bool (TBox::*)(const PNT_2D&) const>(&zor::geom::TPlanBox<double>::Contains<PNT_2D>);
    Keep<bool (TBox::*)(const TBox&) const>(&zor::geom::TPlanBox<double>::Meets);
    Keep<TBox (TBox::*)(double) const>(&zor::geom::TPlanBox<double>::GetGrown);
    Keep<void (TBox::*)(double, double)>(&zor::geom::TPlanBox<double>::Add);
    Keep<void (TBox::*)(const TBox&)>(&zor::geom::TPlanBox<double>::Extend);
}

void UseCadPnt(CColors& colors)
{
    using TSet = void (CCldCadPnt::*)(const CTruncPnt&, float, float, float, int, ICldColorListener*);
    using TSetColor =
        void (CCldCadPnt::*)(const CTruncPnt_Color&, float, float, float, int, ICldColorListener*);
    Make<CCldCadPnt>();
    Make<CCldCadPnt>(CTruncPnt(1, 2, 3), 0.0F, 0.0F, 0.0F, 0, &colors);
    Make<CCldCadPnt>(CTruncPnt_Color(1, 2, 3, 4, 5, 6), 0.0F, 0.0F, 0.0F, 0, &colors);
    Keep<void (CCldCadPnt::*)()>(&CCldCadPnt::Init);
    Keep<TSet>(&CCldCadPnt::Set);
    Keep<TSetColor>(&CCldCadPnt::Set);
}

void FillCld(CColors& colors)
{
    const CPntCld cld(&colors);
    Make<CPntCld>(&colors);
    Make<CPntCld>(cld);
    Destroy<CPntCld>();
    Keep<CPntCld& (CPntCld::*)(const CPntCld&)>(&CPntCld::operator=);
    Keep<void (CPntCld::*)(enumPntCldType)>(&CPntCld::OnReadType);
    Keep<bool (CPntCld::*)(int)>(&CPntCld::Init);
    Keep<void (CPntCld::*)(int)>(&CPntCld::OnReadNumPnts);
    Keep<bool (CPntCld::*)(double, double, double)>(&CPntCld::AddPnt);
    Keep<bool (CPntCld::*)(double, double, double, uchar, uchar, uchar)>(&CPntCld::AddPnt);
    Keep<void (CPntCld::*)(double, double, double)>(&CPntCld::OnReadPnt);
    Keep<void (CPntCld::*)(double, double, double, uchar, uchar, uchar)>(&CPntCld::OnReadPnt);
    Keep<void (CPntCld::*)()>(&CPntCld::OnReadEnd);
    Keep<bool (CPntCld::*)()>(&CPntCld::ComputeTree);
    Keep<bool (CPntCld::*)(IDlgProgress*, enumPntCldFile, const String&)>(&CPntCld::ReadFromFile);
    Keep<bool (CPntCld::*)(const String&, short)>(&CPntCld::WriteToFile);
    Keep<void (CPntCld::*)()>(&CPntCld::Clear);
}

void AskCld()
{
    Keep<int (CPntCld::*)() const>(&CPntCld::GetNumPnts);
    Keep<void (CPntCld::*)(int, PNT_3D&) const>(&CPntCld::GetPnt);
    Keep<bool (CPntCld::*)(int, uchar&, uchar&, uchar&) const>(&CPntCld::GetPntColor);
    Keep<bool (CPntCld::*)(RECT_3D&) const>(&CPntCld::GetBdry);
    Keep<bool (CPntCld::*)() const>(&CPntCld::IsWithColor);
    Keep<ICldColorListener* (CPntCld::*)() const>(&CPntCld::GetColorListener);
    Keep<enumPntCldFile (CPntCld::*)() const>(&CPntCld::GetFileType);
    Keep<String (CPntCld::*)() const>(&CPntCld::GetFilePath);
    Keep<bool (CPntCld::*)() const>(&CPntCld::IsModified);
    Keep<void (CPntCld::*)(bool)>(&CPntCld::SetModified);
    Keep<int (CPntCld::*)() const>(&CPntCld::GetVersion);
    Keep<void (CPntCld::*)(int)>(&CPntCld::SetVersion);
    Keep<void (CPntCld::*)(int, bool)>(&CPntCld::SelPnt);
    Keep<void (CPntCld::*)()>(&CPntCld::UnSelPnts);
    Keep<void (CPntCld::*)()>(&CPntCld::DelSelPnts);
    Keep<bool (CPntCld::*)(IDlgProgress*, IPntCldListener*, double) const>(&CPntCld::CalcCnt);
    Keep<void (CPntCld::*)(IPclProgressListener*)>(&CPntCld::Morph);
}

void QueryCld()
{
    Keep<void (CPntCld::*)(IPntCldListener*) const>(&CPntCld::GetPnts);
    Keep<void (CPntCld::*)(IPntCldListener*, int) const>(&CPntCld::GetPnts);
    Keep<void (CPntCld::*)(IPntCldListener*, double) const>(&CPntCld::GetPnts_Lod);
    Keep<void (CPntCld::*)(IPntCldListener*, double, int) const>(&CPntCld::GetPnts_Lod);
    Keep<void (CPntCld::*)(IPntCldListener*, const TPlanes&) const>(&CPntCld::GetPnts_Clip);
    Keep<void (CPntCld::*)(IPntCldListener*, const TPlanes&, int) const>(&CPntCld::GetPnts_Clip);
    Keep<void (CPntCld::*)(IPntCldListener*, double, const TPlanes&, int) const>(&CPntCld::GetPnts_LodClip);
    Keep<void (CPntCld::*)(IPntCldListener*, double, double, double, double) const>(&CPntCld::GetPnts2D);
    Keep<int (CPntCld::*)(double, double, double, double) const>(&CPntCld::GetNumPnts2D);
    Keep<void (CPntCld::*)(IPntCldListener*, const PNT_2D&, const PNT_2D&, double, bool, bool) const>(
        &CPntCld::FindPnts2D_NearLine);
    Keep<void (CPntCld::*)(IPntCldListener*, const TRing&) const>(&CPntCld::FindPnts2D_IntCnt);
    Keep<void (CPntCld::*)(IPntCldListener*, const TRing&, const TRings&) const>(&CPntCld::FindPnts2D_Cnts);
    Keep<double (CPntCld::*)() const>(&CPntCld::CalcMaxSearchDist);
}

void UseCompanions()
{
    using TPosition = std::int32_t;
    Keep<CPntArrays (*)(const CPntCld&)>(&GetPntArrays);
    Keep<bool (*)(const CPntCld&, CRootCube&)>(&GetRootCube);
    Keep<bool (*)(const CRootCube&, int, TPosition, TPosition, TPosition, CLevelCube&)>(&GetLevelCube);
    Keep<bool (*)(const CPntCld&, double, int, TPosition, TPosition, TPosition, CLodRuns&)>(&FindLodRuns);
    Keep<bool (*)(CPntCld&, IDlgProgress*, const zor::String&)>(&LoadNative);
    Keep<enumFileCause (*)(CPntCld&, const zor::String&)>(&SaveCloud);
    Keep<enumFileCause (*)(CPntCld&, const zor::String&, const TOnTempFile&)>(&SaveCloud);
    Keep<int (*)(const CPntCld&, const PNT_3D&, const PNT_3D&, double, const TPlanes&)>(&PickPnt);
    Keep<int (*)(const CPntCld&, const PNT_3D&, double)>(&FindNearestPnt);
    Keep<int (*)(const CPntCld&, const PNT_2D&, double)>(&FindNearestPnt2D);
    Keep<bool (*)(IPntCldReadListener&, IDlgProgress*, enumPntCldFile, const String&)>(&ReadPnts);
    Keep<CFileFacts (*)(const String&)>(&FindFileFacts);
    Keep<CFileFacts (*)(const String&, enumPntCldFile)>(&FindFileFacts);
    Keep<std::vector<CFileLoss> (*)(const String&, enumPntCldFile)>(&FindFileLosses);
    Keep<enumOutline (*)(const CPntCld&, IDlgProgress*, IPntCldListener*, double, std::int64_t)>(
        &CalcCntWithin);
    Keep<void (*)(const CPntCld&, IPntCldListener*, const TParts&, bool, int)>(&FindPntsInPolygons);
}

void UseIndexCompanions()
{
    using TListener = IPntIndexListener*;
    Keep<void (IPntIndexListener::*)()>(&IPntIndexListener::OnWork);
    Keep<void (*)(const CPntCld&, TListener, int)>(&FindIndices);
    Keep<void (*)(const CPntCld&, TListener, double, int)>(&FindIndices_Lod);
    Keep<void (*)(const CPntCld&, TListener, const TPlanes&, int)>(&FindIndices_Clip);
    Keep<void (*)(const CPntCld&, TListener, double, const TPlanes&, int)>(&FindIndices_LodClip);
    Keep<void (*)(const CPntCld&, TListener, double, double, double, double, int)>(&FindIndices2D);
    Keep<void (*)(const CPntCld&, TListener, const PNT_2D&, const PNT_2D&, double, bool, bool, int)>(
        &FindIndices2D_NearLine);
    Keep<void (*)(const CPntCld&, TListener, const TParts&, bool, int)>(&FindIndicesInPolygons);
    Keep<std::vector<int> (*)(const CPntCld&, IPclProgressListener*)>(&FindGround);
    Keep<bool (*)(const CPntCld&, const CGroundScale&, IPclProgressListener*, std::vector<int>&)>(
        &FindGround_Scaled);
    Keep<CFileUnits (*)(const String&, enumPntCldFile)>(&FindFileUnits);
    Keep<bool (CGroundScale::*)() const>(&CGroundScale::IsOne);
    Keep<void (*)(CPntCld&, const std::vector<int>&)>(&KeepPnts);
}

} // namespace

int main()
{
    CColors colors;
    UseLowerLayers();
    UseGeometry();
    UseCadPnt(colors);
    FillCld(colors);
    AskCld();
    QueryCld();
    UseCompanions();
    UseIndexCompanions();
    std::printf("%d functions\n", g_nNumUsed);
    return 0;
}

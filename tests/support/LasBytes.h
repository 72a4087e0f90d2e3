#ifndef SUPPORT_LASBYTES_H
#define SUPPORT_LASBYTES_H

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

/// What the tests set of a LAS point.
struct CLasPnt
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t z = 0;
    std::array<std::uint16_t, 3> anColor{}; ///< left out of formats without colour
    std::uint16_t nIntensity = 7;
    std::uint8_t nReturn = 1; ///< formats 0 to 5: up to 7, others up to 15
    std::uint8_t nClass = 1;  ///< formats 0 to 5: up to 31
    std::uint8_t nFlags = 0;  ///< synthetic 1, key point 2, withheld 4, overlap 8 (formats 6 to 10)
};

/// A record of variable length with an owner and a number.
struct CLasNamedRecord
{
    std::string sUser;
    std::uint16_t nId = 0;
    std::string sData;
};

/// A LAS file that is not compressed, built from its parts. Make one, change what the test is about, then
/// ask for its bytes.
class CLasFile
{
public:
    int nMinor = 2; ///< version 1.nMinor
    int nFormat = 0;
    int nNumExtra = 0; ///< bytes of a point beyond its format
    std::array<double, 3> adScale = {0.01, 0.01, 0.01};
    std::array<double, 3> adOffset = {0.0, 0.0, 0.0};
    std::vector<CLasPnt> vecPnts;
    std::vector<std::string> vecRecords;   ///< of variable length: data of each, at most 65535 bytes
    std::vector<CLasNamedRecord> vecNamed; ///< more of them, behind the others
    std::vector<CLasNamedRecord> vecLater; ///< behind the points, from version 1.4 on
    std::uint16_t nEncoding = 0;
    std::string sGap;             ///< between the records and the points
    std::int64_t nAnnounced = -1; ///< -1: as many points as there are
    bool bLegacyCount = true;     ///< the count of 32 bits is set, where the version has another

    static std::size_t GetFormatSize(int nFormat)
    {
        constexpr std::array<std::size_t, 11> c_anSize = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};
        return c_anSize.at(static_cast<std::size_t>(nFormat));
    }

    std::size_t GetPntSize() const { return GetFormatSize(nFormat) + static_cast<std::size_t>(nNumExtra); }

    std::size_t GetHeaderSize() const { return nMinor >= 4 ? 375 : nMinor == 3 ? 235 : 227; }

    std::size_t GetPosPnts() const
    {
        std::size_t nPos = GetHeaderSize() + sGap.size();
        for (const std::string& sRecord : vecRecords)
            nPos += 54 + sRecord.size();
        for (const CLasNamedRecord& record : vecNamed)
            nPos += 54 + record.sData.size();
        return nPos;
    }

    std::string GetBytes() const
    {
        return GetHeaderBytes() + GetRecordBytes() + sGap + GetPntBytes() + GetLaterBytes();
    }

private:
    /// Overwrites the bytes at `nPos` with those of `value`, as a little-endian machine holds them.
    template <class T>
    static void Put(std::string& sBytes, std::size_t nPos, T value)
    {
        std::memcpy(sBytes.data() + nPos, &value, sizeof value);
    }

    void PutAttributes(std::string& sPnt, const CLasPnt& pnt) const
    {
        Put(sPnt, 12, pnt.nIntensity);
        if (nFormat < 6)
        {
            Put(sPnt, 14, static_cast<std::uint8_t>(pnt.nReturn & 7U));
            Put(sPnt, 15, static_cast<std::uint8_t>((pnt.nClass & 31U) | (pnt.nFlags & 7U) << 5U));
            return;
        }
        Put(sPnt, 14, static_cast<std::uint8_t>(pnt.nReturn & 15U));
        Put(sPnt, 15, static_cast<std::uint8_t>(pnt.nFlags & 15U));
        Put(sPnt, 16, pnt.nClass);
    }

    std::string GetHeaderBytes() const
    {
        const std::int64_t nCount = nAnnounced >= 0 ? nAnnounced : static_cast<std::int64_t>(vecPnts.size());
        std::string sBytes(GetHeaderSize(), '\0');
        sBytes.replace(0, 4, "LASF");
        Put(sBytes, 6, nEncoding);
        Put(sBytes, 24, std::uint8_t{1});
        Put(sBytes, 25, static_cast<std::uint8_t>(nMinor));
        sBytes.replace(26, 11, "test system");
        sBytes.replace(58, 13, "test software");
        Put(sBytes, 90, std::uint16_t{32}); // February 1st
        Put(sBytes, 92, std::uint16_t{2024});
        Put(sBytes, 94, static_cast<std::uint16_t>(GetHeaderSize()));
        Put(sBytes, 96, static_cast<std::uint32_t>(GetPosPnts()));
        Put(sBytes, 100, static_cast<std::uint32_t>(vecRecords.size() + vecNamed.size()));
        Put(sBytes, 104, static_cast<std::uint8_t>(nFormat));
        Put(sBytes, 105, static_cast<std::uint16_t>(GetPntSize()));
        if (bLegacyCount)
            Put(sBytes, 107, static_cast<std::uint32_t>(nCount));
        for (std::size_t i = 0; i < 3; ++i)
        {
            Put(sBytes, 131 + 8 * i, adScale[i]);
            Put(sBytes, 155 + 8 * i, adOffset[i]);
        }
        if (nMinor >= 4)
        {
            Put(sBytes, 235, static_cast<std::uint64_t>(GetPosPnts() + vecPnts.size() * GetPntSize()));
            Put(sBytes, 243, static_cast<std::uint32_t>(vecLater.size()));
            Put(sBytes, 247, static_cast<std::uint64_t>(nCount));
        }
        return sBytes;
    }

    std::string GetRecordBytes() const
    {
        std::string sBytes;
        for (const std::string& sRecord : vecRecords)
        {
            std::string sHead(54, '\0');
            sHead.replace(2, 4, "test");
            Put(sHead, 18, std::uint16_t{7});
            Put(sHead, 20, static_cast<std::uint16_t>(sRecord.size()));
            sBytes += sHead + sRecord;
        }
        for (const CLasNamedRecord& record : vecNamed)
        {
            std::string sHead(54, '\0');
            sHead.replace(2, record.sUser.size(), record.sUser);
            Put(sHead, 18, record.nId);
            Put(sHead, 20, static_cast<std::uint16_t>(record.sData.size()));
            sBytes += sHead + record.sData;
        }
        return sBytes;
    }

    std::string GetLaterBytes() const
    {
        std::string sBytes;
        for (const CLasNamedRecord& record : vecLater)
        {
            std::string sHead(60, '\0');
            sHead.replace(2, record.sUser.size(), record.sUser);
            Put(sHead, 18, record.nId);
            Put(sHead, 20, static_cast<std::uint64_t>(record.sData.size()));
            sBytes += sHead + record.sData;
        }
        return sBytes;
    }

    std::string GetPntBytes() const
    {
        // Where the colour stands in a point, by format; 0: nowhere.
        constexpr std::array<std::size_t, 11> c_anColor = {0, 0, 20, 28, 0, 28, 0, 30, 30, 0, 30};
        const std::size_t nColor = c_anColor.at(static_cast<std::size_t>(nFormat));
        std::string sBytes;
        for (const CLasPnt& pnt : vecPnts)
        {
            std::string sPnt(GetPntSize(), '\x11'); // what no test looks at
            Put(sPnt, 0, pnt.x);
            Put(sPnt, 4, pnt.y);
            Put(sPnt, 8, pnt.z);
            PutAttributes(sPnt, pnt);
            if (nColor != 0)
                Put(sPnt, nColor, pnt.anColor);
            sBytes += sPnt;
        }
        return sBytes;
    }
};

/// The record that states a coordinate system as well-known text.
inline CLasNamedRecord LasWkt(const std::string& sText)
{
    return {"LASF_Projection", 2112, sText};
}

/// The records that state one as keys, each key's number, where its value stands, how many, and the value.
inline std::vector<CLasNamedRecord> LasGeoKeys(const std::vector<std::array<std::uint16_t, 4>>& vecKeys,
                                               const std::vector<double>& vecDoubles = {},
                                               const std::string& sTexts = {})
{
    std::vector<std::uint16_t> vecDirectory = {1, 1, 0, static_cast<std::uint16_t>(vecKeys.size())};
    for (const std::array<std::uint16_t, 4>& anKey : vecKeys)
        vecDirectory.insert(vecDirectory.end(), anKey.begin(), anKey.end());
    const auto bytesOf = [](const auto& vecValues)
    {
        std::string sBytes(vecValues.size() * sizeof vecValues[0], '\0');
        if (!sBytes.empty())
            std::memcpy(sBytes.data(), vecValues.data(), sBytes.size());
        return sBytes;
    };
    return {{"LASF_Projection", 34735, bytesOf(vecDirectory)},
            {"LASF_Projection", 34736, bytesOf(vecDoubles)},
            {"LASF_Projection", 34737, sTexts}};
}

/// `nNum` points (i, -2 i, 100 + i) with a colour that differs from channel to channel.
inline std::vector<CLasPnt> LasPnts(int nNum)
{
    std::vector<CLasPnt> vecPnts;
    for (int i = 0; i < nNum; ++i)
    {
        const auto n = static_cast<std::uint16_t>(i % 256);
        vecPnts.push_back({i, -2 * i, 100 + i, {n, static_cast<std::uint16_t>(n * 256U), 65535}});
    }
    return vecPnts;
}

/// A file of `nNum` of these points; formats from 6 on make it LAS 1.4, 4 and 5 LAS 1.3.
inline CLasFile LasOf(int nFormat, int nNum)
{
    CLasFile file;
    file.nFormat = nFormat;
    file.nMinor = nFormat >= 6 ? 4 : nFormat >= 4 ? 3 : 2;
    file.bLegacyCount = nFormat < 6;
    file.vecPnts = LasPnts(nNum);
    return file;
}

#endif

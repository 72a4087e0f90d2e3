#ifndef TESTS_COMPANIONS_SMALLFILES_H
#define TESTS_COMPANIONS_SMALLFILES_H

#include <tests/io/CMemFile.h>
#include <tests/support/LasBytes.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CFileFacts.h>
#include <zor4data/CPntCld.h>

/// A file of one kind.
struct CSmallFile
{
    enumPntCldFile eType;
    std::string sBytes;
};

inline std::string SmallPlyHeader(const std::string& sRest = "end_header\n")
{
    return "ply\nformat binary_little_endian 1.0\nelement vertex 3\nproperty float x\n"
           "property float y\nproperty float z\nproperty uchar red\nproperty uchar green\n"
           "property uchar blue\nelement face 1\nproperty list uchar int vertex_indices\n" +
           sRest;
}

inline std::string SmallPly()
{
    std::string sBytes = SmallPlyHeader();
    for (int i = 0; i < 3 * 15; ++i)
        sBytes += static_cast<char>(i);
    return sBytes + std::string(1, '\3') + std::string(12, '\1');
}

inline std::string SmallGrid()
{
    return "ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9999\n"
           "1 2 -9999\n4 5 6\n";
}

inline std::string SmallNative(enumPntCldType eType)
{
    CPntCld cld(nullptr);
    cld.OnReadType(eType);
    cld.Init(30);
    for (int i = 0; i < 30; ++i)
        cld.AddPnt(i, 2.0 * i, 100.0 - i);
    cld.ComputeTree();
    const CMemFile file;
    cld.WriteToFile(file.GetPath(), 1);
    return ReadFileBytes(file.GetPath());
}

/// Was the library built with what reads LAS?
inline bool IsLasRead()
{
    const CMemFile file(LasOf(1, 1).GetBytes());
    return FindFileFacts(file.GetPath()).eCause != FileCause_NoReader;
}

/// One of each foreign kind that the library reads, two of LAS.
inline std::vector<CSmallFile> SmallForeignFiles()
{
    std::vector<CSmallFile> vecFiles = {{PntCldFile_Ply, SmallPly()}, {PntCldFile_AsciiGrid, SmallGrid()}};
    for (const int nFormat : {1, 3})
        if (IsLasRead())
            vecFiles.push_back({PntCldFile_Las, LasOf(nFormat, 5).GetBytes()});
    return vecFiles;
}

#endif

#ifndef TESTS_IO_PLY_PLYBYTES_H
#define TESTS_IO_PLY_PLYBYTES_H

#include <cstring>
#include <initializer_list>
#include <string>

/// The first two lines of every PLY file that is read.
inline const std::string c_sPlyMagic = "ply\nformat binary_little_endian 1.0\n";

inline const std::string c_sPlyXyz = "property float x\nproperty float y\nproperty float z\n";
inline const std::string c_sPlyRgb = "property uchar red\nproperty uchar green\nproperty uchar blue\n";

/// The bytes of a value as a little-endian machine holds them.
template <class T>
std::string BytesOf(T value)
{
    std::string sBytes(sizeof value, '\0');
    std::memcpy(sBytes.data(), &value, sizeof value);
    return sBytes;
}

inline std::string Floats(std::initializer_list<float> values)
{
    std::string sBytes;
    for (const float f : values)
        sBytes += BytesOf(f);
    return sBytes;
}

inline std::string Bytes(std::initializer_list<int> values)
{
    std::string sBytes;
    for (const int n : values)
        sBytes += static_cast<char>(n);
    return sBytes;
}

/// A file of `nNumVertices` vertices x, y, z = (i, i + 0.25, i + 0.5).
inline std::string PlyOfXyz(int nNumVertices)
{
    std::string sFile =
        c_sPlyMagic + "element vertex " + std::to_string(nNumVertices) + "\n" + c_sPlyXyz + "end_header\n";
    for (int i = 0; i < nNumVertices; ++i)
    {
        const float f = static_cast<float>(i);
        sFile += Floats({f, f + 0.25F, f + 0.5F});
    }
    return sFile;
}

/// Three vertices with colour, then one face.
inline std::string PlyOfTriangle()
{
    return c_sPlyMagic + "element vertex 3\n" + c_sPlyXyz + c_sPlyRgb +
           "element face 1\nproperty list uchar int vertex_indices\nend_header\n" + Floats({0, 0, 0}) +
           Bytes({255, 0, 0}) + Floats({1, 0, 0.5F}) + Bytes({0, 255, 0}) + Floats({0, 1, -2}) +
           Bytes({0, 0, 255}) + Bytes({3}) + BytesOf(0) + BytesOf(1) + BytesOf(2);
}

#endif

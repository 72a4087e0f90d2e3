#ifndef TESTS_HOST_SUPPORT_CPNG_H
#define TESTS_HOST_SUPPORT_CPNG_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A picture read back.
struct CPng
{
    std::uint32_t nWidth = 0; ///< 0: it could not be read
    std::uint32_t nHeight = 0;
    std::vector<unsigned char> vecRgb;

    /// Share of pixels in another colour than the corner's.
    double CalcShareDrawn() const;

    std::size_t CountColors() const;

    const unsigned char* GetPixel(std::uint32_t x, std::uint32_t y) const
    {
        return &vecRgb[(y * nWidth + x) * 3];
    }
};

CPng ReadPng(const std::string& sPath);

#endif

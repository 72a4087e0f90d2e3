#include <tests/host/support/CPng.h>

#include <png.h>

#include <cstring>
#include <set>

double CPng::CalcShareDrawn() const
{
    std::size_t nDrawn = 0;
    for (std::size_t i = 0; i < vecRgb.size(); i += 3)
        nDrawn += std::memcmp(&vecRgb[i], &vecRgb[vecRgb.size() - 3], 3) != 0 ? 1U : 0U;
    return static_cast<double>(nDrawn) / (static_cast<double>(vecRgb.size()) / 3.0);
}

std::size_t CPng::CountColors() const
{
    std::set<std::uint32_t> setColors;
    for (std::size_t i = 0; i < vecRgb.size(); i += 3)
        setColors.insert(static_cast<std::uint32_t>(vecRgb[i] << 16U | vecRgb[i + 1] << 8U | vecRgb[i + 2]));
    return setColors.size();
}

CPng ReadPng(const std::string& sPath)
{
    CPng png;
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, sPath.c_str()) == 0)
        return png;
    image.format = PNG_FORMAT_RGB;
    png.vecRgb.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, png.vecRgb.data(), 0, nullptr) != 0)
    {
        png.nWidth = image.width;
        png.nHeight = image.height;
    }
    png_image_free(&image);
    return png;
}

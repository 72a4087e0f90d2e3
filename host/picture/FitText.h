#ifndef HOST_PICTURE_FITTEXT_H
#define HOST_PICTURE_FITTEXT_H

#include <cstddef>
#include <functional>
#include <string>

namespace zorcld
{

/// Where a text that is too long is cut.
enum enumCut
{
    Cut_Middle, ///< names of files: both ends tell something
    Cut_End
};

/// The text as it can be written: bytes that are not UTF-8 and control characters become question marks.
std::string MakePrintable(const std::string& sText);

/// The longest part of a printable text that is at most so wide, with an ellipsis where it was cut; empty
/// where not even that fits.
std::string FitText(const std::string& sText, double dMaxWidth, enumCut eCut,
                    const std::function<double(const std::string&)>& calcWidth);

} // namespace zorcld

#endif

#ifndef HOST_PICTURE_PICTUREOPTIONS_H
#define HOST_PICTURE_PICTUREOPTIONS_H

#include <formats/CLasAttributes.h>
#include <host/picture/CPictureUnits.h>

#include <string>

class CPntCld;
struct CCoordSystem;
namespace CLI
{
class App;
}

namespace zorcld
{

class CConsole;
class CViewColors;

/// How a picture is wanted, as the command line gives it.
struct CPictureOptions
{
    std::string sSize = "1600x1200";
    std::string sColor = "auto";
    std::string sUnit; ///< empty: as the file states it
};

/// Adds --size, --color and --unit.
/// @param bAttributes  colours by the attributes of LAS files may be asked for too.
void AddPictureOptions(CLI::App& command, CPictureOptions& options, bool bAttributes = false);

/// The attribute that --color asks for; none where it asks for something else.
enumLasAttribute FindAttribute(const CPictureOptions& options);

/// The size that --size gives, pixels.
/// @throws CUsageError
void ParseSize(const std::string& sSize, int& nWidth, int& nHeight);

/// What --unit names, or else what the file states.
/// @param coords  of the file.
CPictureUnits ChooseUnits(const CPictureOptions& options, const CCoordSystem& coords);

/// Says so in one line where --unit names another unit than the file states.
/// @param sPath  the file, for the message.
void NoteOtherUnit(const CPictureOptions& options, const CCoordSystem& coords, const std::string& sPath,
                   const CConsole& console);

/// Sets what --color asks for.
/// @param cloud  where an attribute is asked for, with that in the place of colours.
/// @param sPath  the file of the cloud, for the message.
/// @throws CFailure when colours of the file are wanted and it has none.
void ChooseColors(const CPictureOptions& options, const std::string& sPath, const CPntCld& cloud,
                  CViewColors& colors);

} // namespace zorcld

#endif

#ifndef FORMATS_CPLACEDFILE_H
#define FORMATS_CPLACEDFILE_H

#include <zor4data/enumFileCause.h>

#include <cstdint>
#include <string>
#include <string_view>

/// An empty file under a temporary name beside the place where it is to be. It goes away with this object,
/// unless `Place` has put it there.
class CPlacedFile
{
public:
    /// What is put behind the name of a file to make a temporary one. The digits, which stand in place of the
    /// X, are hexadecimal and chosen then; there are so many that nobody names a file so by hand.
    static constexpr std::string_view c_sSuffix = ".zorcld-XXXXXXXXXXXX";
    static constexpr std::string_view c_sDigits = "0123456789abcdef";

    /// @param sTarget  where the file is to be; a symbolic link is followed. REQUIRES: no device or pipe.
    explicit CPlacedFile(const std::string& sTarget);
    ~CPlacedFile();
    CPlacedFile(const CPlacedFile&) = delete;
    CPlacedFile& operator=(const CPlacedFile&) = delete;

    /// @return why the file could not be made (errno says more), or FileCause_None.
    enumFileCause GetCause() const noexcept { return m_eCause; }

    /// Where the file is for now. Empty: it is in its place, or could not be made.
    const std::string& GetPath() const noexcept { return m_sTemp; }

    /// @return length in bytes; -1: it cannot be told.
    std::int64_t FindSize() const noexcept;

    /// Brings the file to the disk and puts it in its place; a file that is there is replaced. So a machine
    /// that fails leaves the old file or the new one, never a part of it under its name.
    ///
    /// REQUIRES: whoever wrote to it has closed it.
    /// @return FileCause_None, or why not, with errno; the file is then removed with this object.
    enumFileCause Place();

    /// Takes hold of a temporary file for as long as it stays open: who tidies up leaves it alone.
    /// @param nFile  its descriptor.
    static void Hold(int nFile) noexcept;

    /// The path that a symbolic link leads to; of anything else the path itself.
    /// @return 0, or errno: `sPath` is a link that cannot be followed.
    static int FollowLink(const std::string& sPath, std::string& sTarget);

    /// @return whether what is there, the target of a link, is neither a regular file nor a directory.
    static bool IsDevice(const std::string& sPath) noexcept;

private:
    void Make();

    std::string m_sTarget;
    std::string m_sTemp;
    enumFileCause m_eCause = FileCause_None;
    int m_nFile = -1;
};

#endif

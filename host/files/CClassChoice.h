#ifndef HOST_FILES_CCLASSCHOICE_H
#define HOST_FILES_CCLASSCHOICE_H

#include <formats/LasClasses.h>

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace zorcld
{

/// Which classes of points a command asks for, as the command line gives it.
struct CClassOptions
{
    std::vector<std::string> vecClasses;
    std::vector<std::string> vecNoClasses;
};

/// Adds --class and --no-class.
void AddClassOptions(CLI::App& command, CClassOptions& options);

/// Which points of a LAS file are wanted, by their classes.
class CClassChoice
{
public:
    CClassChoice() { m_kept.set(); }

    /// @throws CUsageError for what is neither a class nor the name of one, and where no class is left.
    explicit CClassChoice(const CClassOptions& options);

    /// Are not all points wanted, whatever their classes?
    bool IsAsked() const { return m_bAsked; }

    bool IsKept(std::uint8_t nClass) const { return m_kept[nClass]; }

    const TLasClasses& GetKept() const { return m_kept; }

    /// REQUIRES: IsAsked.
    /// @return what is chosen, as "classes 2 ground, 6 building" or "all but class 7 low noise".
    std::string Format() const;

    /// @param classes  of which there are points.
    /// @return what to say where none of them is kept.
    std::string FormatNone(const TLasClasses& classes) const;

private:
    TLasClasses m_kept;
    bool m_bAsked = false;
    bool m_bAllBut = false; // told by the classes that are left out
};

/// @return the classes of a set, as "class 2 ground" or "classes 2 ground, 6 building, 40 to 63".
std::string FormatClasses(const TLasClasses& classes);

} // namespace zorcld

#endif

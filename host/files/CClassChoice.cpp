#include <host/files/CClassChoice.h>

#include <host/output/CFailure.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <charconv>

namespace zorcld
{

namespace
{

/// Fewer in a row are told one by one.
constexpr std::size_t c_nMinRange = 4;

/// @return whether the whole text is the number of a class.
bool ParseClass(std::string_view sText, std::uint8_t& nClass)
{
    const auto result = std::from_chars(sText.data(), sText.data() + sText.size(), nClass);
    return result.ec == std::errc() && result.ptr == sText.data() + sText.size();
}

/// The classes of one item between commas: a number, two numbers with a hyphen between them, or a name.
TLasClasses ParseItem(const std::string& sItem, const char* pOption)
{
    TLasClasses classes = FindLasClasses(sItem);
    if (classes.any())
        return classes;
    const std::size_t nHyphen = std::min(sItem.find('-'), sItem.size());
    std::uint8_t nFirst = 0;
    std::uint8_t nLast = 0;
    const std::string_view sFirst = std::string_view(sItem).substr(0, nHyphen);
    const std::string_view sLast =
        nHyphen < sItem.size() ? std::string_view(sItem).substr(nHyphen + 1) : sFirst;
    if (!ParseClass(sFirst, nFirst) || !ParseClass(sLast, nLast) || nLast < nFirst)
        throw CUsageError(fmt::format("{}: '{}' is neither a class from 0 to 255 nor one of {}", pOption,
                                      sItem, ListLasClassNames()));
    for (std::size_t n = nFirst; n <= nLast; ++n)
        classes.set(n);
    return classes;
}

TLasClasses ParseClasses(const std::vector<std::string>& vecTexts, const char* pOption)
{
    TLasClasses classes;
    for (const std::string& sText : vecTexts)
        for (std::size_t nBegin = 0; nBegin <= sText.size();)
        {
            const std::size_t nEnd = std::min(sText.find(',', nBegin), sText.size());
            classes |= ParseItem(sText.substr(nBegin, nEnd - nBegin), pOption);
            nBegin = nEnd + 1;
        }
    return classes;
}

} // namespace

void AddClassOptions(CLI::App& command, CClassOptions& options)
{
    command
        .add_option("--class", options.vecClasses,
                    "Of LAS and LAZ, keep the points of these classes: numbers or names, as 2,building,40-63")
        ->allow_extra_args(false)
        ->type_name("CLASSES");
    command.add_option("--no-class", options.vecNoClasses, "Leave out the points of these classes")
        ->allow_extra_args(false)
        ->type_name("CLASSES");
}

CClassChoice::CClassChoice(const CClassOptions& options)
    : m_bAsked(!options.vecClasses.empty() || !options.vecNoClasses.empty())
{
    m_kept.set();
    if (!options.vecClasses.empty())
        m_kept = ParseClasses(options.vecClasses, "--class");
    m_bAllBut = options.vecClasses.empty();
    m_kept &= ~ParseClasses(options.vecNoClasses, "--no-class");
    if (m_kept.none())
        throw CUsageError("--class, --no-class: no class is left");
}

std::string CClassChoice::Format() const
{
    return m_bAllBut ? "all but " + FormatClasses(~m_kept) : FormatClasses(m_kept);
}

std::string CClassChoice::FormatNone(const TLasClasses& classes) const
{
    const std::string sNone = m_bAllBut ? "no point is of another class than " + FormatClasses(~m_kept)
                                        : "no point is of " + FormatClasses(m_kept);
    return fmt::format("{}: {}", sNone,
                       classes.none() ? "it holds none at all"
                                      : "it has points of " + FormatClasses(classes));
}

std::string FormatClasses(const TLasClasses& classes)
{
    std::string sText;
    for (std::size_t n = 0; n < classes.size(); ++n)
    {
        if (!classes[n])
            continue;
        std::size_t nEnd = n;
        while (nEnd < classes.size() && classes[nEnd])
            ++nEnd;
        sText += sText.empty() ? "" : ", ";
        if (nEnd - n < c_nMinRange)
        {
            sText += FormatLasClass(static_cast<std::uint8_t>(n));
            continue;
        }
        sText += fmt::format("{} to {}", n, nEnd - 1);
        n = nEnd - 1;
    }
    return (classes.count() == 1 ? "class " : "classes ") + sText;
}

} // namespace zorcld

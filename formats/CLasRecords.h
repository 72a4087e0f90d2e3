#ifndef FORMATS_CLASRECORDS_H
#define FORMATS_CLASRECORDS_H

#include <formats/LasLayout.h>

#include <array>
#include <cstdint>
#include <string>

class CSizedFile;
struct CLasHeader;

/// A record of variable length, of which the head has been read.
class CLasRecord
{
public:
    /// @return who defined it.
    std::string GetUser() const { return LasLayout::GetText(m_acHead.data(), LasLayout::c_sRecordUser); }

    std::uint16_t GetId() const { return LasLayout::Get(m_acHead.data(), LasLayout::c_nRecordId); }

    /// @return bytes of its data; of a record that says that it does not end before the points, those before
    ///         them.
    std::uint16_t GetSize() const { return m_nSize; }

    /// @return where its data begin in the file.
    std::int64_t GetPos() const { return m_nPos; }

    std::string GetDescription() const
    {
        return LasLayout::GetText(m_acHead.data(), LasLayout::c_sRecordDescription);
    }

    /// @return whether its data say how the points are compressed.
    bool IsCompressor() const;

private:
    friend class CLasRecords;

    std::array<unsigned char, LasLayout::c_nRecordHeadSize> m_acHead{};
    std::int64_t m_nPos = 0;
    std::uint16_t m_nSize = 0;
};

/// The records of a LAS file one by one: they follow each other between the header and the points.
class CLasRecords
{
public:
    /// @param file    kept, not owned.
    /// @param header  of the file, with nothing wrong in it.
    CLasRecords(CSizedFile& file, const CLasHeader& header);

    /// Reads the head of the next record. They end at the points, whatever their count and the size of the
    /// last one.
    ///
    /// @return false when there is none.
    bool Next(CLasRecord& record);

private:
    CSizedFile& m_file;
    std::int64_t m_nPos; // of the next one
    std::int64_t m_nEnd; // where the points begin
    std::uint32_t m_nNumLeft;
};

#endif

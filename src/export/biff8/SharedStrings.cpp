#include "export/biff8/SharedStrings.h"

#include "export/biff8/RecordStream.h"
#include "export/biff8/StringTable.h"
#include "export/biff8/UTF8ToUTF16Converter.h"

#include <algorithm>
#include <unicode/utf16.h>

namespace vellumo::biff8 {

namespace {

constexpr std::size_t headerSize = 4;
constexpr std::uint16_t sharedStringsId = 0x00FC;
constexpr std::uint16_t continueId = 0x003C;

// [MS-XLS] 2.5.293: a string is its length in UTF-16 units (2 bytes), a byte that tells whether a unit takes one byte
// or two, and the units. Where a record is full the string goes on in a CONTINUE record, which then begins with that
// byte again, but no record may end inside the three bytes in front, between these and the first unit, or inside a
// unit; and not inside a surrogate pair either, at which readers stumble.
class StringRecords {
public:
    StringRecords(RecordStream& out, std::uint32_t stringCount)
        : m_out(out)
        , m_perBucket(std::max<std::uint32_t>(stringCount / 128 + 1, 8))
    {
        m_record.reserve(headerSize + maximumRecordData);
        begin(sharedStringsId);
    }

    void addCounts(std::uint32_t referenceCount, std::uint32_t stringCount)
    {
        append(m_record, referenceCount);
        append(m_record, stringCount);
    }
    void add(std::string_view text);
    void end();

private:
    void begin(std::uint16_t id);
    void endRecord();
    void continueText(std::uint8_t isWide);
    void beginString(std::size_t units, bool isWide, std::size_t firstCharacterSize);
    void addNarrow(std::string_view characters);
    void addWide(std::u16string_view units);
    [[nodiscard]] std::size_t room() const { return headerSize + maximumRecordData - m_record.size(); }

    RecordStream& m_out;
    std::uint32_t m_perBucket; // strings for each entry of the index
    std::uint32_t m_added = 0;
    std::string m_record; // the one being filled
    std::string m_index;
};

void StringRecords::begin(std::uint16_t id) { appendRecord(m_record, id); }

void StringRecords::endRecord()
{
    const auto size = static_cast<std::uint16_t>(m_record.size() - headerSize);
    std::memcpy(m_record.data() + 2, &size, sizeof size);
    m_out.write(m_record);
    m_record.clear();
}

void StringRecords::continueText(std::uint8_t isWide)
{
    endRecord();
    begin(continueId);
    append(m_record, isWide);
}

void StringRecords::beginString(std::size_t units, bool isWide, std::size_t firstCharacterSize)
{
    if (room() < 3 + firstCharacterSize) {
        endRecord();
        begin(continueId);
    }
    if (m_added++ % m_perBucket == 0) {
        const auto offset = static_cast<std::uint16_t>(m_record.size());
        append(m_index, m_out.position() + offset);
        append(m_index, offset);
        append(m_index, std::uint16_t{0});
    }
    append(m_record, static_cast<std::uint16_t>(units));
    append(m_record, static_cast<std::uint8_t>(isWide));
}

void StringRecords::addNarrow(std::string_view characters)
{
    beginString(characters.size(), false, std::min<std::size_t>(characters.size(), 1));
    while (true) {
        const auto count = std::min(characters.size(), room());
        append(m_record, characters.substr(0, count));
        characters.remove_prefix(count);
        if (characters.empty()) return;
        continueText(0);
    }
}

void StringRecords::addWide(std::u16string_view units)
{
    beginString(units.size(), true, U16_IS_LEAD(units.front()) ? 4 : 2);
    while (true) {
        auto count = std::min(units.size(), room() / 2);
        if (count < units.size() && count > 0 && U16_IS_LEAD(units[count - 1])) --count;
        append(m_record, std::string_view(reinterpret_cast<const char*>(units.data()), count * 2));
        units.remove_prefix(count);
        if (units.empty()) return;
        continueText(1);
    }
}

void StringRecords::add(std::string_view text)
{
    const auto measure = measureText(text).value_or(TextMeasure{});
    if (measure.units == text.size()) return addNarrow(text);
    const auto units = UTF8ToUTF16Converter(text).value_or(std::u16string());
    if (measure.isWide) return addWide(units);
    std::string characters;
    for (const auto unit : units)
        characters += static_cast<char>(unit);
    addNarrow(characters);
}

void StringRecords::end()
{
    endRecord();
    appendRecord(m_record, 0x00FF, static_cast<std::uint16_t>(m_perBucket), std::string_view(m_index));
    m_out.write(m_record);
}

} // namespace

void writeSharedStrings(RecordStream& out, const StringTable& strings, std::uint32_t referenceCount)
{
    StringRecords records(out, strings.count());
    records.addCounts(referenceCount, strings.count());
    for (std::uint32_t number = 0; number < strings.count() && !out.failed(); ++number)
        records.add(strings.text(number));
    records.end();
}

} // namespace vellumo::biff8

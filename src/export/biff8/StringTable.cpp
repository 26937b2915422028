// SPDX-License-Identifier: MIT
#include "export/biff8/StringTable.h"

#include "export/biff8/RecordStream.h"
#include "export/biff8/UTF8ToUTF16Converter.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <sys/mman.h>
#include <unicode/utf16.h>

namespace vellumo::biff8 {

namespace {

constexpr std::uint32_t smallestCapacity = 16;

std::uint64_t mix(std::uint64_t hash, std::uint64_t word)
{
    hash = (hash ^ word) * 0x9FB21C651E98DF25;
    return hash ^ (hash >> 32);
}

std::uint64_t hashOf(std::string_view text)
{
    auto hash = mix(0, text.size());
    std::uint64_t word = 0;
    const auto* const end = text.data() + text.size();
    if (text.size() >= sizeof word) {
        const auto* at = text.data();
        for (; end - at > std::ptrdiff_t{sizeof word}; at += sizeof word) {
            std::memcpy(&word, at, sizeof word);
            hash = mix(hash, word);
        }
        std::memcpy(&word, end - sizeof word, sizeof word); // some bytes once more, which does no harm
    } else if (!text.empty()) {
        std::memcpy(&word, text.data(), text.size());
    }
    hash = mix(hash, word);
    return mix(hash, hash >> 29);
}

// Where the search for a tag begins: spreads the tags evenly over a capacity that is no power of two.
std::uint32_t firstSlot(std::uint32_t tag, std::uint32_t capacity)
{
    return static_cast<std::uint32_t>((std::uint64_t{tag} * capacity) >> 32);
}

} // namespace

void StringTable::add(std::string_view text, std::uint64_t size, std::byte* number)
{
    if (m_waitingCount == maximumWaiting) {
        settle(m_waiting[m_firstWaiting]);
        m_firstWaiting = (m_firstWaiting + 1) % maximumWaiting;
        --m_waitingCount;
    }
    const auto hash = hashOf(text);
    // Not in a function of its own: g++ takes one that only prefetches for one without an effect and leaves it out.
    const auto& segment = m_segments[hash >> 61];
    if (segment.capacity > 0)
        __builtin_prefetch(&segment.slots[firstSlot(static_cast<std::uint32_t>(hash), segment.capacity)]);
    m_waiting[(m_firstWaiting + m_waitingCount++) % maximumWaiting] = {text, hash, size, number};
    m_size += size;
}

void StringTable::settle()
{
    for (; m_waitingCount > 0; --m_waitingCount) {
        settle(m_waiting[m_firstWaiting]);
        m_firstWaiting = (m_firstWaiting + 1) % maximumWaiting;
    }
}

void StringTable::settle(const Waiting& waiting)
{
    const auto count = m_count;
    const auto number = numberOf(waiting.text, waiting.hash);
    std::memcpy(waiting.number, &number, sizeof number);
    if (m_count == count) m_size -= waiting.size;
}

std::uint32_t StringTable::numberOf(std::string_view text, std::uint64_t hash)
{
    auto& segment = m_segments[hash >> 61];
    const auto tag = static_cast<std::uint32_t>(hash);
    // At most two thirds are in use, so that the search below stays short and always ends.
    if (std::uint64_t{segment.used} * 3 >= std::uint64_t{segment.capacity} * 2)
        rebuild(segment, segment.capacity + segment.capacity / 2 + smallestCapacity, m_count);
    auto at = firstSlot(tag, segment.capacity);
    for (;; at = at + 1 == segment.capacity ? 0 : at + 1) {
        const auto slot = segment.slots[at];
        if (slot.number == freeSlot) break;
        if (slot.tag == tag && this->text(slot.number) == text) return slot.number;
    }
    segment.slots[at] = {tag, m_count};
    ++segment.used;
    return addText(text);
}

std::uint32_t StringTable::addText(std::string_view text)
{
    const auto place = m_count % blockTexts;
    if (place == 0) m_blocks.push_back(std::make_unique_for_overwrite<Block>());
    m_blocks.back()->starts[place] = text.data();
    m_blocks.back()->lengths[place] = static_cast<std::uint32_t>(text.size());
    return m_count++;
}

std::string_view StringTable::text(std::uint32_t number) const
{
    const auto& block = *m_blocks[number / blockTexts];
    return {block.starts[number % blockTexts], block.lengths[number % blockTexts]};
}

void StringTable::insert(Segment& segment, Slot slot)
{
    auto at = firstSlot(slot.tag, segment.capacity);
    while (segment.slots[at].number != freeSlot)
        at = at + 1 == segment.capacity ? 0 : at + 1;
    segment.slots[at] = slot;
    ++segment.used;
}

// Slots for at least `capacity` texts, all free; `capacity` becomes what they hold. Large parts get huge pages where
// the system has them: nearly every look-up goes to another page, and translating its address would take as long again.
StringTable::Slots StringTable::freeSlots(std::uint32_t& capacity)
{
    constexpr std::size_t hugePage = std::size_t{2} << 20;
    auto size = capacity * sizeof(Slot);
    const auto alignment = size < hugePage ? alignof(std::max_align_t) : hugePage;
    size = (size + alignment - 1) / alignment * alignment;
    Slots slots(static_cast<Slot*>(std::aligned_alloc(alignment, size)));
    if (!slots) throw std::bad_alloc();
    // Only advice: without huge pages all works the same.
    if (alignment == hugePage) static_cast<void>(madvise(slots.get(), size, MADV_HUGEPAGE));
    capacity = static_cast<std::uint32_t>(size / sizeof(Slot));
    for (std::uint32_t i = 0; i < capacity; ++i)
        slots[i].number = freeSlot;
    return slots;
}

void StringTable::rebuild(Segment& segment, std::uint32_t capacity, std::uint32_t belowNumber)
{
    Segment rebuilt;
    rebuilt.slots = freeSlots(capacity);
    rebuilt.capacity = capacity;
    for (std::uint32_t i = 0; i < segment.capacity; ++i)
        if (segment.slots[i].number < belowNumber) insert(rebuilt, segment.slots[i]);
    segment = std::move(rebuilt);
}

void StringTable::truncate(std::uint32_t count, std::uint64_t size)
{
    m_size = size;
    if (count == m_count) return;
    m_count = count;
    m_blocks.resize((count + blockTexts - 1) / blockTexts);
    for (auto& segment : m_segments)
        rebuild(segment, segment.capacity, count);
}

namespace {

constexpr std::size_t recordHeaderSize = 4;
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
        m_record.reserve(recordHeaderSize + maximumRecordData);
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
    [[nodiscard]] std::size_t room() const { return recordHeaderSize + maximumRecordData - m_record.size(); }

    RecordStream& m_out;
    std::uint32_t m_perBucket; // strings for each entry of the index
    std::uint32_t m_added = 0;
    std::string m_record; // the one being filled
    std::string m_index;
};

void StringRecords::begin(std::uint16_t id) { appendRecord(m_record, id); }

void StringRecords::endRecord()
{
    const auto size = static_cast<std::uint16_t>(m_record.size() - recordHeaderSize);
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

#include "export/biff8/StringTable.h"

#include <cstring>
#include <new>
#include <sys/mman.h>

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

} // namespace vellumo::biff8

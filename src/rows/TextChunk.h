// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// What the texts of some rows do not tell of their values: that one is an empty text and no null, or ends with zeros,
// or holds zeros (for which the text has U+FFFD), or is a date with a fraction of a second. A number says which.
class RowNotes {
public:
    // In a column of texts a negative number ~n means: n zeros stand behind the text (none behind the text of an empty
    // value, which differs from null in that); another one names the whole text. In a column of dates: by how many
    // milliseconds the value is ahead of its text.
    using Number = std::int32_t;

    // The number of zeros that a negative number says.
    [[nodiscard]] static constexpr std::size_t zerosBehind(Number number)
    {
        return static_cast<std::uint32_t>(~number);
    }

    // nullopt for a row whose text tells all.
    [[nodiscard]] std::optional<Number> at(std::uint32_t row) const;
    // `number` is one of a whole text.
    [[nodiscard]] const std::string& wholeText(Number number) const
    {
        return m_wholeTexts[static_cast<std::size_t>(number)];
    }

private:
    friend class TextColumnBuilder;
    struct Note {
        std::uint32_t row;
        Number number;
    };
    std::vector<Note> m_notes; // sorted by row
    std::vector<std::string> m_wholeTexts;
};

// The texts of one column for a run of rows, in one block of memory without pointers: the UTF-8 bytes of all texts
// one after the other, padding to a multiple of 4, then one 32-bit end offset a row. An empty text stands for null.
// Immutable; may be read by any number of threads. A copy costs next to nothing.
class TextChunk {
public:
    TextChunk() = default;

    [[nodiscard]] std::uint32_t rowCount() const { return m_rowCount; }
    [[nodiscard]] std::string_view bytes() const { return {m_block.get(), m_byteCount}; }
    // Offset just behind each row's text, counted from the first byte. A row's text starts where the one before ends.
    [[nodiscard]] std::span<const std::uint32_t> ends() const
    {
        return {endsOf(m_block.get(), m_byteCount), m_rowCount};
    }
    // Null, as nearly always, when the texts tell all.
    [[nodiscard]] const RowNotes* notes() const { return m_notes.get(); }
    // `row` counts from 0 and is below rowCount().
    [[nodiscard]] std::string_view text(std::uint32_t row) const
    {
        const auto* ends = endsOf(m_block.get(), m_byteCount);
        const auto start = row == 0 ? 0 : ends[row - 1];
        return {m_block.get() + start, ends[row] - start};
    }

private:
    friend class TextColumnBuilder;
    struct Free {
        void operator()(char* block) const { std::free(block); }
    };
    using Block = std::unique_ptr<char[], Free>;
    using SharedBlock = std::shared_ptr<const char>;

    static constexpr std::size_t endsOffset(std::size_t byteCount) { return (byteCount + 3) & ~std::size_t{3}; }
    static const std::uint32_t* endsOf(const char* block, std::size_t byteCount)
    {
        return reinterpret_cast<const std::uint32_t*>(block + endsOffset(byteCount));
    }

    SharedBlock m_block; // copies of a chunk have it in common
    std::uint32_t m_rowCount = 0;
    std::uint32_t m_byteCount = 0;
    std::shared_ptr<const RowNotes> m_notes; // the same
};

// Collects the texts of one column, row by row, and packs them into a chunk. Its memory is used again for the next
// chunk, unless a chunk is so large that handing the memory over is cheaper than copying it.
class TextColumnBuilder {
public:
    // Most bytes a chunk can hold.
    static constexpr std::size_t maximumBytes = 0xFFFFFFFF;

    // Room for `count` more bytes behind those of the text begun; valid until the next call. Throws std::bad_alloc,
    // also when the texts would take more than maximumBytes.
    [[nodiscard]] char* room(std::size_t count)
    {
        if (m_capacity - m_byteCount < count) grow(count);
        return m_bytes.get() + m_byteCount;
    }
    // The first `count` bytes of the room now belong to the text.
    void commit(std::size_t count) { m_byteCount += count; }
    void append(std::string_view piece);
    // What the text begun will not tell of its value; the last note of a row counts.
    void note(RowNotes::Number number);
    void noteZerosBehind(std::size_t count) { note(~static_cast<RowNotes::Number>(count)); }
    void noteWholeText(std::string text);
    // The same as the notes of a chunk of texts say of their row `row`; nothing when they say nothing.
    void noteAs(const RowNotes& notes, std::uint32_t row);
    // The same for a value that is no null, when its text is empty and nothing else was noted.
    void noteUnlessTold()
    {
        if (openText().empty()) noteEmptyText();
    }
    // Ends the text of this row; one that got no bytes is null.
    void endText() { m_ends.push_back(static_cast<std::uint32_t>(m_byteCount)); }

    [[nodiscard]] std::size_t byteCount() const { return m_byteCount; }
    // Bytes of the text begun.
    [[nodiscard]] std::string_view openText() const
    {
        const auto start = m_ends.empty() ? 0 : m_ends.back();
        return {m_bytes.get() + start, m_byteCount - start};
    }

    // The chunk of all ended texts; the builder is empty again.
    [[nodiscard]] TextChunk take();

private:
    void grow(std::size_t count);
    void noteEmptyText();
    [[nodiscard]] bool hasNote() const
    {
        return m_notes && !m_notes->m_notes.empty() && m_notes->m_notes.back().row == m_ends.size();
    }

    TextChunk::Block m_bytes;
    std::size_t m_capacity = 0;
    std::size_t m_byteCount = 0;
    std::vector<std::uint32_t> m_ends;
    std::unique_ptr<RowNotes> m_notes;
};

} // namespace vellumo

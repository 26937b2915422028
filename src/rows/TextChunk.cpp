// SPDX-License-Identifier: MIT
#include "rows/TextChunk.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vellumo {

namespace {

// From this size on a builder gives its memory away with the chunk: a copy would hold a long text twice.
constexpr std::size_t handOverBytes = 1 << 20;

} // namespace

std::optional<RowNotes::Number> RowNotes::at(std::uint32_t row) const
{
    const auto found = std::ranges::lower_bound(m_notes, row, {}, &Note::row);
    return found != m_notes.end() && found->row == row ? std::optional(found->number) : std::nullopt;
}

void TextColumnBuilder::note(RowNotes::Number number)
{
    if (!m_notes) m_notes = std::make_unique<RowNotes>();
    if (hasNote()) m_notes->m_notes.pop_back();
    m_notes->m_notes.push_back({static_cast<std::uint32_t>(m_ends.size()), number});
}

void TextColumnBuilder::noteWholeText(std::string text)
{
    if (!m_notes) m_notes = std::make_unique<RowNotes>();
    m_notes->m_wholeTexts.push_back(std::move(text));
    note(static_cast<RowNotes::Number>(m_notes->m_wholeTexts.size() - 1));
}

void TextColumnBuilder::noteAs(const RowNotes& notes, std::uint32_t row)
{
    const auto number = notes.at(row);
    if (!number) return;
    if (*number < 0)
        note(*number);
    else
        noteWholeText(notes.wholeText(*number));
}

void TextColumnBuilder::noteEmptyText()
{
    if (!hasNote()) noteZerosBehind(0);
}

void TextColumnBuilder::append(std::string_view piece)
{
    if (piece.empty()) return;
    std::memcpy(room(piece.size()), piece.data(), piece.size());
    commit(piece.size());
}

void TextColumnBuilder::grow(std::size_t count)
{
    if (count > maximumBytes - m_byteCount) throw std::bad_alloc();
    // Doubling, but never far beyond what a very long text needs.
    const auto step = std::min<std::size_t>(m_capacity, 64 << 20);
    const auto capacity = std::min(std::max({m_byteCount + count, m_capacity + step, std::size_t{1024}}), maximumBytes);
    auto* larger = static_cast<char*>(std::realloc(m_bytes.get(), capacity));
    if (larger == nullptr) throw std::bad_alloc();
    static_cast<void>(m_bytes.release());
    m_bytes.reset(larger);
    m_capacity = capacity;
}

TextChunk TextColumnBuilder::take()
{
    TextChunk chunk;
    chunk.m_rowCount = static_cast<std::uint32_t>(m_ends.size());
    chunk.m_byteCount = static_cast<std::uint32_t>(m_byteCount);
    const auto size = TextChunk::endsOffset(m_byteCount) + m_ends.size() * sizeof(std::uint32_t);
    const bool isHandedOver = m_byteCount >= handOverBytes;
    auto* block = static_cast<char*>(
        isHandedOver ? std::realloc(m_bytes.get(), size) : std::malloc(std::max<std::size_t>(size, 1)));
    if (block == nullptr) throw std::bad_alloc();
    if (isHandedOver) {
        static_cast<void>(m_bytes.release());
        m_capacity = 0;
    } else if (m_byteCount > 0) {
        std::memcpy(block, m_bytes.get(), m_byteCount);
    }
    chunk.m_block = TextChunk::SharedBlock(block, TextChunk::Free()); // frees it when there is no memory for that
    if (!m_ends.empty())
        std::memcpy(block + TextChunk::endsOffset(m_byteCount), m_ends.data(), m_ends.size() * sizeof(std::uint32_t));
    chunk.m_notes = std::move(m_notes);
    m_ends.clear();
    m_byteCount = 0;
    return chunk;
}

} // namespace vellumo

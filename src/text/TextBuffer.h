// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace vellumo {

// A text that grows at its end, by pieces so short that a call for each would cost more than the piece.
class TextBuffer {
public:
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] bool empty() const { return m_size == 0; }
    // Valid until the text grows.
    [[nodiscard]] std::string_view view() const { return {m_bytes.get(), m_size}; }
    void clear() { m_size = 0; }
    // Only the first `size` bytes stay, of at least as many.
    void cutAt(std::size_t size) { m_size = size; }

    // Room for `count` more bytes behind the text; valid until the next call.
    [[nodiscard]] char* room(std::size_t count)
    {
        if (m_capacity - m_size < count) grow(count);
        return m_bytes.get() + m_size;
    }
    // The first `count` bytes of the room now belong to the text.
    void commit(std::size_t count) { m_size += count; }

    // One behind the other.
    template <typename... Pieces> void append(const Pieces&... pieces) { appendViews(std::string_view(pieces)...); }
    TextBuffer& operator+=(std::string_view piece)
    {
        append(piece);
        return *this;
    }
    TextBuffer& operator+=(char byte)
    {
        *room(1) = byte;
        commit(1);
        return *this;
    }

private:
    template <typename... Views> void appendViews(Views... pieces)
    {
        char* const start = room((pieces.size() + ...));
        char* end = start;
        ((end = copied(pieces, end)), ...);
        commit(static_cast<std::size_t>(end - start));
    }
    // The first and the last bytes of a short piece, which may be the same ones: no loop and no call.
    template <std::size_t Count> static char* copiedEnds(std::string_view piece, char* to)
    {
        std::memcpy(to, piece.data(), Count);
        std::memcpy(to + piece.size() - Count, piece.data() + piece.size() - Count, Count);
        return to + piece.size();
    }
    static char* copied(std::string_view piece, char* to)
    {
        if (piece.size() > 32) return static_cast<char*>(std::memcpy(to, piece.data(), piece.size())) + piece.size();
        if (piece.size() >= 16) return copiedEnds<16>(piece, to);
        if (piece.size() >= 8) return copiedEnds<8>(piece, to);
        if (piece.size() >= 4) return copiedEnds<4>(piece, to);
        if (piece.size() >= 2) return copiedEnds<2>(piece, to);
        if (!piece.empty()) *to++ = piece.front();
        return to;
    }
    void grow(std::size_t count)
    {
        constexpr std::size_t smallest = 1024;
        const auto capacity = std::max({smallest, 2 * m_capacity, m_size + count});
        auto larger = std::make_unique_for_overwrite<char[]>(capacity);
        if (m_size > 0) std::memcpy(larger.get(), m_bytes.get(), m_size);
        m_bytes = std::move(larger);
        m_capacity = capacity;
    }

    std::unique_ptr<char[]> m_bytes;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

} // namespace vellumo

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

    TextBuffer& append(std::string_view piece)
    {
        if (piece.empty()) return *this; // which may be no bytes anywhere
        std::memcpy(room(piece.size()), piece.data(), piece.size());
        commit(piece.size());
        return *this;
    }
    TextBuffer& operator+=(std::string_view piece) { return append(piece); }
    TextBuffer& operator+=(char byte)
    {
        *room(1) = byte;
        commit(1);
        return *this;
    }

private:
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

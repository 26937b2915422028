// SPDX-License-Identifier: MIT
#pragma once

#include "embedded/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace vellumo::jet {

// Reads forward through bytes of unknown trustworthiness. Behind the end everything reads as zero and isGood() is
// false from then on.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes)
        : m_bytes(bytes)
    {
    }
    [[nodiscard]] bool isGood() const { return m_isGood; }
    [[nodiscard]] std::size_t position() const { return m_position; }
    void seek(std::size_t position) { m_position = position; }
    void skip(std::size_t count) { static_cast<void>(take(count)); }

    // The next `count` bytes; empty when there are not that many.
    [[nodiscard]] std::span<const std::uint8_t> take(std::size_t count)
    {
        if (m_position > m_bytes.size() || m_bytes.size() - m_position < count) {
            m_isGood = false;
            return {};
        }
        const auto taken = m_bytes.subspan(m_position, count);
        m_position += count;
        return taken;
    }
    template <typename T> [[nodiscard]] T number()
    {
        const auto bytes = take(sizeof(T));
        return bytes.empty() ? T{} : loadNumber<T>(bytes.data());
    }

private:
    std::span<const std::uint8_t> m_bytes;
    std::size_t m_position = 0;
    bool m_isGood = true;
};

} // namespace vellumo::jet

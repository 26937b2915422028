// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace vellumo::biff8 {

// Most bytes of data in a record.
inline constexpr std::size_t maximumRecordData = 8224;

template <typename T>
concept Number = std::integral<T> || std::floating_point<T>;

static_assert(std::endian::native == std::endian::little, "numbers are copied as they stand in memory");

template <Number T> void append(std::string& bytes, T value)
{
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

inline void append(std::string& bytes, std::string_view text) { bytes += text; }

// Appends a record whose data are `values` one after the other, each as wide as its type says.
template <typename... Values> void appendRecord(std::string& bytes, std::uint16_t id, Values... values)
{
    const auto start = bytes.size();
    append(bytes, id);
    append(bytes, std::uint16_t{0});
    (append(bytes, values), ...);
    const auto size = static_cast<std::uint16_t>(bytes.size() - start - 4);
    std::memcpy(bytes.data() + start + 2, &size, sizeof size);
}

// The same for numbers alone, which cells are: put together first, since there are so many of them.
template <Number... Values> void appendRecord(std::string& bytes, std::uint16_t id, Values... values)
{
    constexpr auto size = (sizeof(Values) + ... + 0);
    std::array<char, 4 + size> record;
    auto* at = record.data();
    const auto put = [&at](auto value) {
        std::memcpy(at, &value, sizeof value);
        at += sizeof value;
    };
    put(id);
    put(static_cast<std::uint16_t>(size));
    (put(values), ...);
    bytes.append(record.data(), record.size());
}

// Where the bytes of a stream go. Both return false when an error is known of; the stream then stops.
class StreamTarget {
public:
    virtual ~StreamTarget() = default;
    [[nodiscard]] virtual bool write(std::string_view bytes) = 0;
    // Replaces bytes written earlier; the next `write` goes on at the end.
    [[nodiscard]] virtual bool overwrite(std::uint32_t offset, std::string_view bytes) = 0;
};

// The workbook stream while it is written, collected into large blocks on its way to the target. The first error
// sticks: what comes after it goes nowhere.
class RecordStream {
public:
    explicit RecordStream(StreamTarget& target);

    // Bytes written so far. The caller keeps the stream below 4 GB.
    [[nodiscard]] std::uint32_t position() const { return m_flushed + static_cast<std::uint32_t>(m_buffer.size()); }
    void write(std::string_view bytes);
    // The bytes lie before position().
    void overwrite(std::uint32_t offset, std::string_view bytes);
    void flush();

    [[nodiscard]] bool failed() const { return m_failed; }

private:
    StreamTarget& m_target;
    std::string m_buffer;
    std::uint32_t m_flushed = 0;
    bool m_failed = false;
};

} // namespace vellumo::biff8

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vellumo::jet {

class PageFile;

// A memo or object value, put together from where it lies: in the row behind its 12-byte header, in a row of a
// long-value page, or in a chain of such rows.
//
// The header states the length; no more than that is gathered. A chain that breaks off, leads out of the file or
// circles gives what was found up to there and isComplete() = false.
class LongValue {
public:
    // `longValueBudget`: bytes that this object may still read from other pages. A sound file stores each value
    // once, so they never take more than the file has; a damaged one can name the same pages from every row. Twice the
    // file's size leaves room for a few damaged values among good ones.
    explicit LongValue(std::uint64_t longValueBudget)
        : m_budget(longValueBudget)
    {
    }
    void read(std::span<const std::uint8_t> stored, PageFile& file);

    // Valid until the next read.
    [[nodiscard]] std::span<const std::uint8_t> bytes() const { return m_bytes; }
    [[nodiscard]] bool isComplete() const { return m_isComplete; }

private:
    [[nodiscard]] bool append(std::span<const std::uint8_t> piece, std::size_t length);
    void readChain(std::uint32_t pointer, std::size_t length, PageFile& file);

    std::uint64_t m_budget;
    std::vector<std::uint8_t> m_gathered;
    std::span<const std::uint8_t> m_bytes;
    bool m_isComplete = false;
};

} // namespace vellumo::jet

#pragma once

#include "browser/PatternScanner.h"
#include "browser/RecordSearch.h"

namespace vellumo {

// Finds the rows of a text chunk that agree with search settings. Holds scratch memory: one a thread.
class TextMatcher {
public:
    // The settings' text is not empty.
    explicit TextMatcher(const SearchSettings& settings);

    // Sets marks[row] to 1 for each agreeing row of the chunk from `first` up to but not including `end`; touches no
    // other mark.
    void match(const TextChunk& chunk, std::uint32_t first, std::uint32_t end, std::span<std::uint8_t> marks);

private:
    // Consecutive cells: the text of all, and where each ends, counted from `start` bytes before the text.
    struct Cells {
        std::string_view text;
        std::uint32_t start;
        std::span<const std::uint32_t> ends;
    };

    [[nodiscard]] Cells folded(const Cells& cells);
    void markAgreeing(const Cells& cells, std::uint8_t* marks) const;
    // Whether an occurrence at `hit` makes the cell agree that lies there.
    [[nodiscard]] bool agrees(std::size_t hit, std::size_t cellStart, std::size_t cellEnd) const;

    SearchOption m_option;
    bool m_ignoreCase;
    PatternScanner m_pattern;
    bool m_isAsciiPattern;
    std::vector<char> m_foldedText;
    std::vector<std::uint32_t> m_foldedEnds;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "browser/RecordSearch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vellumo {

// Looks for one byte string in others at memory speed. Immutable; any thread.
class PatternScanner {
public:
    // `pattern` is not empty. With `ignoreAsciiCase` it holds no upper-case ASCII letter, and each of its letters
    // stands for both cases.
    PatternScanner(std::string pattern, bool ignoreAsciiCase);

    [[nodiscard]] std::size_t size() const { return m_pattern.size(); }
    // Offset of the first occurrence at or behind `from`; std::string_view::npos when there is none.
    [[nodiscard]] std::size_t find(std::string_view text, std::size_t from) const;

private:
    // A byte of the pattern that has to be right before the rest is compared.
    struct Anchor {
        std::size_t offset = 0;
        std::uint8_t caseBit = 0; // set in the text's byte before comparing
        std::uint8_t value = 0;
    };
    [[nodiscard]] bool isEqual(const char* text) const;
    [[nodiscard]] Anchor anchorAt(std::size_t offset) const;
    void chooseAnchors();
    [[nodiscard]] bool isCandidate(const char* text, const Anchor& anchor) const
    {
        return (static_cast<std::uint8_t>(text[anchor.offset]) | anchor.caseBit) == anchor.value;
    }

    std::string m_pattern;
    bool m_ignoreCase;
    Anchor m_first;
    Anchor m_second;
};

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

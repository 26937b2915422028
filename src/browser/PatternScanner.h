#pragma once

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

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo {

// Finds a short, mostly ASCII byte string in long texts (the algorithm of R. N. Horspool, "Practical fast searching in
// strings", 1980).
class HorspoolStringSearcher {
public:
    // nullopt when an assertion about the pattern fails; `assertion` is then its text and stays untouched otherwise.
    // Fails for 256 bytes or more, and for a byte of 0x80 or above anywhere but at the end.
    [[nodiscard]] static std::optional<HorspoolStringSearcher> initWithCString(
        std::string_view bytes, std::string& assertion);

    // Address of the first match in `text`, or null. An empty pattern matches nowhere.
    [[nodiscard]] const char* findWithinCharString(std::string_view text) const;

private:
    HorspoolStringSearcher() = default;

    std::string pString;
    std::uint8_t iLength = 0;
    std::array<std::uint8_t, 128> bsShift{}; // how far to move on after the text byte that is the index
};

} // namespace vellumo

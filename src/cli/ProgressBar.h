// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vellumo {

// A progress bar on standard error, in the line where the cursor stands; nothing at all when that is no terminal.
class ProgressBar {
public:
    explicit ProgressBar(std::string label);
    ~ProgressBar() { clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void setLabel(std::string label) { m_label = std::move(label); }
    // Cheap to call often: draws only what looks different.
    void show(std::uint64_t done, std::uint64_t total);
    // Leaves an empty line.
    void clear();

private:
    std::string m_label;
    std::string m_shown;
    bool m_isTerminal;
};

// "label [####    ]  50%", in at most `width` columns: too long a label is cut. A total of 0 counts as nothing done.
[[nodiscard]] std::string progressLine(
    std::string_view label, std::uint64_t done, std::uint64_t total, std::size_t width);

} // namespace vellumo

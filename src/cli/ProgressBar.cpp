// SPDX-License-Identifier: MIT
#include "cli/ProgressBar.h"

#include "text/TerminalText.h"

#include <algorithm>
#include <cstdio>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace vellumo {

namespace {

std::size_t terminalWidth()
{
    struct winsize size { };
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// A terminal that is gone takes nothing more; that is no reason to stop.
void draw(const std::string& text) { static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr)); }

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// At most `count` characters of `text`.
std::string shortened(std::string_view text, std::size_t count)
{
    std::string result;
    for (const char c : text) {
        if (!isContinuation(c) && count-- == 0) break;
        result += c;
    }
    return result;
}

std::size_t length(std::string_view text)
{
    return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, isContinuation));
}

} // namespace

std::string progressLine(std::string_view label, std::uint64_t done, std::uint64_t total, std::size_t width)
{
    constexpr std::size_t widestBar = 40;
    constexpr std::size_t frame = 8; // " [" and "] 100%"
    const auto share = total == 0 ? 0.0 : static_cast<double>(std::min(done, total)) / static_cast<double>(total);
    const auto percent = fmt::format("{:>3}%", static_cast<int>(share * 100));
    const auto shownLabel = escapedText(label);
    auto text = shortened(shownLabel, width);
    const auto room = width - length(text);
    if (room < frame + 10) text = shortened(shownLabel, width > frame + 10 ? width - frame - 10 : 0);
    if (width < frame + 10) return shortened(percent, width);
    const auto bar = std::min(width - length(text) - frame, widestBar);
    const auto filled = static_cast<std::size_t>(share * static_cast<double>(bar));
    return fmt::format("{} [{:<{}}] {}", text, std::string(filled, '#'), bar, percent);
}

ProgressBar::ProgressBar(std::string label)
    : m_label(std::move(label))
    , m_isTerminal(::isatty(STDERR_FILENO) == 1)
{
}

void ProgressBar::show(std::uint64_t done, std::uint64_t total)
{
    if (!m_isTerminal) return;
    // One column stays free: a full line would wrap on some terminals.
    auto line = progressLine(m_label, done, total, terminalWidth() - 1);
    if (line == m_shown) return;
    // A shorter line must cover what the longer one left.
    const auto rest = length(m_shown) - std::min(length(m_shown), length(line));
    draw(fmt::format("\r{}{:{}}", line, "", rest));
    m_shown = std::move(line);
}

void ProgressBar::clear()
{
    if (m_shown.empty()) return;
    draw(fmt::format("\r{:{}}\r", "", length(m_shown)));
    m_shown.clear();
}

} // namespace vellumo

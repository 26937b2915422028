// SPDX-License-Identifier: MIT
#include "text/Format.h"

#include "text/Messages.h"

#include <charconv>
#include <fmt/format.h>

namespace vellumo {

namespace {

// Length of the placeholder at the start of `rest`, which begins with "%"; 0 when it is none.
std::size_t placeholderLength(std::string_view rest)
{
    if (rest.starts_with("%@") || rest.starts_with("%d")) return 2;
    if (rest.starts_with("%ld")) return 3;
    return 0;
}

} // namespace

void FormatArg::appendTo(std::string& out) const
{
    if (!m_isNumber) {
        out += m_text;
        return;
    }
    char digits[24];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, m_number).ptr);
}

std::string format(std::string_view format, std::initializer_list<FormatArg> args)
{
    std::string out;
    const auto* next = args.begin();
    while (!format.empty()) {
        const auto percent = format.find('%');
        out += format.substr(0, percent);
        if (percent == std::string_view::npos) break;
        format.remove_prefix(percent);
        const auto length = placeholderLength(format);
        if (format.starts_with("%%")) {
            out += '%';
            format.remove_prefix(2);
        } else if (length > 0 && next != args.end()) {
            (next++)->appendTo(out);
            format.remove_prefix(length);
        } else {
            out += '%';
            format.remove_prefix(1);
        }
    }
    return out;
}

std::string localizedFormat(const char* key, std::initializer_list<FormatArg> args)
{
    return format(localized(key), args);
}

namespace {

// The translation says what stands between a number and its tenths.
std::string withTenths(const char* key, double number)
{
    const auto text = fmt::format("{:.1f}", number);
    return localizedFormat(key, {text.substr(0, text.find('.')), text.substr(text.find('.') + 1)});
}

} // namespace

std::string formatComputerFileSize(std::uint64_t bytes)
{
    constexpr double unit = 1.0 / 1024;
    constexpr double largestShown = 1023.0;
    const auto wholeKilobytes = bytes / 1024 + (bytes % 1024 != 0 ? 1 : 0);
    const auto kilobytes = static_cast<double>(wholeKilobytes);
    if (kilobytes <= largestShown) return fmt::format("{:.0f} KB", kilobytes);
    const auto megabytes = kilobytes * unit;
    return megabytes <= largestShown ? withTenths(messageKey("%@.%@ MB"), megabytes)
                                     : withTenths(messageKey("%@.%@ GB"), megabytes * unit);
}

std::size_t toHex(char* out, std::size_t outCapacity, const std::uint8_t* in, std::size_t count)
{
    const auto length = 2 * count;
    if (out == nullptr) return length;
    if (length > outCapacity) return 0;
    constexpr char digits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < count; ++i) {
        out[2 * i] = digits[in[i] >> 4];
        out[2 * i + 1] = digits[in[i] & 15];
    }
    return length;
}

} // namespace vellumo

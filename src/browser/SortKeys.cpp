// SPDX-License-Identifier: MIT
#include "browser/SortKeys.h"

#include "text/FinderCompare.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>

namespace vellumo {

namespace {

// First byte of a number's or a date's key.
constexpr char negativeInfinity = 1;
constexpr char negative = 2;
constexpr char zero = 3;
constexpr char positive = 4;
constexpr char positiveInfinity = 5;
constexpr char plainText = 6;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view takeDigits(std::string_view& text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

bool take(std::string_view& text, char c)
{
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
    return true;
}

// Beyond this an exponent says no more than "very large"; texts with such numbers come from damaged files only.
constexpr std::int64_t exponentLimit = 1'000'000;

// [+-]digits behind an "e"; nullopt when there are no digits.
std::optional<std::int64_t> takeExponent(std::string_view& text)
{
    const bool isNegative = take(text, '-');
    if (!isNegative) take(text, '+');
    const auto digits = takeDigits(text);
    if (digits.empty()) return std::nullopt;
    std::int64_t exponent = 0;
    for (const auto digit : digits)
        exponent = std::min<std::int64_t>(exponent * 10 + (digit - '0'), exponentLimit);
    return isNegative ? -exponent : exponent;
}

// The value 0.d1d2d3... x 10^exponent, d1 and the last digit not 0; zero has no digits.
struct Decimal {
    bool isNegative = false;
    std::string digits;
    std::int64_t exponent = 0;
};

void normalize(Decimal& decimal)
{
    const auto first = std::min(decimal.digits.find_first_not_of('0'), decimal.digits.size());
    decimal.digits.erase(0, first);
    decimal.exponent -= static_cast<std::int64_t>(first);
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
    decimal.exponent = std::clamp(decimal.exponent, -exponentLimit, exponentLimit);
}

std::optional<Decimal> parseDecimal(std::string_view text)
{
    Decimal decimal;
    decimal.isNegative = take(text, '-');
    const auto whole = takeDigits(text);
    const auto fraction = take(text, '.') ? takeDigits(text) : std::string_view();
    if (whole.empty() && fraction.empty()) return std::nullopt;
    decimal.exponent = static_cast<std::int64_t>(whole.size());
    if (take(text, 'e') || take(text, 'E')) {
        const auto exponent = takeExponent(text);
        if (!exponent) return std::nullopt;
        decimal.exponent += *exponent;
    }
    if (!text.empty()) return std::nullopt;
    decimal.digits.reserve(whole.size() + fraction.size());
    decimal.digits.append(whole).append(fraction);
    normalize(decimal);
    return decimal;
}

// Layout: class (1 byte), exponent (3 bytes of 7 bits, the highest first), two digits a byte; every byte but the first
// plus one, so that none is zero. A negative number has all bytes behind the class inverted and one of 0xFF at the end,
// because of two that start alike the longer is the smaller.
void appendDecimalKey(const Decimal& decimal, std::string& key)
{
    if (decimal.digits.empty()) {
        key += zero;
        return;
    }
    key += decimal.isNegative ? negative : positive;
    const auto start = key.size();
    const auto biased = static_cast<std::uint32_t>(decimal.exponent + (1 << 20));
    for (const auto shift : {14, 7, 0})
        key += static_cast<char>((biased >> shift & 0x7F) + 1);
    for (std::size_t i = 0; i < decimal.digits.size(); i += 2) {
        const auto high = decimal.digits[i] - '0';
        const auto low = i + 1 < decimal.digits.size() ? decimal.digits[i + 1] - '0' : 0;
        key += static_cast<char>(high * 10 + low + 1);
    }
    if (!decimal.isNegative) return;
    for (auto i = start; i < key.size(); ++i)
        key[i] = static_cast<char>(~key[i]);
    key += '\xFF';
}

void appendUnreadableKey(std::string_view text, std::string& key)
{
    key += plainText;
    appendFinderSortKey(text, key);
}

void appendNumberKey(std::string_view text, std::string& key)
{
    if (const auto decimal = parseDecimal(text)) {
        appendDecimalKey(*decimal, key);
    } else if (text == "-inf") {
        key += negativeInfinity;
    } else if (text == "inf") {
        key += positiveInfinity;
    } else {
        appendUnreadableKey(text, key);
    }
}

void appendDateKey(std::string_view text, std::string& key)
{
    constexpr std::string_view shape = "00/00/0000 00:00:00";
    const bool isDate = std::equal(text.begin(), text.end(), shape.begin(), shape.end(),
        [](char c, char expected) { return expected == '0' ? isDigit(c) : c == expected; });
    if (!isDate) {
        appendUnreadableKey(text, key);
        return;
    }
    key += positive;
    key.append(text.substr(6, 4)).append(text.substr(0, 5)).append(text.substr(11));
}

} // namespace

void appendSortKey(SortKind kind, std::string_view text, std::string& key)
{
    switch (kind) {
    case SortKind::Text: appendFinderSortKey(text, key); break;
    case SortKind::Number: appendNumberKey(text, key); break;
    case SortKind::Date: appendDateKey(text, key); break;
    }
}

} // namespace vellumo

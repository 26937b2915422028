// SPDX-License-Identifier: MIT
#include "export/sql/SQLText.h"

#include "text/Format.h"

#include <chrono>
#include <cstring>

namespace vellumo {

namespace {

std::string doubled(std::string_view text, std::string_view special)
{
    std::string out;
    out.reserve(text.size() + 2);
    for (const char character : text) {
        if (special.find(character) != std::string_view::npos) out += character;
        out += character;
    }
    return out;
}

} // namespace

std::string quoteIdentifier(std::string_view name, const SQLDialectFacts& facts)
{
    return std::string(facts.openQuote).append(doubled(name, facts.closeQuote)).append(facts.closeQuote);
}

std::string quoteIdentifiers(const std::vector<std::string>& names, const SQLDialectFacts& facts)
{
    std::string list;
    for (const auto& name : names) {
        if (!list.empty()) list += ", ";
        list += quoteIdentifier(name, facts);
    }
    return list;
}

std::string doubleQuotes(std::string_view text) { return doubled(text, "'"); }

std::string doubleBackslashes(std::string_view text) { return doubled(text, "\\"); }

std::string escapeLiteral(std::string_view text) { return doubled(text, "\\'"); }

std::string encodeSqlBlobValue(std::span<const std::byte> bytes)
{
    std::string literal(2 * bytes.size() + 3, '\'');
    literal.front() = 'x';
    toHex(literal.data() + 2, 2 * bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return literal;
}

namespace {

constexpr std::string_view dateForm = "dd/dd/dddd dd:dd:dd"; // d: any digit

bool hasForm(std::string_view cell)
{
    if (cell.size() != dateForm.size()) return false;
    for (std::size_t i = 0; i < dateForm.size(); ++i) {
        const bool isDigit = cell[i] >= '0' && cell[i] <= '9';
        if (dateForm[i] == 'd' ? !isDigit : cell[i] != dateForm[i]) return false;
    }
    return true;
}

unsigned twoDigits(const char* at) { return static_cast<unsigned>((at[0] - '0') * 10 + at[1] - '0'); }

bool exists(const char* cell)
{
    const auto year = static_cast<int>(twoDigits(cell + 6) * 100 + twoDigits(cell + 8));
    const std::chrono::year_month_day date(
        std::chrono::year(year), std::chrono::month(twoDigits(cell)), std::chrono::day(twoDigits(cell + 3)));
    return year > 0 && date.ok() && twoDigits(cell + 11) < 24 && twoDigits(cell + 14) < 60 && twoDigits(cell + 17) < 60;
}

} // namespace

std::optional<SQLDateText> sqlDateText(std::string_view cell)
{
    if (!hasForm(cell) || !exists(cell.data())) return std::nullopt;
    SQLDateText text;
    std::memcpy(text.data(), cell.data() + 6, 4);
    text[4] = '-';
    std::memcpy(text.data() + 5, cell.data(), 2);
    text[7] = '-';
    std::memcpy(text.data() + 8, cell.data() + 3, 2);
    std::memcpy(text.data() + 10, cell.data() + 10, 9);
    return text;
}

} // namespace vellumo

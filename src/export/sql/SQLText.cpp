#include "export/sql/SQLText.h"

#include "text/Hex.h"

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

std::string escapeLiteral(std::string_view text) { return doubled(text, "\\'"); }

std::string encodeSqlBlobValue(std::span<const std::byte> bytes)
{
    std::string literal(2 * bytes.size() + 3, '\'');
    literal.front() = 'x';
    toHex(literal.data() + 2, 2 * bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return literal;
}

} // namespace vellumo

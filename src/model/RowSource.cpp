// SPDX-License-Identifier: MIT
#include "model/RowSource.h"

#include "text/CaseFold.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view withoutBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool isSameName(std::string_view left, std::string_view right) { return foldCase(left) == foldCase(right); }

// Takes a text in quotes off the front; a quote inside stands twice.
std::string takeQuoted(std::string_view& text)
{
    const auto quote = text.front();
    std::string taken;
    std::size_t i = 1;
    for (; i < text.size(); ++i) {
        if (text[i] == quote && (i + 1 == text.size() || text[i + 1] != quote)) break;
        if (text[i] == quote) ++i;
        taken += text[i];
    }
    text.remove_prefix(std::min(i + 1, text.size()));
    return taken;
}

struct Token {
    enum class Kind { End, Name, Text, Sign };
    Kind kind = Kind::End;
    std::string text;
    bool isBracketed = false;

    [[nodiscard]] bool isSign(char sign) const { return kind == Kind::Sign && text[0] == sign; }
    [[nodiscard]] bool isWord(std::string_view word) const
    {
        return kind == Kind::Name && !isBracketed && isSameName(text, word);
    }
};

// Parts a statement into names, texts and signs.
class Tokens {
public:
    explicit Tokens(std::string_view sql)
        : m_rest(sql)
    {
        advance();
    }
    [[nodiscard]] const Token& next() const { return m_next; }
    Token take()
    {
        auto taken = std::move(m_next);
        advance();
        return taken;
    }
    bool takeSign(char sign)
    {
        const bool isNext = m_next.isSign(sign);
        if (isNext) advance();
        return isNext;
    }
    bool takeWord(std::string_view word)
    {
        const bool isNext = m_next.isWord(word);
        if (isNext) advance();
        return isNext;
    }

private:
    void advance();

    std::string_view m_rest;
    Token m_next;
};

bool isNameByte(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_'
        || byte >= 0x80;
}

void Tokens::advance()
{
    m_next = {};
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(blanks), m_rest.size()));
    if (m_rest.empty()) return;
    const auto first = m_rest.front();
    if (first == '[') {
        const auto end = std::min(m_rest.find(']'), m_rest.size());
        m_next = {Token::Kind::Name, std::string(m_rest.substr(1, end - 1)), true};
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    } else if (first == '"' || first == '\'') {
        m_next = {Token::Kind::Text, takeQuoted(m_rest)};
    } else if (isNameByte(first)) {
        const auto end = std::ranges::find_if_not(m_rest, isNameByte) - m_rest.begin();
        m_next = {Token::Kind::Name, std::string(m_rest.substr(0, static_cast<std::size_t>(end)))};
        m_rest.remove_prefix(static_cast<std::size_t>(end));
    } else {
        m_next = {Token::Kind::Sign, std::string(1, first)};
        m_rest.remove_prefix(1);
    }
}

// A column as it is written: names and texts, before it is known of which table.
struct WrittenTerm {
    std::string qualifier; // may be empty
    Token token;           // a name, a text, or the sign "*"
};

// SELECT column, column .. FROM table [ORDER BY ..]
class SelectStatement {
public:
    explicit SelectStatement(std::string_view sql)
        : m_tokens(sql)
    {
    }
    // False when it is another statement, or a longer one.
    [[nodiscard]] bool parse();
    [[nodiscard]] std::optional<SourceTable> resolve(const TAdmMDBFile& file) const;

private:
    [[nodiscard]] bool parseColumn();
    [[nodiscard]] bool parseTerm(std::vector<WrittenTerm>& terms);
    [[nodiscard]] bool resolveColumn(const std::vector<WrittenTerm>& terms, SourceTable& source) const;

    Tokens m_tokens;
    std::vector<std::vector<WrittenTerm>> m_columns;
    std::string m_table;
    std::string m_alias;
};

bool SelectStatement::parse()
{
    if (!m_tokens.takeWord("SELECT")) return false;
    if (!m_tokens.takeWord("DISTINCTROW")) m_tokens.takeWord("DISTINCT");
    do {
        if (!parseColumn()) return false;
    } while (m_tokens.takeSign(','));
    if (!m_tokens.takeWord("FROM") || m_tokens.next().kind != Token::Kind::Name) return false;
    m_table = m_alias = m_tokens.take().text;
    if (m_tokens.takeWord("ORDER")) return m_tokens.takeWord("BY"); // in what order they come is all the same
    if (m_tokens.takeWord("AS")) {
        m_alias = m_tokens.take().text;
        if (m_tokens.takeWord("ORDER")) return m_tokens.takeWord("BY");
    }
    m_tokens.takeSign(';');
    return m_tokens.next().kind == Token::Kind::End;
}

bool SelectStatement::parseColumn()
{
    std::vector<WrittenTerm> terms;
    do {
        if (!parseTerm(terms)) return false;
    } while (m_tokens.takeSign('&'));
    if (m_tokens.takeWord("AS")) m_tokens.take();
    m_columns.push_back(std::move(terms));
    return true;
}

bool SelectStatement::parseTerm(std::vector<WrittenTerm>& terms)
{
    WrittenTerm term;
    term.token = m_tokens.take();
    if (m_tokens.takeSign('.')) {
        term.qualifier = term.token.text;
        term.token = m_tokens.take();
    }
    const auto kind = term.token.kind;
    terms.push_back(std::move(term));
    return kind == Token::Kind::Name || kind == Token::Kind::Text || terms.back().token.isSign('*');
}

const TAdmMDBTable* tableNamed(const TAdmMDBFile& file, std::string_view name)
{
    const auto isNamed = [&](const auto& table) { return isSameName(table->name(), name); };
    const auto found = std::ranges::find_if(file.tables(), isNamed);
    return found == file.tables().end() ? nullptr : found->get();
}

std::vector<SourceColumn> allColumns(const TAdmMDBTable& table)
{
    std::vector<SourceColumn> columns;
    for (std::size_t i = 0; i < table.columns().size(); ++i)
        columns.push_back({i});
    return columns;
}

std::optional<SourceTable> SelectStatement::resolve(const TAdmMDBFile& file) const
{
    SourceTable source{tableNamed(file, m_table)};
    if (source.table == nullptr) return std::nullopt;
    for (const auto& column : m_columns)
        if (!resolveColumn(column, source)) return std::nullopt;
    return source;
}

bool SelectStatement::resolveColumn(const std::vector<WrittenTerm>& terms, SourceTable& source) const
{
    SourceColumn column;
    for (const auto& [qualifier, token] : terms) {
        if (!qualifier.empty() && !isSameName(qualifier, m_alias)) return false;
        if (token.isSign('*')) {
            const auto all = allColumns(*source.table);
            source.columns.insert(source.columns.end(), all.begin(), all.end());
            return terms.size() == 1;
        }
        if (token.kind == Token::Kind::Text) {
            column.emplace_back(token.text);
            continue;
        }
        const auto& columns = source.table->columns();
        const auto isNamed = [&](const auto& listed) { return isSameName(listed->name(), token.text); };
        const auto found = std::ranges::find_if(columns, isNamed);
        if (found == columns.end() || (*found)->isOLE()) return false;
        column.emplace_back(static_cast<std::size_t>(found - columns.begin()));
    }
    source.columns.push_back(std::move(column));
    return true;
}

std::optional<SourceTable> selected(const TAdmMDBFile& file, std::string_view sql)
{
    SelectStatement statement(sql);
    return statement.parse() ? statement.resolve(file) : std::nullopt;
}

} // namespace

std::optional<SourceTable> sourceTable(const TAdmMDBFile& file, std::string_view source)
{
    auto name = withoutBlanks(source);
    if (Tokens(name).next().isWord("SELECT")) return selected(file, name);
    if (name.starts_with('[') && name.ends_with(']')) name = name.substr(1, name.size() - 2);
    if (const auto* table = tableNamed(file, name)) return SourceTable{table, allColumns(*table)};
    for (const auto& query : file.contents().queries)
        if (isSameName(query.name, name)) return selected(file, query.sql);
    return std::nullopt;
}

} // namespace vellumo

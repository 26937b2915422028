// SPDX-License-Identifier: MIT
#include "model/SelectStatement.h"

#include "model/QueryText.h"
#include "text/CaseFold.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr std::string_view blanks = " \t\r\n";

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

// SELECT column, column .. FROM table [join table ON condition] [WHERE ..] [GROUP BY ..] [HAVING ..] [ORDER BY ..]
class Parser {
public:
    explicit Parser(std::string_view sql)
        : m_tokens(sql)
    {
    }
    [[nodiscard]] std::optional<SelectStatement> parse();

private:
    void parseColumn();
    [[nodiscard]] bool parseTerm(WrittenColumn& column);
    void skipExpression();
    [[nodiscard]] bool parseJoins(int depth);
    [[nodiscard]] bool parseSource(int depth);
    [[nodiscard]] bool takeJoin();
    void skipCondition();
    [[nodiscard]] bool parseRest();
    // Whether the next token begins or ends with one of these words what follows the sources.
    [[nodiscard]] bool isNextOneOf(std::initializer_list<std::string_view> words) const;

    Tokens m_tokens;
    SelectStatement m_statement;
};

std::optional<SelectStatement> Parser::parse()
{
    if (m_tokens.takeWord("PARAMETERS"))
        while (m_tokens.next().kind != Token::Kind::End && !m_tokens.takeSign(';'))
            m_tokens.take();
    if (!m_tokens.takeWord("SELECT")) return std::nullopt;
    if (!m_tokens.takeWord("DISTINCTROW")) m_tokens.takeWord("DISTINCT");
    if (m_tokens.takeWord("TOP")) {
        m_statement.isLimited = true;
        m_tokens.take();
        m_tokens.takeWord("PERCENT");
    }
    do {
        parseColumn();
    } while (m_tokens.takeSign(','));
    if (!m_tokens.takeWord("FROM")) return std::nullopt;
    do {
        if (!parseJoins(0)) return std::nullopt;
    } while (m_tokens.takeSign(','));
    if (!parseRest()) return std::nullopt;
    if (m_statement.sources.size() > 1) m_statement.isLimited = true;
    return std::move(m_statement);
}

void Parser::parseColumn()
{
    WrittenColumn column;
    bool isRead = false;
    do {
        isRead = parseTerm(column);
    } while (isRead && m_tokens.takeSign('&'));
    if (column.terms.size() == 1 && column.terms[0].kind == WrittenTerm::Kind::Name) column.name = column.terms[0].text;
    if (isRead && !m_tokens.next().isSign(',') && !isNextOneOf({"AS", "FROM"})) isRead = false;
    if (!isRead) {
        column = {};
        skipExpression();
    }
    if (m_tokens.takeWord("AS")) column.name = m_tokens.take().text;
    m_statement.columns.push_back(std::move(column));
}

bool Parser::parseTerm(WrittenColumn& column)
{
    const auto& next = m_tokens.next();
    if (next.kind == Token::Kind::End || (next.kind == Token::Kind::Sign && !next.isSign('*'))) return false;
    WrittenTerm term;
    auto token = m_tokens.take();
    if (token.kind == Token::Kind::Name && m_tokens.takeSign('.')) {
        term.qualifier = std::move(token.text);
        token = m_tokens.take();
    }
    if (token.kind == Token::Kind::Text)
        term.kind = WrittenTerm::Kind::Text;
    else if (token.isSign('*'))
        term.kind = WrittenTerm::Kind::All;
    else if (token.kind != Token::Kind::Name)
        return false;
    term.text = std::move(token.text);
    column.terms.push_back(std::move(term));
    return true;
}

void Parser::skipExpression()
{
    for (int depth = 0; m_tokens.next().kind != Token::Kind::End;) {
        if (depth <= 0 && (m_tokens.next().isSign(',') || isNextOneOf({"AS", "FROM"}))) return;
        const auto token = m_tokens.take();
        depth += token.isSign('(') ? 1 : token.isSign(')') ? -1 : 0;
    }
}

bool Parser::parseJoins(int depth)
{
    if (!parseSource(depth)) return false;
    while (isNextOneOf({"INNER", "LEFT", "RIGHT"})) {
        if (!takeJoin() || !parseSource(depth) || !m_tokens.takeWord("ON")) return false;
        skipCondition();
    }
    return true;
}

// A join may stand in brackets.
bool Parser::parseSource(int depth)
{
    constexpr int mostBrackets = 50;
    if (m_tokens.takeSign('(')) return depth < mostBrackets && parseJoins(depth + 1) && m_tokens.takeSign(')');
    if (m_tokens.next().kind != Token::Kind::Name) return false;
    WrittenSource source{m_tokens.take().text};
    source.alias = source.name;
    const bool isNamed = m_tokens.takeWord("AS")
        || (m_tokens.next().kind == Token::Kind::Name
            && !isNextOneOf({"INNER", "LEFT", "RIGHT", "ON", "WHERE", "GROUP", "HAVING", "ORDER", "WITH", "UNION"}));
    if (isNamed) source.alias = m_tokens.take().text;
    m_statement.sources.push_back(std::move(source));
    return true;
}

bool Parser::takeJoin()
{
    m_tokens.take();
    m_tokens.takeWord("OUTER");
    return m_tokens.takeWord("JOIN");
}

void Parser::skipCondition()
{
    for (int depth = 0; m_tokens.next().kind != Token::Kind::End;) {
        const auto& next = m_tokens.next();
        const bool isEnd = next.isSign(')') || next.isSign(',') || next.isSign(';')
            || isNextOneOf({"INNER", "LEFT", "RIGHT", "WHERE", "GROUP", "HAVING", "ORDER", "WITH", "UNION"});
        if (depth == 0 && isEnd) return;
        const auto token = m_tokens.take();
        depth += token.isSign('(') ? 1 : token.isSign(')') ? -1 : 0;
    }
}

// What may follow limits and orders the rows. More than that makes another statement of it.
bool Parser::parseRest()
{
    const bool isPlain = m_tokens.next().kind == Token::Kind::End || m_tokens.next().isSign(';');
    if (!isPlain && !isNextOneOf({"WHERE", "GROUP", "HAVING", "ORDER", "WITH"})) return false;
    for (int depth = 0; m_tokens.next().kind != Token::Kind::End;) {
        if (depth == 0 && isNextOneOf({"WHERE", "HAVING"})) m_statement.isLimited = true;
        if (depth < 0 || (depth == 0 && isNextOneOf({"UNION", "SELECT", "FROM"}))) return false;
        const auto token = m_tokens.take();
        if (token.isSign(';')) return m_tokens.next().kind == Token::Kind::End;
        depth += token.isSign('(') ? 1 : token.isSign(')') ? -1 : 0;
    }
    return true;
}

bool Parser::isNextOneOf(std::initializer_list<std::string_view> words) const
{
    return std::ranges::any_of(words, [&](std::string_view word) { return m_tokens.next().isWord(word); });
}

} // namespace

std::optional<SelectStatement> parseSelect(std::string_view sql) { return Parser(sql).parse(); }

bool isSelect(std::string_view sql)
{
    const Tokens tokens(sql);
    return tokens.next().isWord("SELECT") || tokens.next().isWord("PARAMETERS");
}

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// What stands behind FROM: tables, joined or side by side. Names compare without case.
class JoinTree {
public:
    // `name`: by which joins call it; `text`: how it is written.
    void addTable(std::string_view name, std::string text);
    // Joins what holds the two names; a name that was not added is a table of its own. `word`: "INNER JOIN". False when
    // it is left out: it makes no sense, or there are more joins than any sensible query has.
    [[nodiscard]] bool join(
        std::string_view left, std::string_view right, std::string_view word, std::string condition);

    // "a, b INNER JOIN c ON b.x = c.x"; "" for no table.
    [[nodiscard]] std::string text() const;

private:
    // A table, or a join of two of them.
    struct Node {
        std::set<std::string> names; // all below it, folded
        std::string text;            // of a table
        std::unique_ptr<Node> left;
        std::unique_ptr<Node> right;
        std::string word;
        std::vector<std::string> conditions; // those added later come first
    };

    [[nodiscard]] std::size_t itemOf(std::string_view name);
    [[nodiscard]] static Node& joinOf(Node& item, const std::string& left, const std::string& right);
    static void append(const Node& node, std::string& text);
    static void appendOperand(const Node& node, std::string& text);

    std::vector<std::unique_ptr<Node>> m_items;
    std::size_t m_joinCount = 0;
};

} // namespace vellumo

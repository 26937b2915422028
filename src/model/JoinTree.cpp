// SPDX-License-Identifier: MIT
#include "model/JoinTree.h"

#include "model/QueryText.h"
#include "text/CaseFold.h"

#include <algorithm>

namespace vellumo {

namespace {

// Access itself takes far fewer; a damaged file must not make a tree that is too deep to walk.
constexpr std::size_t mostJoins = 500;

} // namespace

void JoinTree::addTable(std::string_view name, std::string text)
{
    auto table = std::make_unique<Node>();
    table->names.insert(foldCase(name));
    table->text = std::move(text);
    m_items.push_back(std::move(table));
}

std::size_t JoinTree::itemOf(std::string_view name)
{
    const auto holds = [folded = foldCase(name)](const auto& item) { return item->names.contains(folded); };
    const auto found = std::ranges::find_if(m_items, holds);
    const auto place = static_cast<std::size_t>(found - m_items.begin());
    if (found == m_items.end()) addTable(name, bracketed(name));
    return place;
}

bool JoinTree::join(std::string_view left, std::string_view right, std::string_view word, std::string condition)
{
    if (++m_joinCount > mostJoins) return false;
    const auto leftItem = itemOf(left);
    const auto rightItem = itemOf(right);
    if (leftItem == rightItem) {
        auto& node = joinOf(*m_items[leftItem], foldCase(left), foldCase(right));
        node.conditions.insert(node.conditions.begin(), std::move(condition));
        return node.left != nullptr; // a table is not joined with itself
    }
    auto joined = std::make_unique<Node>();
    joined->left = std::move(m_items[leftItem]);
    joined->right = std::move(m_items[rightItem]);
    joined->names = joined->left->names;
    joined->names.insert(joined->right->names.begin(), joined->right->names.end());
    joined->word = word;
    joined->conditions.push_back(std::move(condition));
    std::erase(m_items, nullptr);
    m_items.push_back(std::move(joined));
    return true;
}

// The innermost join that has both names below it.
JoinTree::Node& JoinTree::joinOf(Node& item, const std::string& left, const std::string& right)
{
    auto* node = &item;
    while (node->left) {
        const auto hasBoth = [&](const Node& side) { return side.names.contains(left) && side.names.contains(right); };
        if (node->left->left && hasBoth(*node->left))
            node = node->left.get();
        else if (node->right->left && hasBoth(*node->right))
            node = node->right.get();
        else
            break;
    }
    return *node;
}

std::string JoinTree::text() const
{
    std::string text;
    for (const auto& item : m_items) {
        if (!text.empty()) text += ", ";
        append(*item, text);
    }
    return text;
}

void JoinTree::append(const Node& node, std::string& text)
{
    if (!node.left) {
        text += node.text;
        return;
    }
    appendOperand(*node.left, text);
    text += ' ' + node.word + ' ';
    appendOperand(*node.right, text);
    text += " ON ";
    if (node.conditions.size() == 1) {
        text += node.conditions.front();
        return;
    }
    for (const auto& condition : node.conditions) {
        if (&condition != &node.conditions.front()) text += " AND ";
        text += '(' + condition + ')';
    }
}

void JoinTree::appendOperand(const Node& node, std::string& text)
{
    if (node.left) text += '(';
    append(node, text);
    if (node.left) text += ')';
}

} // namespace vellumo

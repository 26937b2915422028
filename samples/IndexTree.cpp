// SPDX-License-Identifier: MIT
#include "samples/IndexTree.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

using EntrySpan = std::span<const Bytes>;

constexpr std::size_t pointerBytes = 4;

// A page of an index: type, room, owner, neighbours, the page behind the last entry (nodes), the number of bytes that
// all entries begin with, the level above the leaves, a bit for each offset at which an entry ends, the entries.
struct Layout {
    std::size_t previous, next, last, prefix, level, bits, entries;
};

constexpr Layout layoutOf(JetVersion version)
{
    if (version == JetVersion::Jet3) return {8, 12, 16, 20, 21, 22, 248};
    return {12, 16, 20, 24, 26, 27, 480};
}

// The bytes that `first` and `last`, and so all between them, begin with; never any of a row's place.
std::size_t sharedPrefix(const Bytes& first, const Bytes& last)
{
    const auto limit = std::min({first.size() - pointerBytes, last.size() - pointerBytes, std::size_t{255}});
    const auto end = first.begin() + static_cast<std::ptrdiff_t>(limit);
    return static_cast<std::size_t>(std::mismatch(first.begin(), end, last.begin()).first - first.begin());
}

// An entry of a node: the last entry below a child, and the child's page.
struct Child {
    Bytes lastEntry;
    std::uint32_t page = 0;
};

class TreeWriter {
public:
    TreeWriter(PageFile& file, std::uint32_t definitionPage)
        : m_file(file)
        , m_definitionPage(definitionPage)
        , m_layout(layoutOf(file.version()))
        , m_room(file.pageSize() - m_layout.entries)
    {
    }

    [[nodiscard]] IndexTree write(const std::vector<Bytes>& entries)
    {
        auto children = writeLeaves(entries);
        for (std::uint8_t level = 1; children.size() > 1; ++level)
            children = writeNodes(children, level);
        m_tree.rootPage = children.front().page;
        return std::move(m_tree);
    }

private:
    // How many of the entries one leaf holds.
    [[nodiscard]] std::size_t leafCount(EntrySpan entries) const
    {
        std::size_t bytes = 0;
        std::size_t count = 0;
        for (; count < entries.size(); ++count) {
            bytes += entries[count].size();
            if (bytes - count * sharedPrefix(entries[0], entries[count]) > m_room) break;
        }
        return count;
    }

    [[nodiscard]] std::vector<Child> writeLeaves(EntrySpan entries)
    {
        std::vector<Child> leaves;
        std::uint32_t previous = 0;
        do {
            const auto part = entries.first(leafCount(entries));
            entries = entries.subspan(part.size());
            const auto page = m_tree.pages.empty() ? allocate() : m_tree.pages.back();
            const auto next = entries.empty() ? 0 : allocate();
            auto bytes = startPage(4);
            putNumber<std::uint32_t>(&bytes[m_layout.previous], previous);
            putNumber<std::uint32_t>(&bytes[m_layout.next], next);
            const auto prefix = part.empty() ? 0 : sharedPrefix(part.front(), part.back());
            bytes[m_layout.prefix] = static_cast<std::uint8_t>(prefix);
            putEntries(bytes, part, prefix);
            m_file.write(page, bytes);
            leaves.push_back({part.empty() ? Bytes{} : part.back(), page});
            previous = page;
        } while (!entries.empty());
        return leaves;
    }

    // The last child of a node has no entry.
    [[nodiscard]] std::vector<Child> writeNodes(std::span<const Child> children, std::uint8_t level)
    {
        std::vector<Child> nodes;
        while (!children.empty()) {
            std::vector<Bytes> entries;
            std::size_t used = 0;
            while (entries.size() + 1 < children.size()) {
                const auto& child = children[entries.size()];
                used += child.lastEntry.size() + 4;
                if (used > m_room) break;
                auto& entry = entries.emplace_back(child.lastEntry);
                for (const int shift : {24, 16, 8, 0})
                    entry.push_back(static_cast<std::uint8_t>(child.page >> shift));
            }
            const auto& last = children[entries.size()];
            auto bytes = startPage(3);
            putNumber<std::uint32_t>(&bytes[m_layout.last], last.page);
            bytes[m_layout.level] = level;
            putEntries(bytes, entries, 0);
            nodes.push_back({last.lastEntry, allocate()});
            m_file.write(nodes.back().page, bytes);
            children = children.subspan(entries.size() + 1);
        }
        return nodes;
    }

    [[nodiscard]] Bytes startPage(std::uint8_t type) const
    {
        Bytes page(m_file.pageSize());
        page[0] = type;
        page[1] = 1;
        putNumber<std::uint32_t>(&page[4], m_definitionPage);
        return page;
    }

    void putEntries(Bytes& page, EntrySpan entries, std::size_t prefix) const
    {
        std::size_t end = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const auto bytes = ByteSpan(entries[i]).subspan(i == 0 ? 0 : prefix);
            std::copy(bytes.begin(), bytes.end(), page.begin() + static_cast<std::ptrdiff_t>(m_layout.entries + end));
            end += bytes.size();
            page[m_layout.bits + end / 8] |= static_cast<std::uint8_t>(1U << end % 8);
        }
        putNumber<std::uint16_t>(&page[2], static_cast<std::uint16_t>(m_room - end));
    }

    std::uint32_t allocate() { return m_tree.pages.emplace_back(m_file.allocate()); }

    PageFile& m_file;
    std::uint32_t m_definitionPage;
    Layout m_layout;
    std::size_t m_room; // for entries, on each page
    IndexTree m_tree;
};

} // namespace

IndexTree writeIndexTree(PageFile& file, std::uint32_t definitionPage, const std::vector<Bytes>& entries)
{
    return TreeWriter(file, definitionPage).write(entries);
}

} // namespace vellumo::samples

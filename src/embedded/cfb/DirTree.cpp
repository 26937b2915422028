// SPDX-License-Identifier: MIT
#include "embedded/cfb/DirTree.h"

#include <algorithm>

namespace vellumo::cfb {

namespace {

constexpr std::size_t nameCapacity = 64;

std::string nameFrom(Bytes raw)
{
    const auto length = std::min<std::size_t>(u16At(raw, nameCapacity), nameCapacity);
    std::string name;
    for (std::size_t i = 0; i < length && raw[i] != std::byte{0}; i += 2)
        name += static_cast<char>(raw[i]);
    // Property sets are marked by a control character in front of their name.
    if (!name.empty() && static_cast<unsigned char>(name.front()) < 32) name.erase(0, 1);
    return name;
}

} // namespace

DirEntry DirEntry::fromBytes(Bytes raw)
{
    DirEntry entry;
    entry.name = nameFrom(raw);
    entry.type = std::to_integer<std::uint8_t>(raw[66]);
    entry.left = u32At(raw, 68);
    entry.right = u32At(raw, 72);
    entry.child = u32At(raw, 76);
    entry.firstBlock = u32At(raw, 116);
    entry.size = u32At(raw, 120);
    return entry;
}

bool DirEntry::isValid() const { return !name.empty() && (type == Storage || type == Stream || type == Root); }

void DirTree::append(Bytes block)
{
    for (; block.size() >= DirEntry::byteCount; block = block.subspan(DirEntry::byteCount))
        m_entries.push_back(DirEntry::fromBytes(block));
}

const DirEntry* DirTree::root() const
{
    if (m_entries.empty() || !m_entries.front().isValid() || !m_entries.front().isDirectory()) return nullptr;
    return &m_entries.front();
}

const DirEntry* DirTree::entry(std::string_view path) const
{
    const auto* found = root();
    while (found != nullptr && !path.empty()) {
        const auto name = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(name.size() + 1, path.size()));
        if (!name.empty()) found = found->isDirectory() ? childNamed(*found, name) : nullptr;
    }
    return found;
}

// The order of the siblings is not relied on, so that a tree sorted by another rule is searched as well. Every entry is
// visited once, whatever the links say.
const DirEntry* DirTree::childNamed(const DirEntry& parent, std::string_view name) const
{
    std::vector<bool> isVisited(m_entries.size());
    std::vector<std::uint32_t> waiting{parent.child};
    while (!waiting.empty()) {
        const auto index = waiting.back();
        waiting.pop_back();
        if (index >= m_entries.size() || isVisited[index]) continue;
        isVisited[index] = true;
        const auto& entry = m_entries[index];
        if (entry.isValid() && entry.name == name) return &entry;
        waiting.push_back(entry.right);
        waiting.push_back(entry.left);
    }
    return nullptr;
}

} // namespace vellumo::cfb

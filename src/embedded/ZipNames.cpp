// SPDX-License-Identifier: MIT
#include "embedded/ZipNames.h"

#include "embedded/Limits.h"

#include <algorithm>
#include <optional>

namespace vellumo {

namespace {

using Names = std::vector<std::string_view>;

std::string_view textAt(Bytes zip, std::size_t offset, std::size_t length)
{
    if (offset > zip.size() || length > zip.size() - offset) return {};
    return {reinterpret_cast<const char*>(zip.data()) + offset, length};
}

bool hasMark(Bytes zip, std::size_t offset, std::uint32_t mark)
{
    return offset <= zip.size() && zip.size() - offset >= 4 && u32At(zip, offset) == mark;
}

// An entry in front of its data: 0 u32 mark, 6 u16 flags, 8 u16 method, 18 u32 packed size, 26 u16 length of the name,
// 28 u16 length of the extra field, 30 name, extra field, data. With flag 8 the size stands behind the data.
struct LocalEntry {
    std::string_view name;
    unsigned method = 0;
    std::size_t dataOffset = 0;
    std::size_t dataSize = 0;
    bool isSizeKnown = false;
};

std::optional<LocalEntry> localEntryAt(Bytes zip, std::size_t offset)
{
    constexpr std::size_t fixedPart = 30;
    constexpr unsigned sizeFollows = 8;
    if (!hasMark(zip, offset, 0x04034B50) || zip.size() - offset < fixedPart) return std::nullopt;
    const auto entry = zip.subspan(offset);
    const std::size_t nameLength = u16At(entry, 26);
    return LocalEntry{textAt(entry, fixedPart, nameLength), u16At(entry, 8),
        offset + fixedPart + nameLength + u16At(entry, 28), u32At(entry, 18), (u16At(entry, 6) & sizeFollows) == 0};
}

Names namesOfFirstEntries(Bytes zip)
{
    Names names;
    std::size_t offset = 0;
    while (names.size() < limits::zipEntriesLookedAt) {
        const auto entry = localEntryAt(zip, offset);
        if (!entry) break;
        names.push_back(entry->name);
        if (!entry->isSizeKnown) break;
        offset = entry->dataOffset + entry->dataSize;
    }
    return names;
}

// The record at the archive's end, behind which stands a comment at most: 0 u32 mark, 16 u32 offset of the directory.
std::optional<std::size_t> directoryOffset(Bytes zip)
{
    constexpr std::size_t recordSize = 22;
    constexpr std::size_t longestComment = 0xFFFF;
    if (zip.size() < recordSize) return std::nullopt;
    const auto last = zip.size() - recordSize;
    for (auto offset = last; last - offset <= longestComment; --offset) {
        if (hasMark(zip, offset, 0x06054B50)) return u32At(zip, offset + 16);
        if (offset == 0) break;
    }
    return std::nullopt;
}

// An entry of the directory: 0 u32 mark, 28 u16 length of the name, 30 and 32 u16 of extra field and comment, 46 name.
Names namesOfDirectory(Bytes zip, std::size_t offset)
{
    constexpr std::size_t fixedPart = 46;
    Names names;
    while (names.size() < limits::zipEntriesLookedAt && hasMark(zip, offset, 0x02014B50)
        && zip.size() - offset >= fixedPart) {
        const auto entry = zip.subspan(offset);
        const std::size_t nameLength = u16At(entry, 28);
        names.push_back(textAt(entry, fixedPart, nameLength));
        offset += fixedPart + nameLength + u16At(entry, 30) + u16At(entry, 32);
    }
    return names;
}

} // namespace

std::vector<std::string_view> zipNames(Bytes zip)
{
    const auto directory = directoryOffset(zip);
    auto names = directory ? namesOfDirectory(zip, *directory) : Names();
    return names.empty() ? namesOfFirstEntries(zip) : names;
}

std::string_view zipMimeType(Bytes zip)
{
    const auto entry = localEntryAt(zip, 0);
    if (!entry || entry->name != "mimetype" || entry->method != 0) return {};
    return textAt(zip, entry->dataOffset, entry->dataSize);
}

} // namespace vellumo

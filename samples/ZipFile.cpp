// SPDX-License-Identifier: MIT
#include "samples/ZipFile.h"

#include <zlib.h>

namespace vellumo::samples {
namespace {

constexpr std::uint16_t version = 20;
constexpr std::uint16_t firstDay = 0x0021; // 1980-01-01, the earliest date there is

// The part that the local header and the entry in the directory share.
void appendFacts(Bytes& out, const ZipEntry& entry)
{
    const auto bytes = asBytes(entry.text);
    appendNumber<std::uint16_t>(out, version);
    appendNumber<std::uint16_t>(out, 0); // flags
    appendNumber<std::uint16_t>(out, 0); // stored
    appendNumber<std::uint16_t>(out, 0); // midnight
    appendNumber<std::uint16_t>(out, firstDay);
    appendNumber<std::uint32_t>(
        out, static_cast<std::uint32_t>(crc32(0, bytes.data(), static_cast<uInt>(bytes.size()))));
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(bytes.size()));
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(bytes.size()));
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(entry.name.size()));
    appendNumber<std::uint16_t>(out, 0); // extra field
}

void appendDirectoryEntry(Bytes& out, const ZipEntry& entry, std::size_t offset)
{
    appendText(out, "PK\1\2");
    appendNumber<std::uint16_t>(out, version);
    appendFacts(out, entry);
    appendNumber<std::uint16_t>(out, 0); // comment
    appendNumber<std::uint16_t>(out, 0); // disk
    appendNumber<std::uint16_t>(out, 0); // internal attributes
    appendNumber<std::uint32_t>(out, 0); // external attributes
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(offset));
    appendText(out, entry.name);
}

} // namespace

Bytes zipFile(const std::vector<ZipEntry>& entries)
{
    Bytes out;
    Bytes directory;
    for (const auto& entry : entries) {
        appendDirectoryEntry(directory, entry, out.size());
        appendText(out, "PK\3\4");
        appendFacts(out, entry);
        appendText(out, entry.name);
        appendText(out, entry.text);
    }
    const auto directoryOffset = out.size();
    appendBytes(out, directory);
    appendText(out, "PK\5\6");
    appendNumber<std::uint32_t>(out, 0); // disks
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(entries.size()));
    appendNumber<std::uint16_t>(out, static_cast<std::uint16_t>(entries.size()));
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(directory.size()));
    appendNumber<std::uint32_t>(out, static_cast<std::uint32_t>(directoryOffset));
    appendNumber<std::uint16_t>(out, 0); // comment
    return out;
}

} // namespace vellumo::samples

// SPDX-License-Identifier: MIT
#include "fuzz/PageInput.h"
#include "jet/Limits.h"
#include "jet/Properties.h"

namespace {

using namespace vellumo;
using namespace vellumo::jet;

std::size_t textSize(const PropertyList& properties)
{
    std::size_t size = 0;
    for (const auto& [name, value] : properties) {
        const auto* text = std::get_if<std::string>(&value);
        size += name.size() + (text == nullptr ? 0 : text->size());
    }
    return size;
}

std::size_t textSize(const ParsedProperties& parsed)
{
    auto size = textSize(parsed.table);
    for (const auto& [column, properties] : parsed.columns)
        size += column.size() + textSize(properties);
    return size;
}

} // namespace

// The first byte tells the version; the others are the properties of a table.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const TextRules rules{data[0] % 2 != 0, &western()};
    const ByteSpan bytes(data + 1, size - 1);
    const auto parsed = parseProperties(bytes, rules);
    // A byte becomes at most three; a property of 8 bytes repeats a name of at most 64 characters.
    require(textSize(parsed) <= (3 + 3 * mostPropertyNameLength / 8) * bytes.size());
    if (!parsed.isWhole) return 0;
    // What cannot be a further chunk is told, and costs nothing else.
    std::vector<std::uint8_t> more(bytes.begin(), bytes.end());
    more.push_back(7);
    const auto withMore = parseProperties(more, rules);
    require(!withMore.isWhole && withMore.columns == parsed.columns && withMore.table == parsed.table);
    return 0;
}

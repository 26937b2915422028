// SPDX-License-Identifier: MIT
#include "fuzz/PageInput.h"
#include "jet/ByteReader.h"
#include "jet/CellText.h"
#include "jet/DataPage.h"
#include "jet/Definition.h"
#include "jet/IndexReader.h"
#include "jet/Limits.h"
#include "jet/PageSurvey.h"

#include <set>

namespace {

using namespace vellumo;
using namespace vellumo::jet;

std::optional<ParsedDefinition> parse(ByteSpan bytes, bool isJet3)
{
    return parseDefinition(bytes, isJet3, [isJet3](ByteSpan stored) {
        TextColumnBuilder text;
        appendStoredText(stored, {isJet3, &western()}, text);
        return std::string(text.openText());
    });
}

// What readers of rows rely on.
void checkTable(const TableDef& table, std::size_t inputSize)
{
    require(table.columns.size() <= mostColumns);
    std::set<unsigned> numbers;
    std::size_t textSize = 0;
    for (const auto& column : table.columns) {
        require(column.number < table.columnLimit && column.number <= mostColumns);
        require(numbers.insert(column.number).second);
        textSize += column.name.size();
    }
    for (const auto& index : table.indices) {
        textSize += index.name.size();
        require(index.keys.size() <= 10);
        for (const auto& key : index.keys)
            require(key.column < table.columns.size());
    }
    require(textSize <= 3 * inputSize);
    require(numberOrder(table.columns).size() == table.columns.size());
}

// A sound definition takes as many bytes as it says: with slack behind it is the same, and without its last byte it is
// none.
void checkSound(ByteSpan bytes, const ParsedDefinition& parsed, bool isJet3)
{
    const auto length = load32(&bytes[8]);
    require(length <= bytes.size());
    const auto exact = parse(bytes.first(length), isJet3);
    require(exact && exact->isSound && exact->table.columns.size() == parsed.table.columns.size()
        && exact->table.indices.size() == parsed.table.indices.size());
    const auto cut = parse(bytes.first(length - 1), isJet3);
    require(!cut || !cut->isSound);
}

void checkBytes(ByteSpan bytes, bool isJet3)
{
    const auto parsed = parse(bytes, isJet3);
    if (!parsed) return;
    checkTable(parsed->table, bytes.size());
    if (parsed->isSound) checkSound(bytes, *parsed, isJet3);
}

void checkPageList(const PageList& list, const Pages& pages)
{
    std::uint32_t last = 0;
    for (const auto page : list.pages) {
        require(page > last && page < pages.count());
        last = page;
    }
    for (const auto& gap : list.gaps)
        require(gap.first <= gap.end && gap.end <= pages.count());
}

// The definition on page 1, and what it leads to.
void checkPages(test::MemoryPages& pages)
{
    PageBuffer buffer;
    const auto definition = readDefinition(pages, buffer, 1);
    require(definition.bytes.size() <= mostDefinitionBytes + pages.format().size);
    require(pages.reads <= mostDefinitionBytes / (pages.format().size - 8) + 2);
    const auto parsed = parse(definition.bytes, pages.format().isJet3);
    if (!parsed) return;
    const auto mapPage = pages.read(pageOf(parsed->table.pageMapPointer), buffer);
    const auto map = isDataPage(mapPage) ? rowAt(mapPage, pages.format(), parsed->table.pageMapPointer) : std::nullopt;
    checkPageList(readPageList(map ? map->bytes : ByteSpan(), pages, buffer), pages);
    for (std::size_t i = 0; i < std::min<std::size_t>(parsed->table.indexRoots.size(), 4); ++i) {
        const auto entries = readIndexEntries(pages, parsed->table.indexRoots[i], 1);
        require(entries.rows.size() <= pages.count() * pages.format().size);
    }
}

// A page is either a definition's or a table's, once, and none that is left out.
void checkSurvey(test::MemoryPages& pages)
{
    const auto free = freePages(pages);
    require(free.size() == pages.count());
    const auto survey = surveyPages(pages, free, [] { return true; });
    require(survey.has_value());
    std::set<std::uint32_t> met(survey->definitions.begin(), survey->definitions.end());
    for (const auto& [owner, owned] : survey->dataPages)
        for (const auto page : owned)
            require(met.insert(page).second);
    for (const auto page : met)
        require(page > 0 && page < pages.count() && !free[page]);
}

} // namespace

// The first byte tells the version. The others are a definition, then the pages of a file with one on page 1.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const auto& format = data[0] % 2 == 0 ? jet4Pages : jet3Pages;
    const ByteSpan bytes(data + 1, size - 1);
    checkBytes(bytes, format.isJet3);
    test::MemoryPages pages(format, pageCountOf(bytes.size(), format));
    putPages(bytes, pages);
    checkPages(pages);
    checkSurvey(pages);
    return 0;
}

// SPDX-License-Identifier: MIT
// Search and sorting of the grid on a table of 1,000,000 rows and 9 columns, each as a ratio to a reference that runs
// in the same process: a memchr pass over the same bytes, and std::sort of the same texts by their bytes.
#include "Measure.h"
#include "browser/GridRows.h"
#include "model/TAdmMDBTable.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <functional>
#include <numeric>
#include <random>

namespace vellumo {
namespace {

constexpr std::uint32_t rowCount = 1'000'000;
constexpr int repetitions = 5;

double medianMs(
    const std::function<void()>& work, const std::function<void()>& prepare = [] {})
{
    std::vector<double> times;
    for (int i = 0; i < repetitions; ++i) {
        prepare();
        times.push_back(1000 * bench::seconds(work));
    }
    return bench::median(std::move(times));
}

void report(const char* name, double ms, double reference, double limit)
{
    fmt::print("{:<52}{:>10.3f} ms{:>10.3f} x{}\n", name, ms, ms / reference,
        limit > 0 ? fmt::format("  (at most {})", limit) : "");
}

// A text of two or three words; one in twenty holds letters beyond ASCII.
std::string randomWords(std::mt19937& random)
{
    static constexpr std::string_view syllables[] = {"an", "bel", "cor", "da", "er", "fin", "gar", "hol", "in", "jo",
        "ker", "lan", "mo", "ner", "or", "pet", "ri", "sen", "ta", "ul", "ver", "win", "yo", "zel"};
    const auto word = [&] {
        std::string text;
        for (auto count = 2 + random() % 2; count > 0; --count)
            text += syllables[random() % std::size(syllables)];
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
        return text;
    };
    auto text = word() + ' ' + word();
    if (random() % 20 == 0) text += " Größe";
    return text;
}

std::vector<std::string> makeRow(std::mt19937& random, std::uint32_t row)
{
    auto name = randomWords(random);
    if (row % 200'000 == 77) name += " Quixote Ärmel";
    return {std::move(name), fmt::format("Street {} {}", random() % 5000, randomWords(random)),
        fmt::format("{}", random() % 256), fmt::format("{}", static_cast<std::int16_t>(random())),
        fmt::format("{}", row + 1), fmt::format("{:.17g}", static_cast<double>(random()) / 1000),
        fmt::format("{:02}/{:02}/{} {:02}:{:02}:00", 1 + random() % 12, 1 + random() % 28, 1950 + random() % 70,
            random() % 24, random() % 60),
        fmt::format("{}.{:04}", random() % 100'000, random() % 10'000), random() % 2 == 0 ? "1" : "0"};
}

std::unique_ptr<TAdmMDBTable> makeTable()
{
    auto table = std::make_unique<TAdmMDBTable>();
    TAdmMDBTable::Columns columns;
    for (const auto* type :
        {"Text", "Text", "Byte", "Integer", "Long Integer", "Double", "DateTime", "Currency", "Boolean"}) {
        columns.push_back(std::make_unique<TAdmMDBColumn>());
        columns.back()->setName(fmt::format("{} {}", type, columns.size()));
        columns.back()->setDataType(type);
    }
    table->setColumns(std::move(columns));
    auto store = table->emptyRows();
    RowGroupBuilder builder(store.kinds());
    std::mt19937 random(1);
    for (std::uint32_t row = 0; row < rowCount; ++row) {
        const auto texts = makeRow(random, row);
        for (std::size_t i = 0; i < texts.size(); ++i)
            builder.addText(i, texts[i]);
        builder.endRow();
        if (builder.isFull()) store.append(builder.take());
    }
    store.append(builder.take());
    table->setRows(std::move(store));
    return table;
}

// Looks in all texts for a byte that none holds; returns how often it is there, so that the work cannot be left out.
std::size_t memchrPass(const RowStore& rows)
{
    std::size_t found = 0;
    for (const auto& group : rows.groups())
        for (const auto& chunk : group.texts)
            found += std::memchr(chunk.bytes().data(), 1, chunk.bytes().size()) != nullptr ? 1 : 0;
    return found;
}

void benchSearch(const RowStore& rows)
{
    std::size_t sum = 0;
    const auto memchrMs = medianMs([&] { sum += memchrPass(rows); });
    report("memchr pass over all texts", memchrMs, memchrMs, 0);
    const struct {
        const char* name;
        SearchSettings settings;
    } searches[] = {
        {"contains, case ignored", {"quixote", SearchOption::Contains, true}},
        {"contains, case honoured", {"Quixote", SearchOption::Contains, false}},
        {"begins with, case ignored", {"quixote", SearchOption::BeginsWith, true}},
        {"begins with, case honoured", {"Quixote", SearchOption::BeginsWith, false}},
        {"equals, case ignored", {"quixote", SearchOption::Equals, true}},
        {"equals, case honoured", {"Quixote", SearchOption::Equals, false}},
        {"ends with, case ignored", {"quixote", SearchOption::EndsWith, true}},
        {"ends with, case honoured", {"Quixote", SearchOption::EndsWith, false}},
        {"contains, beyond ASCII, case ignored", {"ärmel", SearchOption::Contains, true}},
        {"contains, beyond ASCII, case honoured", {"Ärmel", SearchOption::Contains, false}},
        {"contains \"1\", case ignored (many hits)", {"1", SearchOption::Contains, true}},
        {"contains \"e\", case ignored (many hits)", {"e", SearchOption::Contains, true}},
    };
    for (const auto& search : searches) {
        std::size_t found = 0;
        const auto ms = medianMs([&] { found = filterData(rows, search.settings).size(); });
        report(fmt::format("{} [{} rows]", search.name, found).c_str(), ms, memchrMs, found <= 5 ? 12 : 0);
    }
    const SearchSettings first{"qu", SearchOption::Contains, true};
    const SearchSettings second{"qui", SearchOption::Contains, true};
    const auto found = filterData(rows, first);
    report(fmt::format("one letter more, {} rows in the list", found.size()).c_str(),
        medianMs([&] { sum += filterData(rows, second, found).size(); }), memchrMs, 0);
    const auto many = filterData(rows, {"el", SearchOption::Contains, true});
    report(fmt::format("one letter more, {} rows in the list", many.size()).c_str(), medianMs([&] {
        sum += filterData(rows, {"elt", SearchOption::Contains, true}, many).size();
    }),
        memchrMs, 0);
    if (sum == 0) fmt::print("nothing found\n");
}

double bytewiseSortMs(const RowStore& rows, std::size_t column)
{
    std::vector<std::string_view> texts;
    return medianMs([&] { std::sort(texts.begin(), texts.end()); },
        [&] {
            texts.clear();
            for (const auto& group : rows.groups())
                for (std::uint32_t row = 0; row < group.rowCount; ++row)
                    texts.push_back(group.texts[column].text(row));
        });
}

void benchSort(TAdmMDBTable& table, std::size_t column)
{
    GridRows grid;
    auto& sorted = *table.columns()[column];
    const auto reference = bytewiseSortMs(table.rows(), column);
    report(fmt::format("std::sort of the texts of \"{}\"", sorted.name()).c_str(), reference, reference, 0);
    std::size_t sum = 0;
    sorted.setSortOrder(1);
    const auto firstMs = medianMs([&] { sum += grid.rowCount(); }, [&] { grid.setTable(&table); });
    report("  sorted for the first time", firstMs, reference, 3);
    const auto turn = [&](int from, int to) {
        return medianMs(
            [&] {
                sorted.setSortOrder(to);
                sum += grid.rowCount();
            },
            [&] {
                sorted.setSortOrder(from);
                sum += grid.rowCount();
            });
    };
    report("  turned to descending (of the first time)", turn(1, -1), firstMs, 0.1);
    report("  turned to ascending (of the first time)", turn(-1, 1), firstMs, 0.1);
    report("  sorted again after no order (of the first time)", turn(0, 1), firstMs, 0.1);
    sorted.setSortOrder(1);
    sum += grid.rowCount();
    report("  row count and 1000 look-ups, nothing changed", medianMs([&] {
        for (std::size_t i = 0; i < 1000; ++i)
            sum += grid.rowCount() + grid.rowAt(i);
    }),
        firstMs, 0);
    grid.setSearch({"quixote", SearchOption::Contains, true});
    sum += grid.rowCount();
    report("  a search in sorted rows, one letter less",
        medianMs(
            [&] {
                grid.setSearch({"quixot", SearchOption::Contains, true});
                sum += grid.rowCount();
            },
            [&] {
                grid.setSearch({"quixote", SearchOption::Contains, true});
                sum += grid.rowCount();
            }),
        firstMs, 0);
    sorted.setSortOrder(0);
    if (sum == 0) fmt::print("no rows\n");
}

} // namespace
} // namespace vellumo

int main()
{
    const auto table = vellumo::makeTable();
    vellumo::benchSearch(table->rows());
    for (const std::size_t column : {0U, 5U, 6U}) // texts, numbers, dates
        vellumo::benchSort(*table, column);
}

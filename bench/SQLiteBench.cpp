// SPDX-License-Identifier: MIT
// The processor time of an SQLite export, as a ratio to a bare loop that binds the same rows to one prepared statement
// inside one transaction. Usage: bench_sqlite [rows [runs]]
#include "BenchModel.h"
#include "Measure.h"
#include "SQLite Connection/Connection/SQLConnection.h"
#include "SQLite Connection/DBSockets/LoadErrorWindow.h"
#include "support/ExportRun.h"
#include "support/TempFolder.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <variant>

namespace {

using namespace vellumo;

// A value as the loop binds it, made before the clock starts.
using Value = std::variant<std::monostate, std::int64_t, double, std::string_view>;

Value valueOf(ColumnType type, std::string_view text)
{
    if (text.empty()) return {};
    const auto& facts = factsOf(type);
    if (facts.hasDecimalSymbol) return std::strtod(std::string(text).c_str(), nullptr);
    if (facts.sortKind == SortKind::Number) return std::int64_t{std::atoll(std::string(text).c_str())};
    return text;
}

std::vector<Value> valuesOf(const TAdmMDBTable& table)
{
    std::vector<Value> values;
    for (std::size_t row = 0; row < table.rows().rowCount(); ++row)
        for (std::size_t c = 0; c < table.columns().size(); ++c)
            values.push_back(valueOf(table.columns()[c]->type(), table.rows().text(row, c)));
    return values;
}

void exportTo(const std::string& path, const TAdmMDBFile& file, bool withData)
{
    ExportOptions options;
    options.fileType = ExportFileType::SQLite;
    options.isSingleFile = true;
    options.path = path;
    options.exportData = withData;
    if (test::runWriter(exportSQLiteThread, file, options).successTableCount != 1) std::exit(1);
}

struct Binder {
    DBStatement& statement;
    int parameter;
    void operator()(std::monostate) const { statement.bindNull(parameter); }
    void operator()(std::int64_t value) const { statement.bindInteger(parameter, value); }
    void operator()(double value) const { statement.bindReal(parameter, value); }
    void operator()(std::string_view text) const { statement.bindText(parameter, text); }
};

void insertBare(const std::string& path, const std::vector<Value>& values)
{
    constexpr int columnCount = 9;
    StandardErrorLoadErrorWindow window;
    SQLConnection connection(ServerType::SQLite, window);
    connection.setDbFilePath(path);
    bool isDone = connection.connect() && connection.queryString("PRAGMA synchronous = OFF")
        && connection.queryString("PRAGMA locking_mode = EXCLUSIVE") && connection.queryString("BEGIN");
    {
        const auto statement = connection.prepare("INSERT INTO People VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
        for (std::size_t i = 0; isDone && i < values.size(); i += columnCount) {
            for (int c = 0; c < columnCount; ++c)
                std::visit(Binder{*statement, c}, values[i + static_cast<std::size_t>(c)]);
            isDone = connection.run(*statement);
        }
    }
    if (!isDone || !connection.queryString("COMMIT")) std::exit(1);
}

// Of this process, in seconds.
template <typename Work> double processorSeconds(Work work)
{
    const auto start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char** argv)
{
    const auto rowCount = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000UL;
    const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
    const test::TempFolder folder;
    const auto path = folder.path("people.sqlite");
    const auto file = bench::makeBenchFile(rowCount);
    const auto values = valuesOf(*file->tables().front());
    std::vector<double> exports;
    std::vector<double> references;
    for (int i = 0; i < runs; ++i) {
        exports.push_back(processorSeconds([&] { exportTo(path, *file, true); }));
        exportTo(path, *file, false); // the empty table
        references.push_back(processorSeconds([&] { insertBare(path, values); }));
    }
    const auto rows = static_cast<double>(rowCount);
    const auto exported = bench::median(exports);
    const auto reference = bench::median(references);
    std::printf("export    %7.3f s of the processor %9.0f rows/s  %.1f MB\n", exported, rows / exported,
        static_cast<double>(std::filesystem::file_size(path)) / 1e6);
    std::printf("bare loop %7.3f s of the processor %9.0f rows/s\n", reference, rows / reference);
    std::printf("the export takes %.2f of the bare loop\n", exported / reference);
}

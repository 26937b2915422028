// SPDX-License-Identifier: MIT
// The processor time of an SQLite export in both styles, as a ratio to a bare loop that binds the same rows to one
// prepared statement inside one transaction. Usage: bench_sqlite [rows [runs]]
#include "BenchModel.h"
#include "Measure.h"
#include "SQLite Connection/Connection/SQLConnection.h"
#include "SQLite Connection/DBSockets/LoadErrorWindow.h"
#include "export/ExportFormat.h"
#include "support/ExportRun.h"
#include "support/TempFolder.h"

#include <cstdio>
#include <cstdlib>
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

enum class Part { Structure, All };

void exportTo(const std::string& path, const TAdmMDBFile& file, bool isExact, Part part)
{
    auto options = defaultOptions(exportFormat(ExportFileType::SQLite), isExact);
    options.isSingleFile = true;
    options.path = path;
    options.exportData = part == Part::All;
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

} // namespace

int main(int argc, char** argv)
{
    const auto rowCount = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000UL;
    const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
    const test::TempFolder folder;
    const auto path = folder.path("people.sqlite");
    const auto file = bench::makeBenchFile(rowCount);
    const auto values = valuesOf(*file->tables().front());
    std::vector<double> classic;
    std::vector<double> exact;
    std::vector<double> references;
    for (int i = 0; i < runs; ++i) {
        exact.push_back(bench::processorSeconds([&] { exportTo(path, *file, true, Part::All); }));
        classic.push_back(bench::processorSeconds([&] { exportTo(path, *file, false, Part::All); }));
        exportTo(path, *file, false, Part::Structure);
        references.push_back(bench::processorSeconds([&] { insertBare(path, values); }));
    }
    const auto reference = bench::median(references);
    const auto print = [&](const char* name, double seconds) {
        std::printf("%-10s %7.3f s of the processor %9.0f rows/s  %.2f of the bare loop\n", name, seconds,
            static_cast<double>(rowCount) / seconds, seconds / reference);
    };
    print("bare loop", reference);
    print("classic", bench::median(classic));
    print("exact", bench::median(exact));
}

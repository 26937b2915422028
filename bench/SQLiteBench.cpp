// SPDX-License-Identifier: MIT
// How many rows a second an SQLite export takes, as a ratio to the same statements inside one transaction.
// Usage: bench_sqlite [rows [runs]]
#include "BenchModel.h"
#include "Measure.h"
#include "SQLite Connection/Connection/SQLConnection.h"
#include "SQLite Connection/DBSockets/LoadErrorWindow.h"
#include "support/ExportRun.h"
#include "support/TempFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using namespace vellumo;

// The statements of the table, one a line in a script that has nothing else.
std::vector<std::string> statements(const TAdmMDBFile& file, const std::string& folder)
{
    ExportOptions options;
    options.fileType = ExportFileType::SQL;
    options.sqlDialect = SQLDialect::SQLite;
    options.path = folder;
    options.includeDropTable = false;
    if (test::runWriter(exportSQLThread, file, options).successTableCount != 1) std::exit(1);
    std::vector<std::string> lines;
    std::ifstream script(folder + "/People.sql");
    for (std::string line; std::getline(script, line);)
        if (line.starts_with("INSERT")) lines.push_back(line);
    return lines;
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

void runInOneTransaction(const std::string& path, const std::vector<std::string>& lines)
{
    StandardErrorLoadErrorWindow window;
    SQLConnection connection(ServerType::SQLite, window);
    connection.setDbFilePath(path);
    bool isDone = connection.connect() && connection.queryString("BEGIN");
    for (const auto& line : lines)
        isDone = isDone && connection.queryString(line);
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
    const auto lines = statements(*file, folder.path());
    std::vector<double> exports;
    std::vector<double> references;
    for (int i = 0; i < runs; ++i) {
        exports.push_back(bench::seconds([&] { exportTo(path, *file, true); }));
        exportTo(path, *file, false); // the empty tables
        references.push_back(bench::seconds([&] { runInOneTransaction(path, lines); }));
    }
    const auto rows = static_cast<double>(rowCount);
    const auto exported = bench::median(exports);
    const auto reference = bench::median(references);
    std::printf("export          %7.3f s %9.0f rows/s  %.1f MB\n", exported, rows / exported,
        static_cast<double>(std::filesystem::file_size(path)) / 1e6);
    std::printf("one transaction %7.3f s %9.0f rows/s\n", reference, rows / reference);
    std::printf("speed of the export: %.2f of one transaction\n", reference / exported);
}

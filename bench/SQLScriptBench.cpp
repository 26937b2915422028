// SPDX-License-Identifier: MIT
// How long an SQL script takes, as a ratio to the CSV file of the same table. Usage: bench_sql_script [rows [runs]]
#include "BenchModel.h"
#include "Measure.h"
#include "export/ExportFormat.h"
#include "export/sql/SQLDialectFacts.h"
#include "support/ExportRun.h"
#include "support/TempFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace vellumo;

// The median time of an export into the folder, and the size of its file.
struct Figure {
    double seconds;
    double megabytes;
};

Figure measure(int runs, ExportWriter writer, const TAdmMDBFile& file, const ExportOptions& options)
{
    const auto run = [&] {
        if (test::runWriter(writer, file, options).successTableCount != 1) std::exit(1);
    };
    const auto seconds = bench::medianSeconds(runs, run);
    const auto extension = std::string(exportFormat(options.fileType).extension);
    const auto bytes = std::filesystem::file_size(options.path + "/People." + extension);
    return {seconds, static_cast<double>(bytes) / 1e6};
}

} // namespace

int main(int argc, char** argv)
{
    const auto rowCount = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000UL;
    const int runs = argc > 2 ? std::atoi(argv[2]) : 5;
    const auto file = bench::makeBenchFile(rowCount);
    const test::TempFolder folder;
    ExportOptions options;
    options.path = folder.path();
    const auto csv = measure(runs, exportTextFileThread, *file, options);
    const auto print = [&](const char* name, const Figure& figure) {
        std::printf("%-12s %7.3f s %9.0f rows/s %7.1f MB %7.1f MB/s  %5.2f x csv\n", name, figure.seconds,
            static_cast<double>(rowCount) / figure.seconds, figure.megabytes, figure.megabytes / figure.seconds,
            figure.seconds / csv.seconds);
    };
    print("csv", csv);
    options.fileType = ExportFileType::SQL;
    for (const auto* dialect : sqlDialects()) {
        options.sqlDialect = dialect->dialect;
        print(std::string(dialect->name).c_str(), measure(runs, exportSQLThread, *file, options));
    }
}

// SPDX-License-Identifier: MIT
// What keeping every value costs: exact CSV and scripts against classic ones, and a workbook of 1,000,000 rows and 9
// columns against a bare loop of libxlsxwriter (constant memory) over the same values, with how much memory it takes
// beside the model. And what looking for findings costs a classic export. Processor time.
// Usage: bench_exact [FOLDER [RUNS ["no-workbook"]]]
#include "BenchModel.h"
#include "Measure.h"
#include "export/ExportFormat.h"
#include "export/RunExport.h"
#include "export/sql/SQLDialectFacts.h"
#include "platform/SystemLog.h"
#include "support/ExportRun.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>
#include <xlsxwriter.h>

namespace {

using namespace vellumo;

constexpr std::size_t rowCount = 1'000'000;

struct StandardErrorLog : SystemLog {
    void log(std::string_view line) override
    {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
    }
};

ExportOptions optionsFor(ExportFileType type, const std::string& folder, bool isExact)
{
    auto options = defaultOptions(exportFormat(type), isExact);
    options.path = folder;
    return options;
}

void exportTable(const TAdmMDBFile& file, const ExportOptions& options)
{
    StandardErrorLog systemLog;
    const std::atomic<bool> stop = false;
    std::vector<ExportEntry> tables = {ExportEntry::exportEntryWithTableName("People", options.fileType)};
    tables[0].selected = true;
    if (!runExport(file, tables, options, stop, {[](std::size_t) {}, systemLog}).isDone()) std::exit(1);
}

// The days that a sheet counts, of a text as the store has dates.
double serial(std::string_view text)
{
    std::tm parts{};
    strptime(std::string(text).c_str(), "%m/%d/%Y %H:%M:%S", &parts);
    return static_cast<double>(timegm(&parts)) / 86400 + 25569;
}

void writeWithLibrary(const TAdmMDBFile& file, const std::string& path)
{
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    auto* book = workbook_new_opt(path.c_str(), &options);
    auto* sheet = workbook_add_worksheet(book, nullptr);
    auto* dates = workbook_add_format(book);
    format_set_num_format(dates, "yyyy-mm-dd hh:mm:ss");
    const auto& rows = file.tables()[0]->rows();
    lxw_row_t number = 1;
    for (const auto& group : rows.groups()) {
        for (std::uint32_t r = 0; r < group.rowCount; ++r, ++number) {
            for (lxw_col_t c = 0; c < 9; ++c) {
                const std::string text(group.texts[c].text(r));
                if (text.empty()) continue;
                if (c >= 1 && c <= 3)
                    worksheet_write_string(sheet, number, c, text.c_str(), nullptr);
                else if (c == 6)
                    worksheet_write_number(sheet, number, c, serial(text), dates);
                else if (c == 7)
                    worksheet_write_boolean(sheet, number, c, text == "1" ? 1 : 0, nullptr);
                else
                    worksheet_write_number(sheet, number, c, std::strtod(text.c_str(), nullptr), nullptr);
            }
        }
    }
    if (workbook_close(book) != LXW_NO_ERROR) std::exit(1);
}

double statusMB(std::string_view field)
{
    std::ifstream stream("/proc/self/status");
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with(field)) return std::strtod(line.c_str() + field.size() + 1, nullptr) / 1024;
    return 0;
}

// Of an export, in MiB beyond what the process holds before it. In a child, so that nothing freed earlier is used
// again.
double peakBeside(const TAdmMDBFile& file, const std::string& folder)
{
    int ends[2];
    if (pipe(ends) != 0) std::exit(1);
    const auto child = fork();
    if (child == 0) {
        const auto before = statusMB("VmRSS");
        exportTable(file, optionsFor(ExportFileType::XLSX, folder, true));
        const auto peak = statusMB("VmHWM") - before;
        _exit(write(ends[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
    }
    double peak = 0;
    if (read(ends[0], &peak, sizeof peak) != sizeof peak) std::exit(1);
    waitpid(child, nullptr, 0);
    close(ends[0]);
    close(ends[1]);
    return peak;
}

struct Pair {
    double first;
    double second;
};

// Medians; run by turns, so that what else the machine does meets both.
template <typename First, typename Second> Pair processorSeconds(int runs, First first, Second second)
{
    std::vector<double> firsts;
    std::vector<double> seconds;
    for (int i = 0; i < runs; ++i) {
        firsts.push_back(bench::processorSeconds(first));
        seconds.push_back(bench::processorSeconds(second));
    }
    return {bench::median(std::move(firsts)), bench::median(std::move(seconds))};
}

void printPair(std::string_view name, const Pair& pair)
{
    std::printf("%-40s %7.3f s and %7.3f s, %.2f\n", std::string(name).c_str(), pair.first, pair.second,
        pair.second / pair.first);
}

// The export with its findings beside the writer alone.
Pair costOfFindings(const TAdmMDBFile& file, const ExportOptions& options, int runs)
{
    const auto writer = exportFormat(options.fileType).writer;
    return processorSeconds(
        runs,
        [&] {
            if (test::runWriter(writer, file, options).successTableCount != 1) std::exit(1);
        },
        [&] { exportTable(file, options); });
}

void measureStyles(const TAdmMDBFile& file, std::string_view name, const ExportOptions& classic, int runs)
{
    auto exact = classic;
    exact.isExact = true;
    const auto pair = processorSeconds(
        runs, [&] { exportTable(file, classic); }, [&] { exportTable(file, exact); });
    printPair(fmt::format("{}: classic and exact", name), pair);
    printPair(fmt::format("{}: writer alone, with findings", name), costOfFindings(file, classic, runs));
}

void measureWorkbook(const TAdmMDBFile& file, const std::string& folder, int runs)
{
    const auto peak = peakBeside(file, folder);
    const auto options = optionsFor(ExportFileType::XLSX, folder, true);
    const auto pair = processorSeconds(
        runs, [&] { exportTable(file, options); }, [&] { writeWithLibrary(file, folder + "/library.xlsx"); });
    printPair("XLSX and a bare loop of libxlsxwriter", pair);
    std::printf("XLSX: %.0f cells/s, peak memory beside the model %.1f MiB\n", rowCount * 9 / pair.first, peak);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : std::filesystem::temp_directory_path().string();
    const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
    const auto file = bench::makeBenchFile(rowCount);
    if (argc <= 3) measureWorkbook(*file, folder, runs);

    measureStyles(*file, "CSV", optionsFor(ExportFileType::CSV, folder, false), runs);
    measureStyles(*file, "XML", optionsFor(ExportFileType::XML, folder, false), runs);
    auto script = optionsFor(ExportFileType::SQL, folder, false);
    for (const auto* dialect : sqlDialects()) {
        script.sqlDialect = dialect->dialect;
        measureStyles(*file, dialect->title, script, runs);
    }
    const auto lines = processorSeconds(
        runs, [&] { exportTable(*file, optionsFor(ExportFileType::CSV, folder, false)); },
        [&] { exportTable(*file, optionsFor(ExportFileType::JSONLines, folder, true)); });
    printPair("CSV, classic, and JSON Lines", lines);
    return 0;
}

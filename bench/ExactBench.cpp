// SPDX-License-Identifier: MIT
// What keeping every value costs: exact CSV against classic CSV, and a workbook of 1,000,000 rows and 9 columns against
// a bare loop of libxlsxwriter (constant memory) over the same values; and how much memory it takes beside the model.
// Processor time. Usage: bench_exact [FOLDER [RUNS]]
#include "BenchModel.h"
#include "Measure.h"
#include "export/ExportFormat.h"
#include "export/RunExport.h"
#include "platform/SystemLog.h"

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

void exportTable(const TAdmMDBFile& file, const std::string& folder, ExportFileType type, bool isExact)
{
    auto options = defaultOptions(exportFormat(type), isExact);
    options.path = folder;
    StandardErrorLog systemLog;
    const std::atomic<bool> stop = false;
    std::vector<ExportEntry> tables = {ExportEntry::exportEntryWithTableName("People", type)};
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

template <typename Work> double processorSeconds(int runs, Work work)
{
    std::vector<double> values;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::clock();
        work();
        values.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return bench::median(std::move(values));
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
        exportTable(file, folder, ExportFileType::XLSX, true);
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

} // namespace

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : std::filesystem::temp_directory_path().string();
    const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
    const auto file = bench::makeBenchFile(rowCount);
    const auto peak = peakBeside(*file, folder);

    const auto classic = processorSeconds(runs, [&] { exportTable(*file, folder, ExportFileType::CSV, false); });
    const auto exact = processorSeconds(runs, [&] { exportTable(*file, folder, ExportFileType::CSV, true); });
    std::printf("CSV, classic           %7.3f s\n", classic);
    std::printf("CSV, exact             %7.3f s   %.2f of classic\n", exact, exact / classic);
    const auto lines = processorSeconds(runs, [&] { exportTable(*file, folder, ExportFileType::JSONLines, true); });
    std::printf("JSON Lines             %7.3f s   %.2f of classic CSV\n", lines, lines / classic);

    const auto library = processorSeconds(1, [&] { writeWithLibrary(*file, folder + "/library.xlsx"); });
    const auto own = processorSeconds(runs, [&] { exportTable(*file, folder, ExportFileType::XLSX, true); });
    std::printf("XLSX, bare libxlsxwriter %5.3f s   %.0f cells/s\n", library, rowCount * 9 / library);
    std::printf("XLSX                   %7.3f s   %.0f cells/s, %.1f times the library\n", own, rowCount * 9 / own,
        library / own);
    std::printf("XLSX, peak memory beside the model %.1f MiB\n", peak);
    return 0;
}

// SPDX-License-Identifier: MIT
// How long a workbook of 1,000,000 rows and 9 columns, 3 of them text, takes: as a ratio to a plain write() of the same
// bytes, and to python3-xlwt on the first 65,536 rows; and how much memory it takes beside the model.
// Usage: bench_excel [FOLDER [RUNS]]. FOLDER (default: the folder for temporary files) takes the files.
#include "Measure.h"
#include "export/RunExport.h"
#include "model/TAdmMDBFile.h"
#include "platform/SystemLog.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace vellumo;

constexpr std::size_t rowCount = 1'000'000;
constexpr std::size_t sliceRows = 65'536;

struct StandardErrorLog : SystemLog {
    void log(std::string_view line) override
    {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
    }
};

struct ColumnKind {
    const char* name;
    const char* dataType;
};
constexpr ColumnKind columnKinds[] = {{"ID", "Long Integer"}, {"Name", "Text"}, {"Quantity", "Integer"},
    {"Price", "Currency"}, {"Weight", "Double"}, {"Address", "Text"}, {"Score", "Single"}, {"Total", "Numeric"},
    {"Remark", "Text"}};
constexpr std::size_t columnCount = std::size(columnKinds);

// Well mixed, and the same in every run.
std::uint64_t noise(std::uint64_t seed)
{
    seed = (seed + 1) * 0x9E3779B97F4A7C15;
    seed = (seed ^ (seed >> 30)) * 0xBF58476D1CE4E5B9;
    return seed ^ (seed >> 27);
}

void addRow(RowGroupBuilder& rows, std::uint64_t row)
{
    char text[128];
    std::size_t column = 0;
    const auto add = [&](int length) {
        rows.addText(column++, std::string_view(text, static_cast<std::size_t>(length)));
    };
    const auto random = noise(row);
    const auto part = [random](
                          unsigned shift, unsigned below) { return static_cast<unsigned>(random >> shift) % below; };
    add(std::snprintf(text, sizeof text, "%zu", row + 1));
    add(std::snprintf(text, sizeof text, "Customer %07u", part(3, 100'000'000)));
    add(std::snprintf(text, sizeof text, "%d", static_cast<int>(part(7, 60'000)) - 30'000));
    add(std::snprintf(text, sizeof text, "%u.%02u00", part(11, 5'000), part(13, 100)));
    add(std::snprintf(text, sizeof text, "%.17g", part(5, 1'000'000'000) / 977.0));
    add(std::snprintf(text, sizeof text, "%u Harbour Road, %05u", part(17, 9'000), part(19, 90'000)));
    add(std::snprintf(text, sizeof text, "%.8g", part(23, 100'000) / 64.0));
    add(std::snprintf(text, sizeof text, "%u.%03u", part(29, 1'000'000), part(31, 1'000)));
    add(std::snprintf(text, sizeof text, "Order %u of %u, sent", part(2, 1'000'000), part(9, 1'000'000)));
    rows.endRow();
}

std::unique_ptr<TAdmMDBFile> makeModel(std::size_t rows)
{
    auto table = std::make_unique<TAdmMDBTable>();
    table->setName("Orders");
    TAdmMDBTable::Columns columns;
    for (const auto& kind : columnKinds) {
        columns.push_back(std::make_unique<TAdmMDBColumn>());
        columns.back()->setName(kind.name);
        columns.back()->setDataType(kind.dataType);
    }
    table->setColumns(std::move(columns));
    auto store = table->emptyRows();
    RowGroupBuilder builder(store.kinds());
    for (std::size_t row = 0; row < rows; ++row) {
        addRow(builder, row);
        if (builder.isFull()) store.append(builder.take());
    }
    store.append(builder.take());
    table->setRows(std::move(store));
    auto file = std::make_unique<TAdmMDBFile>();
    file->setFullPath("/nowhere/Shop.mdb");
    TAdmMDBFile::Tables tables;
    tables.push_back(std::move(table));
    file->setTables(std::move(tables));
    file->setActive(true);
    return file;
}

void exportWorkbook(const TAdmMDBFile& file, const std::string& path)
{
    ExportOptions options;
    options.fileType = ExportFileType::XLS;
    options.isSingleFile = true;
    options.path = path;
    options.includeColumnHeader = false;
    StandardErrorLog systemLog;
    const std::atomic<bool> stop = false;
    const std::vector<ExportEntry> tables = {{true, "Orders", ""}};
    if (!runExport(file, tables, options, stop, {[](std::size_t) {}, systemLog}).isDone()) std::exit(1);
}

std::string contentOf(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writePlainly(std::string_view bytes, const std::string& path)
{
    constexpr std::size_t blockSize = 1 << 20;
    const auto descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    while (!bytes.empty()) {
        const auto written = write(descriptor, bytes.data(), std::min(blockSize, bytes.size()));
        if (written <= 0) std::exit(1);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    close(descriptor);
}

std::size_t statusBytes(std::string_view field)
{
    std::ifstream stream("/proc/self/status");
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with(field)) return std::strtoull(line.c_str() + field.size() + 1, nullptr, 10) * 1024;
    return 0;
}

// Peak memory of an export beyond what the process holds before it, in bytes. In a child, so that nothing freed earlier
// is used again.
std::size_t peakBeside(const TAdmMDBFile& file, const std::string& path)
{
    int ends[2];
    if (pipe(ends) != 0) std::exit(1);
    const auto child = fork();
    if (child == 0) {
        const auto before = statusBytes("VmRSS");
        exportWorkbook(file, path);
        const auto peak = statusBytes("VmHWM") - before;
        _exit(write(ends[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
    }
    std::size_t peak = 0;
    if (read(ends[0], &peak, sizeof peak) != sizeof peak) std::exit(1);
    waitpid(child, nullptr, 0);
    close(ends[0]);
    close(ends[1]);
    return peak;
}

void writeSlice(const RowStore& rows, const std::string& path)
{
    std::ofstream stream(path, std::ios::binary);
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        for (std::size_t column = 0; column < columnCount; ++column)
            stream << rows.text(row, column) << (column + 1 < columnCount ? '\t' : '\n');
}

// Cells a second of processor time of xlwt over the slice, reading it not counted; 0 when it is not installed.
double peerSpeed(const std::string& slicePath, const std::string& outPath)
{
    constexpr const char* script = R"(
import sys, time, xlwt
text = (1, 5, 8)
rows = [[v if c in text else float(v) for c, v in enumerate(line.rstrip('\n').split('\t'))] for line in open(sys.argv[1])]
start = time.process_time()
book = xlwt.Workbook()
sheet = book.add_sheet('Orders')
for r, row in enumerate(rows):
    for c, value in enumerate(row):
        sheet.write(r, c, value)
book.save(sys.argv[2])
print(len(rows) * len(rows[0]) / (time.process_time() - start))
)";
    const auto scriptPath = slicePath + ".py";
    std::ofstream(scriptPath) << script;
    const auto command = "/usr/bin/python3 '" + scriptPath + "' '" + slicePath + "' '" + outPath + "'";
    char answer[64] = "0";
    if (auto* pipe = popen(command.c_str(), "r")) {
        if (std::fgets(answer, sizeof answer, pipe) == nullptr) answer[0] = '0';
        pclose(pipe);
    }
    return std::strtod(answer, nullptr);
}

// Elapsed time, and processor time, which tells more on a machine that does other things too. In seconds.
struct Times {
    std::vector<double> elapsed;
    std::vector<double> processor;

    template <typename Work> void add(Work work)
    {
        const auto start = std::clock();
        elapsed.push_back(bench::seconds(work));
        processor.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
};

void printComparison(const char* clock, std::vector<double> exports, std::vector<double> writes, double size)
{
    constexpr auto cells = static_cast<double>(rowCount * columnCount);
    const auto exportTime = bench::median(std::move(exports));
    const auto writeTime = bench::median(std::move(writes));
    std::printf("%-10s plain write() %6.3f s, export %6.3f s: %.1f x plain write(), %.2f M cells/s, %.0f MB/s\n", clock,
        writeTime, exportTime, exportTime / writeTime, cells / exportTime / 1e6, size / exportTime / 1e6);
}

} // namespace

int main(int argc, char** argv)
{
    const std::filesystem::path parent = argc > 1 ? argv[1] : std::filesystem::temp_directory_path();
    const int runs = argc > 2 ? std::atoi(argv[2]) : 5;
    const auto folder = parent / ("bench-excel-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const auto path = (folder / "Orders.xls").string();
    const auto plainPath = (folder / "plain").string();

    const auto file = makeModel(rowCount);
    const auto peak = peakBeside(*file, path);
    const auto bytes = contentOf(path);
    const auto size = static_cast<double>(bytes.size());
    Times exports;
    Times writes;
    // In turn, so that both meet the same machine.
    for (int i = 0; i < runs; ++i) {
        std::filesystem::remove(path);
        exports.add([&] { exportWorkbook(*file, path); });
        std::filesystem::remove(plainPath);
        writes.add([&] { writePlainly(bytes, plainPath); });
    }
    std::printf("workbook of %.1f MB; peak memory beside the model %.1f MB, %.2f of the file\n", size / 1e6,
        static_cast<double>(peak) / 1e6, static_cast<double>(peak) / size);
    printComparison("elapsed", exports.elapsed, writes.elapsed, size);
    printComparison("processor", exports.processor, writes.processor, size);

    const auto slicePath = (folder / "slice.tsv").string();
    writeSlice(makeModel(sliceRows)->tables()[0]->rows(), slicePath);
    const auto peer = peerSpeed(slicePath, plainPath);
    if (peer > 0)
        std::printf("processor  python3-xlwt on %zu rows %.3f M cells/s; the export has %.1f x that\n", sliceRows,
            peer / 1e6, static_cast<double>(rowCount * columnCount) / bench::median(exports.processor) / peer);
    std::filesystem::remove_all(folder);
    return 0;
}

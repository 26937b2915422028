// SPDX-License-Identifier: MIT
#include "samples/DatabaseWriter.h"
#include "samples/DemoDatabase.h"
#include "support/ProgramRun.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>

// Whole files, exported in the exact style by the program itself: what Python's readers find in the files of each
// format is the same, and what mdb-export shows of the file. exact-cells.py compares; here are the files.
namespace vellumo::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* python = "/usr/bin/python3"; // Debian's, which has Debian's packages

CommandResult run(std::vector<std::string> command) { return RunningProgram(std::move(command)).wait(); }

// Numbers and dates at the ends of what their types hold, and texts with what formats treat in a way of their own.
samples::DatabaseDescription extremes()
{
    using namespace samples;
    using Type = samples::ColumnType;
    DatabaseDescription database;
    auto& table = database.tables.emplace_back();
    table.name = "Extremes";
    table.columns = {{.name = "Double", .type = Type::Double}, {.name = "Single", .type = Type::Single},
        {.name = "Money", .type = Type::Currency}, {.name = "When", .type = Type::DateTime}, {.name = "a b_x0041_;\"c"},
        {.name = "Number", .type = Type::Numeric, .precision = 28, .scale = 3}};
    const auto day = [](int year, double fraction) { return Date{dateOf(year, 3, 1).days + fraction}; };
    table.rows = rowsOf(std::vector<std::vector<Value>>{
        {-1.0552163342331236e-305, 1e-45F, Currency{-1}, day(2014, 0.123456), std::string("a\r\nb\rc\n"),
            numericOf(-1)},
        {5e-324, 3.4028235e38F, Currency{INT64_MAX}, day(1900, 0.5), std::string("\"q\";'\t "), numericOf(1'000'000)},
        {-9.87e307, 16777216.0F, Currency{10'000}, day(9999, 0), std::string("=1+1"), numericOf(0)},
        {0.1 + 0.2, 0.1F, Currency{0}, Date{-657434.25}, std::string("_x000D_<&>\uFFFD"), numericOf(999)},
        {-1e-290, -0.5F, Currency{INT64_MIN}, Date{0.25}, std::string("  "), numericOf(INT64_MAX)}, {}});
    return database;
}

struct Source {
    std::string path;
    std::vector<std::string> options;
};

std::vector<Source> corpus(const TempFolder& folder)
{
    std::vector<Source> sources;
    std::error_code error;
    folder.write("password", "Test123");
    for (const auto& entry : fs::directory_iterator(VELLUMO_SOURCE_DIR "/../shared/corpus", error)) {
        Source source{entry.path(), {"--newer-formats"}};
        if (entry.path().filename().string().starts_with("encrypted"))
            source.options.insert(source.options.end(), {"--password-file", folder.path("password")});
        if (entry.path().extension() != ".md") sources.push_back(std::move(source));
    }
    return sources;
}

TEST(ExactCells, AreTheSameForEveryReader)
{
    if (run({python, "-c", "import openpyxl, xlrd"}).status != 0) GTEST_SKIP() << "openpyxl or xlrd is not installed";
    if (run({python, "-c", "import pandas"}).status != 0) std::puts("pandas is not installed: a witness less");
    const TempFolder folder;
    auto sources = corpus(folder);
    for (const auto& [name, database] : {std::pair("extremes", extremes()), {"demo", samples::demoDatabase()}}) {
        sources.push_back({folder.path(std::string(name) + ".mdb"), {}});
        ASSERT_TRUE(samples::writeDatabase(database, sources.back().path).ok());
    }
    for (const auto& [path, options] : sources) {
        const TempFolder out;
        std::vector<std::string> command = {python, "-X", "utf8", VELLUMO_SOURCE_DIR "/tests/cli/exact-cells.py",
            VELLUMO_BIN_DIR "/vellumo-cli", path, out.path()};
        command.insert(command.end(), options.begin(), options.end());
        const auto result = run(command);
        EXPECT_EQ(result.err, "") << path;
        EXPECT_TRUE(result.out.ends_with(" cells, 0 differences\n")) << path << '\n' << result.out;
        EXPECT_EQ(result.out.starts_with("0 cells"),
            fs::path(path).filename() == "empty-jet4.mdb" || fs::path(path).filename() == "adox-jet4.mdb"
                || fs::path(path).filename() == "queries-jet4.mdb");
    }
}

} // namespace
} // namespace vellumo::test

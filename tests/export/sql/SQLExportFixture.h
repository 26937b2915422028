#pragma once

#include "support/ExportRun.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace vellumo::test {

namespace fs = std::filesystem;

inline std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

// The disk is full once a file has this many bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
        : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_old{};
    void (*m_oldHandler)(int);
};

// Two related tables with a column of most types.
inline std::unique_ptr<TAdmMDBFile> makeShop()
{
    auto customers = makeTable("Customers",
        {{"ID", "Long Integer", true}, {"Name", "Text", false, "NO", 50, "It's \\ it"}, {"Active", "Boolean"},
            {"Since", "DateTime"}, {"Balance", "Currency", false, "YES"}, {"Key", "Replication ID"}},
        {{"1", "O'Hara\\x", "1", "05/03/2014 21:07:00", "1234.5000", "{12345678-ABCD-EF01-2345-67890ABCDEF0}"},
            {"2", null, "0", null, null, null}});
    setIndices(
        *customers, {{"Name", {"Name"}, true}, {"orders", {"-Since", "Name"}}, {"PrimaryKey", {"ID"}, true, true}});
    auto orders = makeTable("Orders",
        {{"ID", "Long Integer", true}, {"Line", "Integer", true}, {"Customer", "Long Integer"},
            {"Note", "Memo/Hyperlink"}, {"Pic", "OLE"}, {"Ratio", "Double"}},
        {{"10", "1", "1", "two\nlines", makeBlob(std::string_view("\0\xFF", 2), "bin"), "1.5"},
            {"10", "2", null, null, null, null}},
        1);
    setIndices(*orders, {{"Name", {"Note"}}, {"PrimaryKey", {"ID", "Line"}, true, true}});
    auto file = makeFile("/nowhere/shop.mdb", std::move(customers), std::move(orders));
    setRelations(*file,
        {{"CustomersOrders", "Orders", "Customers", {{"Customer", "ID"}}, true, false},
            {"Lost", "Orders", "Customers", {{"NoSuchColumn", "ID"}}}});
    return file;
}

// Runs SQL exports into a folder of their own.
class SQLExportFixture : public testing::Test {
protected:
    SQLExportFixture()
    {
        m_options.isSingleFile = true;
        m_options.path = m_folder / "out.sql";
    }

    // Exports all tables of the file. The run is stopped when the progress report with number `m_stopAt` arrives.
    ExportOutcome runExport(ExportWriter writer, const TAdmMDBFile& file)
    {
        ExportOutcome report;
        std::vector<ExportEntry> entries;
        for (const auto& table : file.tables())
            entries.push_back(ExportEntry::exportEntryWithTableName(table->name(), ExportFileType::SQL));
        ExportJob job(file, entries, m_options, m_terminate, m_mainThread, m_systemLog, [&](std::size_t index) {
            if (report.progress.size() == m_stopAt) m_terminate = true;
            report.progress.push_back(index);
        });
        writer(job);
        report.log = job.msgLog();
        report.successTableCount = job.successTableCount();
        return report;
    }
    [[nodiscard]] std::vector<std::string> filesInFolder() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(m_folder))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    TempFolder m_tempFolder;
    fs::path m_folder{m_tempFolder.path()};
    ExportOptions m_options;
    std::size_t m_stopAt = static_cast<std::size_t>(-1);
    std::atomic<bool> m_terminate = false;
    DirectMainThread m_mainThread;
    FakeSystemLog m_systemLog;
};

} // namespace vellumo::test

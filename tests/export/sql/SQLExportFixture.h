// SPDX-License-Identifier: MIT
#pragma once

#include "support/ExportRun.h"
#include "support/FileSizeLimit.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo::test {

namespace fs = std::filesystem;

inline std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

// Two related tables with a column of most types.
inline std::unique_ptr<TAdmMDBFile> makeShop()
{
    auto customers = makeTable("Customers",
        {{"ID", "Long Integer", true}, {"Name", "Text", false, false, 50, "It's \\ it"}, {"Active", "Boolean"},
            {"Since", "DateTime"}, {"Balance", "Currency", false, true}, {"Key", "Replication ID"}},
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
        m_options.fileType = ExportFileType::SQL;
        m_options.isSingleFile = true;
        m_options.path = m_folder / "out.sql";
    }

    // Exports all tables of the file. The run is stopped when the progress report with number `m_stopAt` arrives.
    ExportOutcome runExport(ExportWriter writer, const TAdmMDBFile& file)
    {
        return runWriter(writer, file, m_options, m_stopAt, {}, &m_terminate);
    }
    [[nodiscard]] std::vector<std::string> filesInFolder() const { return m_tempFolder.names(); }

    TempFolder m_tempFolder;
    fs::path m_folder{m_tempFolder.path()};
    ExportOptions m_options;
    int m_stopAt = -1;
    std::atomic<bool> m_terminate = false;
};

} // namespace vellumo::test

// SPDX-License-Identifier: MIT
#pragma once

#include "jet/ComplexColumns.h"
#include "model/TableRowsLoader.h"

#include <map>
#include <vector>

namespace vellumo {

// Reads the values of complex columns, which lie in hidden tables, so that the cells can be made of them.
class ComplexColumnsLoader {
public:
    // All outlive the loader. `catalog`: that of the database.
    ComplexColumnsLoader(jet::Database& database, TableRowsLoader& rows, const std::vector<jet::CatalogEntry>& catalog);

    // Whether the entry is a table of values that a column leads to.
    [[nodiscard]] bool isValueTable(const jet::CatalogEntry& entry) const;
    // The column of the table that has its values in the table of the entry; null when that is none of it.
    [[nodiscard]] const jet::ColumnDef* columnOf(const jet::TableDef& table, const jet::CatalogEntry& entry) const;
    // Tells the table's columns of several values what kind of values they have. For the definition of every table,
    // before its rows are read or its columns shown.
    void mark(jet::TableDef& table) const;
    // Reads the values of all these columns and puts them into the definition, with the properties of their lookups;
    // what cannot be read of them is told as damage of the columns. A column whose values are not to be had stays
    // without. False when stopped.
    [[nodiscard]] bool readValues(
        jet::TableDef& table, DamageReport& damage, const TableRowsLoader::Observer& observer);
    // Tells what values no cell of the table, which has been read, has laid claim to.
    static void tellUnclaimed(const jet::TableDef& table, DamageReport& damage);

private:
    [[nodiscard]] const jet::ComplexColumn* find(const jet::TableDef& table, const jet::ColumnDef& column) const;
    // What a table of values gave.
    struct Read {
        const jet::ComplexColumn* owner = nullptr; // of m_columns
        std::shared_ptr<const jet::ValueGroups> groups;
        jet::TableDef values;
    };
    [[nodiscard]] bool readValues(jet::ColumnDef& column, const jet::TableDef& owner, DamageReport& damage,
        const TableRowsLoader::Observer& observer);
    [[nodiscard]] bool readTable(const jet::ComplexColumn& known, const jet::ColumnDef& column, Read& read,
        DamageReport& damage, const TableRowsLoader::Observer& observer);

    jet::Database& m_database;
    TableRowsLoader& m_rows;
    const std::vector<jet::CatalogEntry>& m_catalog;
    std::vector<jet::ComplexColumn> m_columns;
    std::map<std::uint32_t, Read> m_read; // by catalogue id
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Description.h"

#include <cstdint>
#include <vector>

// The tables that describe the others. Their definitions lie at fixed pages.
namespace vellumo::samples {

constexpr std::uint32_t objectsPage = 2;
constexpr std::uint32_t acesPage = 3;
constexpr std::uint32_t queriesPage = 4;
constexpr std::uint32_t relationshipsPage = 5;
constexpr std::uint32_t firstTablePage = 6; // the others follow in the order of the description

// A row of MSysObjects.
struct CatalogRow {
    std::uint32_t id = 0; // of a table: its definition page
    std::uint32_t parentId = 0;
    std::string name;
    int type = 1;
    std::uint32_t flags = 0;
    Bytes properties;       // empty = none
    std::string database{}; // these as in CatalogEntry
    std::string connect{};
    std::string foreignName{};
};

// MSysObjects: containers and system tables, then the given rows.
[[nodiscard]] TableDescription objectsTable(JetVersion version, Date created, const std::vector<CatalogRow>& rows);
[[nodiscard]] TableDescription acesTable(JetVersion version);
[[nodiscard]] TableDescription queriesTable(const DatabaseDescription& description);
[[nodiscard]] TableDescription relationshipsTable(
    JetVersion version, const std::vector<RelationDescription>& relations);

// A column of several values: where its values are. Tables are named by their definition pages.
struct ComplexColumnEntry {
    std::string column;
    std::uint32_t templateTable = 0; // which stands for the kind of values
    std::uint32_t valueTable = 0;
    std::uint32_t table = 0;
};
// Newer files only. The number of a column is its place in the list, from 1.
[[nodiscard]] TableDescription complexColumnsTable(const std::vector<ComplexColumnEntry>& columns);

// The rows of the description's tables (`tablePages`: their definition pages), relations and other entries.
// nullopt when a property cannot be represented; `failedTable` is then the table's name.
[[nodiscard]] std::optional<std::vector<CatalogRow>> catalogRows(
    const DatabaseDescription& description, const std::vector<std::uint32_t>& tablePages, std::string& failedTable);

} // namespace vellumo::samples

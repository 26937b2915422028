// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

// The texts of the status bar.
namespace vellumo {

// "1 file", "3 files".
[[nodiscard]] std::string statusForNoSelection(std::size_t fileCount);
// "1 of 3 files", "1 of 1 file, contains 2 tables". `tableCount`: nullopt while the file is not open. The texts count
// from "1 of" even where a filter shows none.
[[nodiscard]] std::string statusForFile(std::size_t shownFileCount, std::optional<std::size_t> tableCount);
// "1 of 3 tables, contains 1 record".
[[nodiscard]] std::string statusForTable(std::size_t shownTableCount, std::size_t recordCount);
// "5 records", "Record 2 of 5" (`firstSelected` counts from 0), "3 of 5 records".
[[nodiscard]] std::string statusForRecords(
    std::size_t recordCount, std::size_t selectedCount, std::size_t firstSelected);

} // namespace vellumo

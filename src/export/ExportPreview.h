// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportOptions.h"

namespace vellumo {

class TAdmMDBFile;

// How the output of a table begins.
struct ExportPreview {
    // Of a text format its first lines, in UTF-8 whatever the encoding.
    std::string text = {};

    // Of another one what its target has then: columns, and of the first rows a value for each, long ones cut.
    struct Column {
        std::string name;
        std::string kind; // as a database declares it; of a sheet the kinds of its cells (localised), "" for none
    };
    std::vector<Column> columns = {};
    std::vector<std::vector<std::optional<std::string>>> rows = {}; // nullopt: a database's null

    // Why there is none, and what the target does not hold as the file does; lines (localised).
    std::vector<std::string> remarks = {};
};

// Made by the writer itself: it exports the first rows to a temporary file, and what is told is what stands there.
// `entry.tableName` is no table of the file: nothing. Quick for a table of any size.
[[nodiscard]] ExportPreview exportPreview(
    const TAdmMDBFile& file, const ExportEntry& entry, const ExportOptions& options);

} // namespace vellumo

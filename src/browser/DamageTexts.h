#pragma once

#include "browser/TreeItem.h"
#include "platform/Alerts.h"

#include <string>

// What the window says of files that are damaged, and of those that it cannot open. All localised.
namespace vellumo {

// What was lost of a file or of a table, in one line; "" where nothing was, and while the file is not open.
[[nodiscard]] std::string damageOf(const TAdmMDBFile& file);
[[nodiscard]] std::string damageOf(const TAdmMDBTable& table);

// The text of the bar above the grid while the item is selected; "" for no bar. It tells of the whole file; what
// concerns a selected table comes first.
[[nodiscard]] std::string damageBarText(const TreeItem& item);

// What came of looking for lost rows in the file, which is open now.
[[nodiscard]] Alert salvageResult(const TAdmMDBFile& file, Salvage salvage);

// That the file cannot be opened, why, and what to do.
[[nodiscard]] Alert openFailureAlert(const TAdmMDBFile& file, Alert::Style style);

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vellumo {

// The database files that a path without an extension ("/home/ann/Sales", "/home/ann/Sales.") can mean: those of that
// name beside it, in the order of their names. None for a path with an extension, and for one that names a file.
[[nodiscard]] std::vector<std::string> databaseFilesMeantBy(const std::string& path);

// The one that a path without an extension means; the path as it is when there is no such file, or more than one.
[[nodiscard]] std::string completedDatabasePath(const std::string& path);

} // namespace vellumo

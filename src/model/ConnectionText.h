// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// Connection strings, "ODBC;DSN=Sales;UID=ann;PWD=...", as files keep them for linked tables and queries. Whatever is
// shown or written of one has "***" for each password.
namespace vellumo {

// A whole connection string.
[[nodiscard]] std::string maskedConnection(std::string_view connection);

// SQL in which connection strings may stand, in quotes or brackets.
[[nodiscard]] std::string withoutPasswords(std::string_view sql);

} // namespace vellumo

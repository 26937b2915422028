// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace vellumo {

// The password of an encrypted file. It never stands on the command line, where other users of the machine can read it,
// and is never printed.
struct PasswordAnswer {
    std::optional<std::string> password{}; // UTF-8; nullopt: none was given
    std::string complaint{};               // localised; "" unless it could not be read
};
// The first line of the file, "-" being standard input, where a terminal does not show what is typed; with "" as the
// path that of VELLUMO_PASSWORD in the environment, if it is there. The variable is taken out of the environment.
[[nodiscard]] PasswordAnswer readPassword(const std::string& path);

} // namespace vellumo

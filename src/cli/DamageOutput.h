// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandLine.h"

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>

namespace vellumo {

class TAdmMDBFile;

// What was lost of a file, for each kind of output. `tables`: only what concerns these tables and the file as a whole;
// empty: everything.

// "\nDamage:\n" and an indented line for each; "" for a sound file. Nothing in it is obeyed by a terminal.
[[nodiscard]] std::string damageSection(const TAdmMDBFile& file, std::span<const std::string> tables = {});

// A list, with null for what is not known.
[[nodiscard]] nlohmann::ordered_json damageJson(const TAdmMDBFile& file, std::span<const std::string> tables = {});

// Lines on standard error.
void printDamage(const TAdmMDBFile& file, std::span<const std::string> tables = {});

// The status of a command that has done all that it could with the file.
[[nodiscard]] ExitStatus doneWith(const TAdmMDBFile& file);

} // namespace vellumo

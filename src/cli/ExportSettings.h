// SPDX-License-Identifier: MIT
#pragma once

#include "cli/ConsoleFile.h"
#include "cli/RowChoice.h"
#include "export/ExportFormat.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vellumo {

// What the command line says about an export. Texts that were not given are absent; those that stand for something are
// the name of a format, a delimiter or a dialect.
struct ExportSettings {
    FileArguments file;
    std::string format;
    std::string to;                  // "-": standard output
    std::vector<std::string> tables; // empty: all
    RowChoice choice;                // only with one table
    bool isSingleFile = false;
    bool lookupTexts = false;
    std::optional<std::string> fieldDelimiter;
    std::optional<std::string> recordDelimiter;
    std::optional<std::string> decimalSymbol;
    std::optional<std::string> encoding;
    std::optional<std::string> dialect;
    std::optional<std::string> schema;
    std::optional<std::string> objects;
    std::map<ExportOption, bool> switched; // the switches that were given

    [[nodiscard]] bool isToStandardOutput() const { return to == "-"; }
};

// An argument that switches an option on or off.
struct ExportSwitch {
    ExportOption option;
    const char* argument;
    const char* helpKey; // a key of the message table
    bool ExportOptions::*value;
    bool isOn; // what the value becomes
};
// Those of text files come first, textSwitchCount in number.
inline constexpr std::size_t textSwitchCount = 4;
[[nodiscard]] std::span<const ExportSwitch> exportSwitches();

// Why the settings make no sense (localised): an option is given that the format does not have, or a value that it does
// not take. nullopt: they do.
[[nodiscard]] std::optional<std::string> complaintAbout(const ExportSettings& settings);

// What the settings ask for. There is no complaint about them.
[[nodiscard]] ExportOptions optionsFrom(const ExportSettings& settings);

} // namespace vellumo

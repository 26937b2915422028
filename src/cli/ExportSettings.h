#pragma once

#include "cli/ConsoleFile.h"
#include "export/ExportControls.h"

#include <optional>
#include <string>
#include <vector>

namespace vellumo {

class ExportWizard;

// What the command line says about an export. Texts that were not given are absent.
struct ExportSettings {
    FileArguments file;
    std::string format;
    std::string to;
    std::vector<std::string> tables; // empty: all
    bool isSingleFile = false;
    bool noHeader = false;
    std::optional<std::string> fieldDelimiter;
    std::optional<std::string> recordDelimiter;
    std::optional<std::string> decimalSymbol;
    std::optional<std::string> encoding;
    std::optional<std::string> dialect;
    std::optional<std::string> schema;
    bool noStructure = false;
    bool noDropTable = false;
    bool noForeignKeys = false;
    bool noIndexes = false;
    bool noData = false;
};

// The values that an option takes, each with its tag in the dialog.
struct NamedTag {
    const char* name;
    std::uint32_t tag;
};
inline constexpr NamedTag formatNames[] = {{"csv", 0}, {"txt", 1}, {"xml", 2}, {"xls", 3}, {"sql", 4}, {"sqlite", 5}};
inline constexpr NamedTag fieldDelimiterNames[] = {{"comma", 2}, {"semicolon", 1}, {"tab", 0}, {"space", 3}};
inline constexpr NamedTag recordDelimiterNames[] = {{"lf", 0}, {"cr", 1}, {"crlf", 2}};
inline constexpr NamedTag dialectNames[] = {
    {"mysql", 1}, {"postgresql", 2}, {"oracle", 3}, {"sqlite", 4}, {"sqlserver", 5}};

// The type that `format` names; it is one of formatNames.
[[nodiscard]] ExportFileType exportFileType(const ExportSettings& settings);

// Why the settings make no sense (localised): an option is given that the dialog for the format does not show, or a
// value that it does not offer. nullopt: they do.
[[nodiscard]] std::optional<std::string> complaintAbout(const ExportSettings& settings);

// Enters the settings into the wizard as a user would. There is no complaint about them.
void enterSettings(const ExportSettings& settings, ExportWizard& wizard);

} // namespace vellumo

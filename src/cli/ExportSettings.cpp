#include "cli/ExportSettings.h"

#include "export/ExportWizard.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/TextEncoding.h"

#include <algorithm>
#include <span>

namespace vellumo {

namespace {

using Complaint = std::optional<std::string>;

// `name` is one of the names.
std::uint32_t tagOf(std::span<const NamedTag> names, std::string_view name)
{
    return std::ranges::find(names, name, &NamedTag::name)->tag;
}

std::string doesNotApply(std::string_view option, std::string_view to)
{
    return localizedFormat("%@ does not apply to %@.", {option, to});
}

Complaint complaintAboutOptions(const ExportSettings& settings, const ExportControls& controls)
{
    const struct {
        bool isGiven;
        bool isShown;
        const char* option;
    } options[] = {
        {settings.isSingleFile, hasSingleFileMode(exportFileType(settings)), "--single-file"},
        {settings.noHeader, controls.includeColumnHeaderCheckBox.isVisible, "--no-header"},
        {settings.fieldDelimiter.has_value(), controls.fieldDelimiterPopup.isVisible, "--field-delimiter"},
        {settings.recordDelimiter.has_value(), controls.recordDelimiterPopup.isVisible, "--record-delimiter"},
        {settings.decimalSymbol.has_value(), controls.decimalSymbolTextField.isVisible, "--decimal-symbol"},
        {settings.encoding.has_value(), controls.encodingPopup.isVisible, "--encoding"},
        {settings.dialect.has_value(), controls.sqlFormatPopup.isVisible, "--dialect"},
        {settings.schema.has_value(), controls.schemaNameTextField.isVisible, "--schema"},
        {settings.noStructure, controls.exportStructureCheckBox.isVisible, "--no-structure"},
        {settings.noDropTable, controls.includeDropTableCheckBox.isVisible, "--no-drop-table"},
        {settings.noForeignKeys, controls.includeForeignKeyCheckBox.isVisible, "--no-foreign-keys"},
        {settings.noIndexes, controls.includeIndexCheckBox.isVisible, "--no-indexes"},
        {settings.noData, controls.exportDataCheckBox.isVisible, "--no-data"},
    };
    for (const auto& option : options)
        if (option.isGiven && !option.isShown) return doesNotApply(option.option, settings.format);
    return std::nullopt;
}

Complaint complaintAboutValues(const ExportSettings& settings, const ExportControls& controls)
{
    if (settings.to.empty()) return localized("--to must not be empty.");
    if (settings.fieldDelimiter) {
        const auto tag = tagOf(fieldDelimiterNames, *settings.fieldDelimiter);
        if (std::ranges::find(controls.fieldDelimiterPopup.items, tag, &PopupItem::tag)
            == controls.fieldDelimiterPopup.items.end())
            return doesNotApply(format("--field-delimiter %@", {*settings.fieldDelimiter}), settings.format);
    }
    if (settings.encoding && !findTextEncoding(*settings.encoding))
        return localizedFormat("Unknown encoding: %@", {*settings.encoding});
    for (const auto& text : {settings.decimalSymbol, settings.schema})
        if (text && !isWellFormedUTF8(*text)) return localized("An argument is not valid UTF-8.");
    const auto dialect = settings.dialect.value_or("mysql");
    if (settings.schema && !takesSchemaName(static_cast<SQLDialect>(tagOf(dialectNames, dialect))))
        return doesNotApply("--schema", dialect);
    if (settings.noStructure && settings.noData) return localized("Neither structure nor data is to be exported.");
    return std::nullopt;
}

} // namespace

ExportFileType exportFileType(const ExportSettings& settings)
{
    return static_cast<ExportFileType>(tagOf(formatNames, settings.format));
}

Complaint complaintAbout(const ExportSettings& settings)
{
    const auto controls = controlsForType(exportFileType(settings), settings.tables.empty());
    auto complaint = complaintAboutOptions(settings, controls);
    return complaint ? complaint : complaintAboutValues(settings, controls);
}

void enterSettings(const ExportSettings& settings, ExportWizard& wizard)
{
    auto& controls = wizard.controls();
    controls.exportSingleFileCheckBox.value =
        settings.isSingleFile || wizard.exportFileType() == ExportFileType::SQLite;
    controls.exportPathTextField.value = settings.to;
    if (settings.noHeader) controls.includeColumnHeaderCheckBox.value = false;
    if (settings.fieldDelimiter) {
        controls.fieldDelimiterPopup.selectedTag = tagOf(fieldDelimiterNames, *settings.fieldDelimiter);
        wizard.changeFieldDelimiter(); // may choose a decimal symbol
    }
    if (settings.recordDelimiter)
        controls.recordDelimiterPopup.selectedTag = tagOf(recordDelimiterNames, *settings.recordDelimiter);
    if (settings.decimalSymbol) controls.decimalSymbolTextField.value = *settings.decimalSymbol;
    if (settings.encoding)
        controls.encodingPopup.selectedTag = findTextEncoding(*settings.encoding).value_or(encodingUTF8);
    if (settings.dialect) {
        controls.sqlFormatPopup.selectedTag = tagOf(dialectNames, *settings.dialect);
        wizard.changeSQLFormat();
    }
    controls.schemaNameTextField.value = settings.schema.value_or("");
    controls.exportStructureCheckBox.value = !settings.noStructure;
    controls.includeDropTableCheckBox.value = !settings.noDropTable;
    controls.includeForeignKeyCheckBox.value = !settings.noForeignKeys;
    controls.includeIndexCheckBox.value = !settings.noIndexes;
    controls.exportDataCheckBox.value = !settings.noData;
    wizard.exportTableStructure();
}

} // namespace vellumo

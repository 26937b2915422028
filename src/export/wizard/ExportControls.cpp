// SPDX-License-Identifier: MIT
#include "export/wizard/ExportControls.h"

#include "export/sql/SQLDialectFacts.h"
#include "text/Messages.h"
#include "text/TextEncoding.h"

#include <algorithm>

namespace vellumo {

namespace {

template <typename Tag> PopupItem item(std::string title, Tag tag)
{
    return {std::move(title), static_cast<std::uint32_t>(tag)};
}

template <typename Tag> Popup popupWith(std::vector<PopupItem> items, Tag selected, bool isVisible)
{
    return {std::move(items), static_cast<std::uint32_t>(selected), isVisible, true};
}

Popup fieldDelimiterPopup(const FormatInfo& format, const ExportOptions& options)
{
    std::vector<PopupItem> items;
    for (const auto& info : fieldDelimiters())
        if (format.offers(info.delimiter)) items.push_back(item(localized(info.titleKey), info.delimiter));
    return popupWith(std::move(items), options.fieldDelimiter, format.has(ExportOption::FieldDelimiter));
}

Popup recordDelimiterPopup(const FormatInfo& format, const ExportOptions& options)
{
    std::vector<PopupItem> items;
    for (const auto& info : recordDelimiters())
        items.push_back(item(localized(info.titleKey), info.delimiter));
    return popupWith(std::move(items), options.recordDelimiter, format.has(ExportOption::RecordDelimiter));
}

Popup encodingPopup(const FormatInfo& format, const ExportOptions& options)
{
    std::vector<EncodingEntry> entries;
    entries.reserve(availableTextEncodings().size());
    for (const auto& encoding : availableTextEncodings())
        entries.push_back(EncodingEntry::encodingEntryWithEncoding(encoding.identifier));
    std::ranges::sort(entries, SortEncoding);
    std::vector<PopupItem> items;
    items.reserve(entries.size());
    for (auto& entry : entries)
        items.push_back({std::move(entry.encodingName), entry.encoding});
    return popupWith(std::move(items), options.encoding, format.has(ExportOption::Encoding));
}

Popup sqlFormatPopup(const FormatInfo& format, const ExportOptions& options)
{
    std::vector<PopupItem> items;
    for (const auto* dialect : sqlDialects())
        items.push_back(item(std::string(dialect->title), dialect->dialect));
    return popupWith(std::move(items), options.sqlDialect, format.has(ExportOption::Dialect));
}

} // namespace

EncodingEntry EncodingEntry::encodingEntryWithEncoding(std::uint32_t encoding)
{
    return {encoding, textEncodingName(encoding)};
}

bool SortEncoding(const EncodingEntry& left, const EncodingEntry& right)
{
    return left.encodingName < right.encodingName;
}

ExportControls controlsForFormat(const FormatInfo& format, bool isWholeFile)
{
    const auto options = defaultOptions(format);
    const auto text = [&](std::string value, ExportOption option) {
        return TextField{std::move(value), format.has(option)};
    };
    const auto box = [&](bool value, ExportOption option) { return CheckBox{value, format.has(option)}; };
    const bool isChoice = format.output == ExportOutput::FileOrFolder;

    ExportControls controls;
    controls.rowsPopup.isVisible = controls.columnsPopup.isVisible = false;
    controls.exportSingleFileCheckBox = {options.isSingleFile || (isChoice && isWholeFile), isChoice};
    controls.exactCheckBox = {options.isExact, format.has(ExportOption::Exact) && !format.isAlwaysExact};
    controls.includeColumnHeaderCheckBox = box(options.includeColumnHeader, ExportOption::Header);
    controls.fieldDelimiterPopup = fieldDelimiterPopup(format, options);
    controls.recordDelimiterPopup = recordDelimiterPopup(format, options);
    controls.decimalSymbolTextField = text(options.decimalSymbol, ExportOption::DecimalSymbol);
    controls.encodingPopup = encodingPopup(format, options);
    controls.byteOrderMarkCheckBox = box(options.hasByteOrderMark, ExportOption::ByteOrderMark);
    controls.guardFormulasCheckBox = box(options.guardsFormulas, ExportOption::GuardFormulas);
    controls.objectsFolderTextField = text(options.objectsFolder, ExportOption::Objects);
    controls.sqlFormatPopup = sqlFormatPopup(format, options);
    controls.schemaNameTextField = text(options.schemaName, ExportOption::Schema);
    controls.exportStructureCheckBox = box(options.exportStructure, ExportOption::Structure);
    controls.includeDropTableCheckBox = box(options.includeDropTable, ExportOption::DropTable);
    controls.includeForeignKeyCheckBox = box(options.includeForeignKeys, ExportOption::ForeignKeys);
    controls.includeIndexCheckBox = box(options.includeIndexes, ExportOption::Indexes);
    controls.exportDataCheckBox = box(options.exportData, ExportOption::Data);
    return controls;
}

void enableForStyle(const FormatInfo& format, ExportControls& controls)
{
    const bool isExact = controls.exactCheckBox.value;
    controls.decimalSymbolTextField.isEnabled = format.has(ExportOption::DecimalSymbol, isExact);
    controls.guardFormulasCheckBox.isEnabled = format.has(ExportOption::GuardFormulas, isExact);
    controls.objectsFolderTextField.isEnabled = format.has(ExportOption::Objects, isExact);
}

void offerShownRows(bool hasSelectedRows, ExportControls& controls)
{
    std::vector<PopupItem> rows = {
        item(localized("All rows"), RowsToExport::All), item(localized("The rows shown"), RowsToExport::Shown)};
    if (hasSelectedRows) rows.push_back(item(localized("The selected rows"), RowsToExport::Selected));
    controls.rowsPopup = popupWith(std::move(rows), RowsToExport::All, true);
    std::vector<PopupItem> columns = {item(localized("All columns"), ColumnsToExport::All),
        item(localized("The columns as shown"), ColumnsToExport::Shown)};
    controls.columnsPopup = popupWith(std::move(columns), ColumnsToExport::All, true);
}

ExportOptions optionsFromControls(ExportFileType type, const ExportControls& controls)
{
    ExportOptions options;
    options.fileType = type;
    options.isSingleFile = controls.exportSingleFileCheckBox.value;
    options.path = controls.exportPathTextField.value;
    options.isExact = controls.exactCheckBox.value;
    options.includeColumnHeader = controls.includeColumnHeaderCheckBox.value;
    options.fieldDelimiter = static_cast<FieldDelimiter>(controls.fieldDelimiterPopup.selectedTag);
    options.recordDelimiter = static_cast<RecordDelimiter>(controls.recordDelimiterPopup.selectedTag);
    options.decimalSymbol = controls.decimalSymbolTextField.value;
    options.encoding = controls.encodingPopup.selectedTag;
    options.hasByteOrderMark = controls.byteOrderMarkCheckBox.value;
    // What was chosen for the one style waits while the other is on.
    options.guardsFormulas = controls.guardFormulasCheckBox.value && controls.guardFormulasCheckBox.isEnabled;
    if (controls.objectsFolderTextField.isEnabled) options.objectsFolder = controls.objectsFolderTextField.value;
    options.sqlDialect = static_cast<SQLDialect>(controls.sqlFormatPopup.selectedTag);
    options.schemaName = controls.schemaNameTextField.value;
    options.exportStructure = controls.exportStructureCheckBox.value;
    options.includeDropTable = controls.includeDropTableCheckBox.value;
    options.includeForeignKeys = controls.includeForeignKeyCheckBox.value;
    options.includeIndexes = controls.includeIndexCheckBox.value;
    options.exportData = controls.exportDataCheckBox.value;
    return options;
}

} // namespace vellumo

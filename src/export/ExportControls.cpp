#include "export/ExportControls.h"

#include "text/Messages.h"
#include "text/TextEncoding.h"

#include <algorithm>

namespace vellumo {

namespace {

template <typename Tag> PopupItem item(std::string title, Tag tag)
{
    return {std::move(title), static_cast<std::uint32_t>(tag)};
}

Popup fieldDelimiterPopup(ExportFileType type)
{
    Popup popup;
    popup.items = {item(localized("Tab"), FieldDelimiter::Tab), item(localized("Semicolon"), FieldDelimiter::Semicolon),
        item(localized("Comma"), FieldDelimiter::Comma), item(localized("Space"), FieldDelimiter::Space)};
    if (type == ExportFileType::CSV) popup.items = {popup.items[1], popup.items[2]};
    popup.selectedTag = static_cast<std::uint32_t>(FieldDelimiter::Comma);
    popup.isVisible = type == ExportFileType::CSV || type == ExportFileType::TXT;
    return popup;
}

Popup recordDelimiterPopup(ExportFileType type)
{
    Popup popup;
    popup.items = {item(localized("LF (Unix)"), RecordDelimiter::LF), item(localized("CR (Mac)"), RecordDelimiter::CR),
        item(localized("CR LF (Windows)"), RecordDelimiter::CRLF)};
    popup.selectedTag = static_cast<std::uint32_t>(RecordDelimiter::LF);
    popup.isVisible = type == ExportFileType::CSV || type == ExportFileType::TXT;
    return popup;
}

Popup encodingPopup(bool isText)
{
    std::vector<EncodingEntry> entries;
    for (const auto& encoding : availableTextEncodings())
        entries.push_back(EncodingEntry::encodingEntryWithEncoding(encoding.identifier));
    std::ranges::sort(entries, SortEncoding);
    Popup popup;
    for (auto& entry : entries)
        popup.items.push_back({std::move(entry.encodingName), entry.encoding});
    popup.selectedTag = encodingUTF8;
    popup.isVisible = isText;
    return popup;
}

Popup sqlFormatPopup(bool isSQL)
{
    Popup popup;
    popup.items = {item("MySQL", SQLDialect::MySQL), item("PostgreSQL", SQLDialect::PostgreSQL),
        item("Oracle", SQLDialect::Oracle), item("SQLite", SQLDialect::SQLite),
        item("SQL Server", SQLDialect::SQLServer)};
    popup.selectedTag = static_cast<std::uint32_t>(SQLDialect::MySQL);
    popup.isVisible = isSQL;
    return popup;
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

bool hasSingleFileMode(ExportFileType type)
{
    return type == ExportFileType::XLS || type == ExportFileType::SQL || type == ExportFileType::SQLite;
}

ExportControls controlsForType(ExportFileType type, bool isWholeFile)
{
    const bool isDelimited = type == ExportFileType::CSV || type == ExportFileType::TXT;
    const bool isText = isDelimited || type == ExportFileType::XML;
    const bool isSQL = type == ExportFileType::SQL;
    const bool isSQLite = type == ExportFileType::SQLite;
    const bool hasHeader = isDelimited || type == ExportFileType::XLS;

    ExportControls controls;
    controls.exportSingleFileCheckBox = {
        isSQLite || (isWholeFile && hasSingleFileMode(type)), hasSingleFileMode(type) && !isSQLite};
    controls.includeColumnHeaderCheckBox = {hasHeader, hasHeader};
    controls.fieldDelimiterPopup = fieldDelimiterPopup(type);
    controls.recordDelimiterPopup = recordDelimiterPopup(type);
    controls.decimalSymbolTextField = {".", isText || isSQL};
    controls.encodingPopup = encodingPopup(isText);
    controls.sqlFormatPopup = sqlFormatPopup(isSQL);
    controls.schemaNameTextField.isVisible = isSQL;
    controls.exportStructureCheckBox = {true, isSQL};
    controls.includeDropTableCheckBox = {true, isSQL};
    controls.includeForeignKeyCheckBox = {true, isSQL || isSQLite};
    controls.includeIndexCheckBox = {true, isSQL || isSQLite};
    controls.exportDataCheckBox = {true, isSQL || isSQLite};
    return controls;
}

ExportOptions optionsFromControls(ExportFileType type, const ExportControls& controls)
{
    ExportOptions options;
    options.fileType = type;
    options.isSingleFile = controls.exportSingleFileCheckBox.value;
    options.path = controls.exportPathTextField.value;
    options.includeColumnHeader = controls.includeColumnHeaderCheckBox.value;
    options.fieldDelimiter = static_cast<FieldDelimiter>(controls.fieldDelimiterPopup.selectedTag);
    options.recordDelimiter = static_cast<RecordDelimiter>(controls.recordDelimiterPopup.selectedTag);
    options.decimalSymbol = controls.decimalSymbolTextField.value;
    options.encoding = controls.encodingPopup.selectedTag;
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

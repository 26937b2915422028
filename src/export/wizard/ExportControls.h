// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportFormat.h"

#include <string>
#include <vector>

namespace vellumo {

// The state of the controls of the export dialog, as a front end shows them and the user changes them.

template <typename Value> struct Control {
    Value value{};
    bool isVisible = true;
    bool isEnabled = true;
};
using CheckBox = Control<bool>;
using TextField = Control<std::string>;

struct PopupItem {
    std::string title; // localised
    std::uint32_t tag = 0;
};

struct Popup {
    std::vector<PopupItem> items;
    std::uint32_t selectedTag = 0;
    bool isVisible = true;
    bool isEnabled = true;
};

// A choice of the encoding popup.
struct EncodingEntry {
    std::uint32_t encoding = 0;
    std::string encodingName; // readable, localised

    [[nodiscard]] static EncodingEntry encodingEntryWithEncoding(std::uint32_t encoding);
};
[[nodiscard]] bool SortEncoding(const EncodingEntry& left, const EncodingEntry& right);

// What of the table that is open in the grid goes out. The numbers are tags of popups.
enum class RowsToExport : std::uint32_t { All = 0, Shown = 1, Selected = 2 };
enum class ColumnsToExport : std::uint32_t { All = 0, Shown = 1 };

struct ExportControls {
    Popup rowsPopup;    // tags: RowsToExport; not visible unless the table is open in the grid
    Popup columnsPopup; // tags: ColumnsToExport; likewise
    CheckBox exportSingleFileCheckBox;
    std::string exportPathLabel; // localised, with the colon
    TextField exportPathTextField;
    bool isFileNameColumnVisible = true; // of the table list
    CheckBox exactCheckBox;
    CheckBox includeColumnHeaderCheckBox;
    Popup fieldDelimiterPopup;  // tags: FieldDelimiter
    Popup recordDelimiterPopup; // tags: RecordDelimiter
    TextField decimalSymbolTextField;
    Popup encodingPopup; // tags: identifiers of text encodings
    CheckBox byteOrderMarkCheckBox;
    CheckBox guardFormulasCheckBox;
    TextField objectsFolderTextField; // "": no files of the objects
    Popup sqlFormatPopup;             // tags: SQLDialect
    TextField schemaNameTextField;
    CheckBox exportStructureCheckBox;
    CheckBox includeDropTableCheckBox;
    CheckBox includeForeignKeyCheckBox;
    CheckBox includeIndexCheckBox;
    CheckBox exportDataCheckBox;
    bool isOkButtonEnabled = false;
};

// The controls as a dialog for this format begins. `isWholeFile`: it is opened for all tables, not for one.
[[nodiscard]] ExportControls controlsForFormat(const FormatInfo& format, bool isWholeFile);

// Enables the options that have a meaning in the style that the controls say.
void enableForStyle(const FormatInfo& format, ExportControls& controls);

// Offers what the grid shows of the table beside all of it.
void offerShownRows(bool hasSelectedRows, ExportControls& controls);

// What the controls say, for an export.
[[nodiscard]] ExportOptions optionsFromControls(ExportFileType type, const ExportControls& controls);

} // namespace vellumo

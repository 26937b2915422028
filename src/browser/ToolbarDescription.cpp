#include "browser/ToolbarDescription.h"

#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

namespace {

using enum ToolbarCommand;

constexpr ToolbarItem items[] = {
    {"navigationBack", messageKey("Back"), messageKey("Show the previous table"), "back_32x32", PreviousTable, 0,
        false},
    {"navigationNext", messageKey("Next"), messageKey("Show the next table"), "forward_32x32", NextTable, 0, false},
    {"open", messageKey("Open"), messageKey("Open MDB files"), "open_folder_32x32", OpenFile, 0, true},
    {"exportCsv", messageKey("Export CSV"), messageKey("Export CSV"), "CSV_32x32", Export, 1, true},
    {"exportTxt", messageKey("Export TXT"), messageKey("Export TXT"), "TXT_32x32", Export, 2, true},
    {"exportXml", messageKey("Export XML"), messageKey("Export XML"), "XML_32x32", Export, 3, true},
    {"exportXls", messageKey("Export XLS"), messageKey("Export XLS"), "XLS_32x32", Export, 4, true},
    {"exportSql", messageKey("Export SQL"), messageKey("Export SQL"), "SQL_32x32", Export, 5, true},
    {"exportSqlite", messageKey("Export SQLite"), messageKey("Export SQLite"), "SQLite_32x32", Export, 6, true},
    {"search", messageKey("Search"), "", "", Search, 0, false},
};

} // namespace

std::string ToolbarItem::label() const { return localized(labelKey); }

// The empty key is never looked up: gettext answers it with the catalogue's header.
std::string ToolbarItem::toolTip() const { return *toolTipKey == '\0' ? std::string() : localized(toolTipKey); }

std::span<const ToolbarItem> toolbarItems() { return items; }

const ToolbarItem* toolbarItem(std::string_view identifier)
{
    for (const auto& item : items)
        if (item.identifier == identifier) return &item;
    return nullptr;
}

int exportTypeByTag(int tag) { return tag >= 1 && tag <= 6 ? tag - 1 : -1; }

ApplicationMenuTitles applicationMenuTitles(std::string_view programName)
{
    return {localizedFormat("About %@", {programName}), localizedFormat("Hide %@", {programName}),
        localizedFormat("Quit %@", {programName})};
}

std::string fullScreenMenuTitle() { return localized("Enter Full Screen"); }

} // namespace vellumo

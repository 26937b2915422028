// SPDX-License-Identifier: MIT
#include "browser/ToolbarDescription.h"

#include "export/ExportFormat.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <vector>

namespace vellumo {

namespace {

using enum ToolbarCommand;

// "exportCsv" with the icon "CSV_32x32".
ToolbarItem exportItem(const FormatInfo& format)
{
    std::string identifier("export");
    identifier += static_cast<char>(format.name.front() - 'a' + 'A');
    identifier += format.name.substr(1);
    return {std::move(identifier), format.commandKey, format.commandKey, std::string(format.title) + "_32x32", Export,
        static_cast<int>(format.type) + 1, true};
}

std::vector<ToolbarItem> makeItems()
{
    std::vector<ToolbarItem> items = {
        {"navigationBack", messageKey("Back"), messageKey("Show the previous table"), "back_32x32", PreviousTable, 0,
            false},
        {"navigationNext", messageKey("Next"), messageKey("Show the next table"), "forward_32x32", NextTable, 0, false},
        {"open", messageKey("Open"), messageKey("Open MDB files"), "open_folder_32x32", OpenFile, 0, true},
    };
    for (const auto& format : exportFormats())
        if (!format.isAlwaysExact) items.push_back(exportItem(format));
    items.push_back({"search", messageKey("Search"), "", "", Search, 0, false});
    return items;
}

} // namespace

std::string ToolbarItem::label() const { return localized(labelKey); }

// The empty key is never looked up: gettext answers it with the catalogue's header.
std::string ToolbarItem::toolTip() const { return *toolTipKey == '\0' ? std::string() : localized(toolTipKey); }

std::span<const ToolbarItem> toolbarItems()
{
    static const auto items = makeItems();
    return items;
}

std::span<const ToolbarItem> exportItems()
{
    static const auto items = [] {
        std::vector<ToolbarItem> made;
        for (const auto& format : exportFormats())
            made.push_back(exportItem(format));
        return made;
    }();
    return items;
}

const ToolbarItem* toolbarItem(std::string_view identifier)
{
    for (const auto& item : toolbarItems())
        if (item.identifier == identifier) return &item;
    return nullptr;
}

int exportTypeByTag(int tag)
{
    return exportFormat(static_cast<ExportFileType>(tag - 1)).writer == nullptr ? -1 : tag - 1;
}

ApplicationMenuTitles applicationMenuTitles(std::string_view programName)
{
    return {localizedFormat("About %@", {programName}), localizedFormat("Hide %@", {programName}),
        localizedFormat("Quit %@", {programName})};
}

std::string fullScreenMenuTitle() { return localized("Enter Full Screen"); }

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

// What the toolbar and the fixed menu items consist of.
namespace vellumo {

enum class ToolbarCommand { PreviousTable, NextTable, OpenFile, Export, Search };

struct ToolbarItem {
    std::string identifier;
    const char* labelKey;   // label and palette label, a key of the message table
    const char* toolTipKey; // empty for none
    std::string iconName;
    ToolbarCommand command;
    int exportTag; // one more than the code of the export type; 0 for what is no export
    bool isSelectable;

    [[nodiscard]] std::string label() const;
    [[nodiscard]] std::string toolTip() const;
};

// In default order; the items that the user may choose from are the same.
[[nodiscard]] std::span<const ToolbarItem> toolbarItems();
// An item an export format, in their order; the toolbar has those that have a classic style.
[[nodiscard]] std::span<const ToolbarItem> exportItems();
// Null for an identifier that no item has.
[[nodiscard]] const ToolbarItem* toolbarItem(std::string_view identifier);

// The code of the export type of a toolbar item's or a menu item's tag; -1 for a tag that belongs to none.
[[nodiscard]] int exportTypeByTag(int tag);

// "About …", "Hide …" and "Quit …" with the program's name.
struct ApplicationMenuTitles {
    std::string about;
    std::string hide;
    std::string quit;
};
[[nodiscard]] ApplicationMenuTitles applicationMenuTitles(std::string_view programName);
[[nodiscard]] std::string fullScreenMenuTitle();

} // namespace vellumo

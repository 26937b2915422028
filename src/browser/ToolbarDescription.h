#pragma once

#include <span>
#include <string>
#include <string_view>

// What the toolbar and the fixed menu items consist of.
namespace vellumo {

enum class ToolbarCommand { PreviousTable, NextTable, OpenFile, Export, Search };

struct ToolbarItem {
    std::string_view identifier;
    const char* labelKey;   // label and palette label, a key of the message table
    const char* toolTipKey; // empty for none
    std::string_view iconName;
    ToolbarCommand command;
    int exportTag; // 1 CSV, 2 TXT, 3 XML, 4 XLS, 5 SQL, 6 SQLite; 0 for what is no export
    bool isSelectable;

    [[nodiscard]] std::string label() const;
    [[nodiscard]] std::string toolTip() const;
};

// In default order; the items that the user may choose from are the same.
[[nodiscard]] std::span<const ToolbarItem> toolbarItems();
// Null for an identifier that no item has.
[[nodiscard]] const ToolbarItem* toolbarItem(std::string_view identifier);

// The export type of a toolbar item's or a menu item's tag: 0 CSV, 1 TXT, 2 XML, 3 XLS, 4 SQL, 5 SQLite; -1 for a tag
// outside of 1 to 6.
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

// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

// The kinds of information; the number is that of the tab and of the button in the top bar.
enum class InformationType { File = 0, Table = 1, Column = 2, Index = 3, Relation = 4, Contents = 5 };

// How a kind of information presents itself; the texts are localised.
struct InformationTypeDescription {
    std::string identifier; // "InfoView_File"
    std::string barLabel;
    std::string paneTitle;
    std::string emptyText; // shown when there is nothing; "" where that never happens
};
[[nodiscard]] InformationTypeDescription describe(InformationType type);

struct PropertyRow {
    std::string label;
    std::string value;

    bool operator==(const PropertyRow&) const = default;
};

// What the information pane shows: facts about the selected file, or about the selected table, its columns, indexes and
// relations. Holds texts only, so it outlives whatever it describes.
class InformationPane {
public:
    using Type = InformationType;
    static constexpr std::array allTypes = {
        Type::File, Type::Table, Type::Column, Type::Index, Type::Relation, Type::Contents};

    // One property list with the name of the object it describes.
    struct Entry {
        std::string name;
        std::vector<PropertyRow> properties;
        std::string text{}; // to be read and copied as a whole: a query's SQL; "" for what has none
    };

    // The top bar. The tab shown is that of the selected type.
    [[nodiscard]] bool isTypeShown(Type type) const;
    [[nodiscard]] Type selectedType() const { return m_selectedType; }
    // A file or nothing is selected: the file button, selected; and that of the contents of a file that has any.
    void showFileType();
    // A table is selected: the other buttons; the one selected before stays selected.
    void showTableTypes();
    // A type that is not shown stays unselected.
    void selectType(Type type);

    // Each takes its texts anew; null for nothing to tell about. `isMissing`: the file is not there.
    void refreshFileInfo(const TAdmMDBFile* file, bool isMissing);
    void refreshContentsInfo(const TAdmMDBFile* file);
    void refreshTableInfo(const TAdmMDBTable* table);
    void refreshColumnInfo(const TAdmMDBTable* table);
    void refreshIndexInfo(const TAdmMDBTable* table);
    void refreshRelationInfo(const TAdmMDBTable* table);

    // The objects of a type. File and table have one at most; the names of columns, indexes and relations are the name
    // list of their pane. Empty: the pane shows its empty text instead of lists.
    [[nodiscard]] const std::vector<Entry>& entries(Type type) const { return content(type).entries; }
    // The row selected in the name list; 0 after a refresh.
    [[nodiscard]] std::size_t selectedEntry(Type type) const { return content(type).selected; }
    // Out of range: nothing changes.
    void selectEntry(Type type, std::size_t index);
    // Null without entries.
    [[nodiscard]] const Entry* selectedEntryOf(Type type) const;
    // The property list in display order: that of the selected entry.
    [[nodiscard]] const std::vector<PropertyRow>& properties(Type type) const;

private:
    struct Content {
        std::vector<Entry> entries;
        std::size_t selected = 0;
    };
    [[nodiscard]] const Content& content(Type type) const { return m_contents[static_cast<std::size_t>(type)]; }
    [[nodiscard]] Content& content(Type type) { return m_contents[static_cast<std::size_t>(type)]; }

    Type m_selectedType = Type::File;
    bool m_isTableShown = false;
    std::array<Content, allTypes.size()> m_contents;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBObject.h"

namespace vellumo {

class TAdmMDBFile;

// A relation between two tables.
class TAdmMDBForeignKey : public TAdmMDBObject {
public:
    [[nodiscard]] TAdmMDBFile* file() const { return m_file; }
    void setFile(TAdmMDBFile* file) { m_file = file; }

    // The table that holds the foreign key, and the table it refers to; the columns stand in pairs.
    [[nodiscard]] const std::string& referencingTable() const { return m_referencingTable; }
    void setReferencingTable(std::string name) { m_referencingTable = std::move(name); }
    [[nodiscard]] const std::vector<std::string>& referencingColumns() const { return m_referencingColumns; }
    [[nodiscard]] const std::string& referencedTable() const { return m_referencedTable; }
    void setReferencedTable(std::string name) { m_referencedTable = std::move(name); }
    [[nodiscard]] const std::vector<std::string>& referencedColumns() const { return m_referencedColumns; }
    void addColumnPair(std::string referencing, std::string referenced);

    // Whether Access keeps rows from referring to what is not there. Only then do the cascades mean something.
    [[nodiscard]] bool isEnforced() const { return m_isEnforced; }
    void setIsEnforced(bool isEnforced) { m_isEnforced = isEnforced; }
    [[nodiscard]] bool onUpdateCascade() const { return m_onUpdateCascade; }
    void setOnUpdateCascade(bool cascade) { m_onUpdateCascade = cascade; }
    [[nodiscard]] bool onDeleteCascade() const { return m_onDeleteCascade; }
    void setOnDeleteCascade(bool cascade) { m_onDeleteCascade = cascade; }

    [[nodiscard]] Information information() const override;

private:
    TAdmMDBFile* m_file = nullptr; // the owner
    std::string m_referencingTable;
    std::vector<std::string> m_referencingColumns;
    std::string m_referencedTable;
    std::vector<std::string> m_referencedColumns;
    bool m_isEnforced = true;
    bool m_onUpdateCascade = false;
    bool m_onDeleteCascade = false;
};

} // namespace vellumo

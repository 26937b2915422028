// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBObject.h"

namespace vellumo {

class TAdmMDBTable;

// An index of a table. Every index in the model has at least one key.
class TAdmMDBIndex : public TAdmMDBObject {
public:
    [[nodiscard]] TAdmMDBTable* table() const { return m_table; }
    void setTable(TAdmMDBTable* table) { m_table = table; }

    // In key order.
    [[nodiscard]] const std::vector<IndexKey>& keys() const { return m_keys; }
    void setKeys(std::vector<IndexKey> keys) { m_keys = std::move(keys); }

    // Never set from a file: each key has its own direction.
    [[nodiscard]] bool isAscending() const { return m_isAscending; }
    void setIsAscending(bool isAscending) { m_isAscending = isAscending; }
    [[nodiscard]] bool isPrimaryKey() const { return m_isPrimaryKey; }
    void setIsPrimaryKey(bool isPrimaryKey) { m_isPrimaryKey = isPrimaryKey; }
    [[nodiscard]] bool isUnique() const { return m_isUnique; }
    void setIsUnique(bool isUnique) { m_isUnique = isUnique; }

    [[nodiscard]] Information information() const override;

private:
    TAdmMDBTable* m_table = nullptr; // the owner
    std::vector<IndexKey> m_keys;
    bool m_isAscending = false;
    bool m_isPrimaryKey = false;
    bool m_isUnique = false;
};

} // namespace vellumo

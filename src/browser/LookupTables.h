// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <map>
#include <memory>

namespace vellumo {

// Tables with what their lookups show, made when they are first asked for; all windows show the same ones. Main thread
// only.
class LookupTables {
public:
    // The table itself when it has no lookups that can be resolved. `table` is not null; what comes lives until its
    // file is forgotten.
    [[nodiscard]] const TAdmMDBTable* find(const TAdmMDBTable& table);
    // The tables of the file are about to go.
    void forget(const TAdmMDBFile& file);
    void forgetAll() { m_tables.clear(); }

private:
    std::map<const TAdmMDBTable*, std::unique_ptr<TAdmMDBTable>> m_tables; // null: without lookups
};

} // namespace vellumo

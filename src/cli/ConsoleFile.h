#pragma once

#include "model/TAdmMDBFile.h"

#include <memory>
#include <string>

namespace vellumo {

// Opens a database with its facts from the file system, showing the progress. Null, with a message printed, when it
// cannot be opened or the user stopped.
[[nodiscard]] std::unique_ptr<TAdmMDBFile> openDatabase(const std::string& path);

// Null, with a message printed, when there is no table of this name.
[[nodiscard]] const TAdmMDBTable* findTableOrComplain(const TAdmMDBFile& file, const std::string& name);

} // namespace vellumo

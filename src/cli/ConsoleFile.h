// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"

#include <memory>
#include <optional>
#include <span>
#include <string>

namespace CLI {
class App;
}

namespace vellumo {

// What the command line says of the file to open.
struct FileArguments {
    std::string path;
    std::string salvage; // as `--salvage` was given; "" without it
    std::optional<int> codePage;
    bool newerFormats = false;
    std::string passwordFile; // "" without one
};

// Adds FILE, which is required, and the options for opening it.
void addFileArguments(CLI::App& sub, FileArguments& arguments);

// Opens a database with its facts from the file system, showing the progress. Null, with a message printed, when it
// cannot be opened or the user stopped.
enum class IndexCheck { No, Yes };
[[nodiscard]] std::unique_ptr<TAdmMDBFile> openDatabase(
    const FileArguments& arguments, IndexCheck indexCheck = IndexCheck::No);

// Adds --lookup-texts. With it a command goes on with what withLookupTexts gives for the open file: a copy that holds
// the texts that lookups show, with a line on standard error for everything of these tables (empty: all) that it does
// not have as people may expect; `isKeyWanted`: also for keys.
void addLookupOption(CLI::App& sub, bool& lookupTexts);
[[nodiscard]] std::unique_ptr<TAdmMDBFile> withLookupTexts(
    std::unique_ptr<TAdmMDBFile> file, std::span<const std::string> tables, bool isKeyWanted);

// Null, with a message printed, when there is no table of this name; what the file has lost of it is told as well.
[[nodiscard]] const TAdmMDBTable* findTableOrComplain(const TAdmMDBFile& file, const std::string& name);

} // namespace vellumo

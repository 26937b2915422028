// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/ConsoleFile.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

namespace vellumo {

namespace {

struct BlobOptions {
    FileArguments file;
    std::string table;
    std::string column;
    std::int64_t row = 0; // counts from 1
    std::string to;
};

bool isFolder(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

// `number`: of the file in the cell, from 1.
std::string outputPath(const BlobOptions& options, const TAdmBlobData& blob, std::size_t number)
{
    if (!isFolder(options.to)) return options.to;
    const auto row = number == 1 ? format("%ld", {options.row}) : format("%ld.%ld", {options.row, number});
    return format("%@/%@-%@%@", {options.to, fileNamePart(options.column), row, objectFileEnding(blob)});
}

// Null, with a message printed, when there is nothing to extract.
std::shared_ptr<TAdmBlobData> findBlob(const TAdmMDBTable& table, const BlobOptions& options)
{
    const auto& rows = table.rows();
    const auto column = rows.columnIndex(options.column);
    if (!column) {
        printError(localizedFormat("There is no column \"%@\".", {options.column}));
    } else if (rows.kinds()[*column] != CellKind::Blob) {
        printError(localizedFormat("The column \"%@\" does not hold objects.", {options.column}));
    } else if (static_cast<std::size_t>(options.row) > rows.rowCount()) {
        printError(localizedFormat("There is no row %ld.", {options.row}));
    } else {
        const auto value = rows.value(static_cast<std::size_t>(options.row) - 1, *column);
        if (const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value)) return *blob;
        printError(localized("The cell is empty."));
    }
    return nullptr;
}

// False, with a message printed, when it could not be written. Standard output tells in the end.
bool writeBlob(const TAdmBlobData& blob, const BlobOptions& options, std::size_t number)
{
    if (options.to == "-") {
        writeBytes({reinterpret_cast<const char*>(blob.data().data()), blob.data().size()});
        return true;
    }
    const auto path = outputPath(options, blob, number);
    const auto reason = objectFileFailure(blob, path, options.file.path);
    if (reason) printError(localizedFormat("File (%@) cannot be written: %@", {path, *reason}));
    return !reason;
}

// What its bytes do not tell.
void printState(const TAdmBlobData& blob)
{
    if (blob.state() == ObjectState::Damaged)
        printError(localized("The object is damaged: what was written is not the whole file."));
    if (blob.state() == ObjectState::Linked)
        printError(
            localizedFormat("The object is only linked, its file is not in the database: %@", {blob.linkTarget()}));
}

// A folder takes all files of an attachment cell, anything else the first. The state is the worst of those written.
std::optional<ObjectState> writeFiles(const TAdmBlobData& blob, const BlobOptions& options)
{
    if (!writeBlob(blob, options, 1)) return std::nullopt;
    printState(blob);
    const auto& further = blob.furtherFiles();
    if (!further.empty() && !isFolder(options.to)) {
        const auto count = static_cast<std::int64_t>(further.size());
        printError(count == 1
                ? localized("The cell has 1 more file. A folder behind --to takes all of them.")
                : localizedFormat("The cell has %ld more files. A folder behind --to takes all of them.", {count}));
        return blob.state();
    }
    auto state = blob.state();
    for (std::size_t i = 0; i < further.size(); ++i) {
        if (!writeBlob(*further[i], options, i + 2)) return std::nullopt;
        printState(*further[i]);
        if (further[i]->state() == ObjectState::Damaged) state = ObjectState::Damaged;
    }
    return state;
}

ExitStatus extractBlob(const BlobOptions& options)
{
    if (options.to.empty()) return wrongUsage(localized("--to must not be empty."));
    const auto file = openDatabase(options.file);
    if (!file) return ExitStatus::Failed;
    const auto* table = findTableOrComplain(*file, options.table);
    const auto blob = table == nullptr ? nullptr : findBlob(*table, options);
    const auto state = blob ? writeFiles(*blob, options) : std::nullopt;
    if (!state) return ExitStatus::Failed;
    printDamage(*file, {&options.table, 1});
    return state == ObjectState::Damaged ? ExitStatus::Damaged : doneWith(*file);
}

} // namespace

void addBlobCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<BlobOptions>();
    auto* sub = app.add_subcommand("blob", localized("Write the file that is embedded in a cell"));
    addFileArguments(*sub, options->file);
    sub->add_option("TABLE", options->table, localized("The table"))->required();
    sub->add_option("COLUMN", options->column, localized("A column of objects"))->required();
    sub->add_option("ROW", options->row, localized("The row, counted from 1 in stored order"))
        ->required()
        ->check(wholeNumberFrom(1));
    sub->add_option("--to", options->to,
           localized("The file to write, a folder for a file named by column and row, with the content's extension, "
                     "or - for standard output"))
        ->required()
        ->type_name("PATH");
    sub->callback([options, &command] { command = [options] { return extractBlob(*options); }; });
}

} // namespace vellumo

// SPDX-License-Identifier: MIT
#include "cli/ConsoleFile.h"

#include "browser/FileList.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "cli/ProgressBar.h"
#include "jet/UnicodeText.h"
#include "platform/FileFacts.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <CLI/CLI.hpp>
#include <filesystem>

namespace vellumo {

namespace {

// The file keeps the name it was called by, in the folder as it really is: ".." behind a symbolic link leads on from
// where the link points to.
std::string absolutePath(const std::string& path)
{
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    if (error) return path;
    const auto folder = std::filesystem::canonical(absolute.parent_path(), error);
    return error ? absolute.string() : (folder / absolute.filename()).string();
}

// What the parser makes of "--salvage" without a value.
constexpr std::string_view lostRows = "true";
constexpr std::string_view deletedRows = "deleted";

std::string complaintAboutSalvage(const std::string& value)
{
    const bool isKnown = value == lostRows || value == deletedRows;
    return isKnown ? std::string() : localizedFormat("%@ is not \"deleted\"", {value});
}

Salvage salvageOf(std::string_view value)
{
    if (value.empty()) return Salvage::None;
    return value == deletedRows ? Salvage::LostAndDeletedRows : Salvage::LostRows;
}

// "File (x) cannot be opened: reason", with what helps where that is another program's matter.
std::string refusal(const std::string& path, const std::optional<OpenFailure>& failure)
{
    auto line = localizedFormat("File (%@) cannot be opened", {path});
    if (!failure) return line;
    line += ": " + openFailureText(*failure);
    const bool isNewer = failure == OpenFailure::NewerFormat || failure == OpenFailure::UnknownNewer;
    return isNewer ? line + ". " + openFailureAdvice(*failure) : line;
}

} // namespace

void addFileArguments(CLI::App& sub, FileArguments& arguments)
{
    sub.add_option("FILE", arguments.path, localized("The database"))->required();
    sub.add_flag("--salvage", arguments.salvage,
           localized(
               "Look for lost tables and rows; with --salvage=deleted also for deleted rows that are still there"))
        ->check(complaintAboutSalvage);
    sub.add_option("--code-page", arguments.codePage,
           localized("The Windows code page of the texts of an Access 97 file, in place of the one that it states"))
        ->check(CLI::IsMember(jet::codePageNumbers()))
        ->type_name("NUMBER");
}

std::unique_ptr<TAdmMDBFile> openDatabase(const FileArguments& arguments, IndexCheck indexCheck)
{
    auto file = std::make_unique<TAdmMDBFile>();
    file->setFullPath(absolutePath(arguments.path));
    takeFacts(*file, SystemFileFacts());
    ProgressBar bar(localizedFormat("Opening %@", {file->label()}));
    OpenOptions options;
    options.codePage = arguments.codePage;
    options.salvage = salvageOf(arguments.salvage);
    options.checksIndexes = indexCheck == IndexCheck::Yes;
    options.observer = [&](std::uint64_t rowsDone, std::uint64_t rowsExpected) {
        bar.show(rowsDone, rowsExpected);
        return !interrupted();
    };
    const bool isOpen = file->open(options);
    bar.clear();
    if (isOpen) return file;
    printError(interrupted() ? localized("Interrupted.") : refusal(arguments.path, file->openFailure()));
    return nullptr;
}

const TAdmMDBTable* findTableOrComplain(const TAdmMDBFile& file, const std::string& name)
{
    const auto* table = file.findTable(name);
    if (table != nullptr) return table;
    printError(localizedFormat("There is no table \"%@\".", {name}));
    printDamage(file, {&name, 1});
    return nullptr;
}

} // namespace vellumo

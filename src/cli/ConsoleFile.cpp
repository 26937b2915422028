// SPDX-License-Identifier: MIT
#include "cli/ConsoleFile.h"

#include "browser/FileList.h"
#include "cli/ConsoleOutput.h"
#include "cli/DamageOutput.h"
#include "cli/Password.h"
#include "cli/ProgressBar.h"
#include "jet/UnicodeText.h"
#include "model/LookupTexts.h"
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

// What helps on the command line, a sentence; "" where nothing does, or the user knows best.
std::string advice(OpenFailure failure)
{
    switch (failure) {
    case OpenFailure::NewerFormat: return localized("Give --newer-formats to open it all the same.");
    case OpenFailure::NeedsPassword:
        return localized("Give it with --password-file, or in the environment variable VELLUMO_PASSWORD.");
    case OpenFailure::UnknownNewer:
    case OpenFailure::WrongPassword: return openFailureAdvice(failure);
    default: return {};
    }
}

// "File (x) cannot be opened: reason. Advice"
std::string refusal(const std::string& path, const std::optional<OpenFailure>& failure)
{
    auto line = localizedFormat("File (%@) cannot be opened", {path});
    if (!failure) return line;
    line += ": " + openFailureText(*failure);
    const auto help = advice(*failure);
    return help.empty() ? line : line + ". " + help;
}

} // namespace

void addFileArguments(CLI::App& sub, FileArguments& arguments)
{
    sub.add_option("FILE", arguments.path, localized("The database"))->required();
    sub.add_flag("--salvage", arguments.salvage,
           localized(
               "Look for lost tables and rows; with --salvage=deleted also for deleted rows that are still there"))
        ->check(complaintAboutSalvage);
    sub.add_flag("--newer-formats", arguments.newerFormats, localized("Open files of Access 2007 to 2019, too"));
    sub.add_option("--password-file", arguments.passwordFile,
           localized("The file whose first line is the password of an encrypted database, or - for standard input; "
                     "without this option the environment variable VELLUMO_PASSWORD has it"))
        ->type_name("PATH");
    sub.add_option("--code-page", arguments.codePage,
           localized("The Windows code page of the texts of an Access 97 file, in place of the one that it states"))
        ->check(CLI::IsMember(jet::codePageNumbers()))
        ->type_name("NUMBER");
}

std::unique_ptr<TAdmMDBFile> openDatabase(const FileArguments& arguments, IndexCheck indexCheck)
{
    auto [password, complaint] = readPassword(arguments.passwordFile);
    if (!complaint.empty()) {
        printError(complaint);
        return nullptr;
    }
    auto file = std::make_unique<TAdmMDBFile>();
    file->setFullPath(absolutePath(arguments.path));
    takeFacts(*file, SystemFileFacts());
    ProgressBar bar(localizedFormat("Opening %@", {file->label()}));
    OpenOptions options;
    options.codePage = arguments.codePage;
    options.newerFormats = arguments.newerFormats;
    options.password = std::move(password);
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

void addLookupOption(CLI::App& sub, bool& lookupTexts)
{
    sub.add_flag("--lookup-texts", lookupTexts,
        localized("In lookup columns the texts that they show, in place of what they store"));
}

std::unique_ptr<TAdmMDBFile> withLookupTexts(
    std::unique_ptr<TAdmMDBFile> file, std::span<const std::string> tables, bool isKeyWanted)
{
    auto [copy, notes] = fileWithLookupTexts(*file, [](std::uint64_t) { return !interrupted(); });
    if (!copy) printError(localized("Interrupted."));
    for (const auto& note : notes) {
        const bool concerns = tables.empty() || std::ranges::find(tables, note.table) != tables.end();
        if (concerns && (isKeyWanted || note.kind == LookupNote::Kind::Unresolved)) printError(lookupNoteText(note));
    }
    return std::move(copy);
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

#include "cli/ConsoleFile.h"

#include "browser/FileList.h"
#include "cli/ConsoleOutput.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"
#include "platform/FileFacts.h"
#include "text/Format.h"
#include "text/Messages.h"

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

} // namespace

std::unique_ptr<TAdmMDBFile> openDatabase(const std::string& path)
{
    auto file = std::make_unique<TAdmMDBFile>();
    file->setFullPath(absolutePath(path));
    takeFacts(*file, SystemFileFacts());
    ProgressBar bar(localizedFormat("Opening %@", {file->label()}));
    OpenOptions options;
    options.observer = [&](std::uint64_t rowsDone, std::uint64_t rowsExpected) {
        bar.show(rowsDone, rowsExpected);
        return !interrupted();
    };
    const bool isOpen = file->open(options);
    bar.clear();
    if (isOpen) return file;
    printError(interrupted() ? localized("Interrupted.") : localizedFormat("File (%@) cannot be opened", {path}));
    return nullptr;
}

const TAdmMDBTable* findTableOrComplain(const TAdmMDBFile& file, const std::string& name)
{
    const auto* table = file.findTable(name);
    if (table == nullptr) printError(localizedFormat("There is no table \"%@\".", {name}));
    return table;
}

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DesktopPorts.h"
#include "browser/DiskLook.h"
#include "browser/FileList.h"
#include "browser/FileOpener.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vellumo {

// What can be done with a file of the list.
enum class FileCommand { Open, Close, Remove, RemoveOthers, ShowInFinder, LookForLostRows };

// The files part of the controller: the list, which file is being opened, and how one is closed or goes. It knows
// nothing of what is selected or shown. Main thread only.
class Files {
public:
    struct Hooks {
        // The tables of the file are about to go: every keeper lets go of them.
        std::function<void(TAdmMDBFile&)> willClose;
        // The file is about to be closed, and opened anew at once.
        std::function<void(TAdmMDBFile&)> willReadAgain;
        // Whether an export reads from the file.
        std::function<bool(const TAdmMDBFile&)> isExporting;
        // How a file is to be opened, as far as that is settled.
        std::function<OpenOptions(const TAdmMDBFile&)> optionsFor;
    };
    using Done = std::function<void(TAdmMDBFile&, OpenResult)>;
    // What is asked for one time only.
    struct Once {
        Salvage salvage = Salvage::None;
        std::optional<std::string> password{};
    };

    // Both outlive the files.
    Files(MainWindowView& view, const DesktopPorts& desktop, Hooks hooks);

    [[nodiscard]] FileList& list() { return m_list; }
    [[nodiscard]] const FileList& list() const { return m_list; }
    [[nodiscard]] FileOpener& opener() { return m_opener; }
    [[nodiscard]] const FileOpener& opener() const { return m_opener; }

    // Whether the file is being opened or exported: it stays as it is until then.
    [[nodiscard]] bool isInUse(const TAdmMDBFile& file) const;
    [[nodiscard]] bool isAnyInUse() const;
    // `target` null: never.
    [[nodiscard]] bool canUse(FileCommand command, const TAdmMDBFile* target) const;

    // A new, unopened entry at the front, in place of one listed under the same folder and name.
    TAdmMDBFile& replace(std::string_view path);
    // Replaces and opens, when its turn has come. `begun` is told of the entry before it is read. A path's spelling is
    // made regular: the recent documents and the list are compared by it.
    void bringIn(const std::string& path, std::function<void()> begun, Done done);
    // Opens a closed file of the list, when its turn has come. Stopped: also when it has left the list before.
    void open(TAdmMDBFile& file, Done done) { open(file, {}, std::move(done)); }
    void open(TAdmMDBFile& file, Once once, Done done);
    // Closes an open file and opens it anew, when its turn has come and if there still is what to do: `begun` is told
    // in between, while it is closed.
    void openAgain(const ItemId& id, Salvage salvage, std::function<void(TAdmMDBFile&)> begun, Done done);

    // Looks at the file, later: WindowPart::ChangeBar tells that it was seen. Only one file at a time is looked at.
    void lookAtDisk(const TAdmMDBFile& file) { m_diskLook.begin(file.fullPath()); }
    // Whether size or date of an open file are others than when it was read, or it is not there any more, as far as
    // it was looked at.
    [[nodiscard]] bool hasChangedOnDisk(const TAdmMDBFile& file) const;

    // The file stays in the list, unopened.
    void close(TAdmMDBFile& file);
    // Takes the file out of the list. It lives until forgetDropped, so that the tree can let go of it.
    void drop(TAdmMDBFile& file);
    // The same with all but one, or with all for null, which are closed at first.
    void dropAllBut(const TAdmMDBFile* kept);
    void forgetDropped() { m_dropped.clear(); }
    // Brings the list in line with these documents: what vanished from them is closed and dropped, unless it is in use;
    // what is new is listed, unopened. Ordered by name afterwards.
    void reconcile(const std::vector<std::string>& documents);

private:
    [[nodiscard]] OpenOptions optionsFor(const TAdmMDBFile& file, const Once& once) const;
    void vanish(TAdmMDBFile& file);
    void read(const std::shared_ptr<TAdmMDBFile>& file, const Once& once, const Done& done);

    MainWindowView& m_view;
    Hooks m_hooks;
    FileList m_list;
    FileList::Files m_dropped;
    std::map<const TAdmMDBFile*, std::optional<FileFacts>> m_readFacts; // as they were before a file was read
    std::map<std::string, std::optional<FileFacts>> m_seenFacts;        // as they were seen since, by path
    DiskLook m_diskLook;
    FileOpener m_opener;
};

} // namespace vellumo

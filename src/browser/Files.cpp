// SPDX-License-Identifier: MIT
#include "browser/Files.h"

#include <algorithm>
#include <filesystem>

namespace vellumo {

Files::Files(MainWindowView& view, const DesktopPorts& desktop, Hooks hooks)
    : m_view(view)
    , m_hooks(std::move(hooks))
    , m_list(desktop.fileFacts)
    , m_diskLook(desktop.fileFacts, desktop.mainThread,
          [this](const std::string& path, const std::optional<FileFacts>& facts) {
              m_seenFacts[path] = facts;
              m_view.partDidChange(WindowPart::ChangeBar);
          })
    , m_opener(view, desktop.mainThread)
{
}

bool Files::isInUse(const TAdmMDBFile& file) const { return m_opener.isOpening(file) || m_hooks.isExporting(file); }

bool Files::isAnyInUse() const
{
    return std::ranges::any_of(m_list.recentFiles(), [&](const auto& file) { return isInUse(*file); });
}

bool Files::canUse(FileCommand command, const TAdmMDBFile* target) const
{
    if (target == nullptr) return false;
    if (command == FileCommand::ShowInFinder) return true;
    if (isInUse(*target)) return false;
    switch (command) {
    case FileCommand::Open: return !target->active();
    case FileCommand::Close:
    case FileCommand::LookForLostRows: return target->active();
    case FileCommand::RemoveOthers: return m_list.recentFiles().size() > 1 && !isAnyInUse();
    default: return true;
    }
}

// Opening

OpenOptions Files::optionsFor(const TAdmMDBFile& file, const Once& once) const
{
    auto options = m_hooks.optionsFor(file);
    options.salvage = once.salvage;
    options.password = once.password;
    return options;
}

TAdmMDBFile& Files::replace(std::string_view path)
{
    if (auto* listed = m_list.findByFolderAndName(path)) drop(*listed);
    return m_list.createNewMDBFile(path, true);
}

// A step of the opener, so that an entry of the same name that is being opened is replaced only afterwards.
void Files::bringIn(const std::string& path, std::function<void()> begun, Done done)
{
    auto regular = std::filesystem::path(path).lexically_normal().string();
    m_opener.enqueue([this, path = std::move(regular), begun = std::move(begun), done = std::move(done)] {
        const auto file = m_list.share(replace(path));
        begun();
        read(file, {}, done);
    });
}

void Files::open(TAdmMDBFile& file, Once once, Done done)
{
    m_opener.enqueue([this, shared = m_list.share(file), once = std::move(once), done = std::move(done)] {
        if (m_list.contains(shared.get()))
            read(shared, once, done);
        else
            done(*shared, OpenResult::Stopped);
    });
}

void Files::openAgain(const ItemId& id, Salvage salvage, std::function<void(TAdmMDBFile&)> begun, Done done)
{
    m_opener.enqueue([this, id, salvage, begun = std::move(begun), done = std::move(done)] {
        const auto listed = m_list.find(id).file;
        if (listed == nullptr || !listed->active() || isInUse(*listed)) return;
        const auto file = m_list.share(*listed);
        m_hooks.willReadAgain(*file);
        close(*file);
        begun(*file);
        read(file, {.salvage = salvage}, done);
    });
}

void Files::read(const std::shared_ptr<TAdmMDBFile>& file, const Once& once, const Done& done)
{
    // Before the first page is read: a change that comes while it is read counts.
    if (!file->active()) {
        m_readFacts[file.get()] = m_list.lookAt(*file);
        m_seenFacts.erase(file->fullPath());
        m_diskLook.forgetQuestion();
    }
    m_opener.open(file, optionsFor(*file, once), [file, done](OpenResult result) { done(*file, result); });
}

bool Files::hasChangedOnDisk(const TAdmMDBFile& file) const
{
    const auto read = m_readFacts.find(&file);
    if (!file.active() || read == m_readFacts.end() || !read->second) return false;
    const auto seen = m_seenFacts.find(file.fullPath());
    if (seen == m_seenFacts.end()) return false;
    const auto& now = seen->second;
    return !now || now->size != read->second->size || now->modified != read->second->modified;
}

// Closing

void Files::close(TAdmMDBFile& file)
{
    m_hooks.willClose(file);
    m_view.fileWillClose(file);
    file.close();
}

void Files::drop(TAdmMDBFile& file)
{
    if (file.active()) {
        m_hooks.willClose(file);
        m_view.fileWillClose(file);
    }
    m_readFacts.erase(&file);
    m_seenFacts.erase(file.fullPath());
    m_dropped.push_back(m_list.remove(file));
}

void Files::dropAllBut(const TAdmMDBFile* kept)
{
    for (const auto& file : FileList::Files(m_list.recentFiles())) {
        if (file.get() == kept) continue;
        close(*file);
        drop(*file);
    }
}

void Files::reconcile(const std::vector<std::string>& documents)
{
    const auto [vanished, unlisted] = m_list.compareWith(documents);
    if (!vanished.empty() || !unlisted.empty()) m_list.sortByLastOpenDate();
    for (auto* file : vanished)
        if (!isInUse(*file)) vanish(*file); // one in use goes the next time
    for (const auto& document : unlisted)
        m_list.addDocument(document);
    m_list.sortByName();
}

void Files::vanish(TAdmMDBFile& file)
{
    if (file.active()) {
        m_view.setTreeItemExpanded(file, false);
        close(file);
    }
    drop(file);
}

} // namespace vellumo

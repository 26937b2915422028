// SPDX-License-Identifier: MIT
#include "export/ExportHints.h"

#include "export/ExportFormat.h"
#include "model/TAdmMDBFile.h"
#include "text/Format.h"
#include "text/Messages.h"

#include <filesystem>
#include <set>
#include <unistd.h>

namespace vellumo {

namespace {

using HintKind = ExportHint::Kind;
using Place = ExportHint::Place;

bool isUsableFileName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
}

class Collector {
public:
    Collector(const TAdmMDBFile& file, std::span<const ExportEntry> tables, const ExportOptions& options)
        : m_file(file)
        , m_tables(tables)
        , m_options(options)
    {
    }

    std::vector<ExportHint> collect()
    {
        collectTables();
        if (!m_options.isSingleFile) collectFileNames();
        collectContents();
        if (!m_options.objectsFolder.empty())
            static_cast<void>(collectFolder(Place::Objects, m_options.objectsFolder, true));
        collectPath();
        return std::move(m_hints);
    }

private:
    void add(HintKind kind, Place place, std::string text) { m_hints.push_back({kind, place, std::move(text)}); }
    void warn(Place place, std::string text) { add(HintKind::Warning, place, std::move(text)); }

    void collectTables();
    void collectFileNames();
    void collectContents();
    void collectPath();
    [[nodiscard]] bool collectFolder(Place place, const std::filesystem::path& folder, bool isMade);
    void collectTargets();
    void collectReplaced(const std::vector<std::string>& names);
    [[nodiscard]] std::vector<std::string> targetPaths() const;

    const TAdmMDBFile& m_file;
    std::span<const ExportEntry> m_tables;
    const ExportOptions& m_options;
    std::vector<ExportHint> m_hints;
};

void Collector::collectTables()
{
    if (m_tables.empty())
        add(HintKind::Missing, Place::Tables, localized("The file has no tables to export."));
    else if (std::ranges::none_of(m_tables, &ExportEntry::selected))
        add(HintKind::Missing, Place::Tables, localized("Select at least one table."));
}

void Collector::collectFileNames()
{
    std::set<std::string> names;
    for (const auto& entry : m_tables) {
        if (!entry.selected) continue;
        if (!isUsableFileName(entry.exportFileName))
            return warn(Place::Tables, localizedFormat("“%@” cannot be the name of a file.", {entry.exportFileName}));
        if (!names.insert(entry.exportFileName).second)
            return warn(Place::Tables,
                localizedFormat("Several tables go to the file “%@”; only the last one will be left in it.",
                    {entry.exportFileName}));
    }
}

void Collector::collectContents()
{
    if (!m_options.hasContents())
        add(HintKind::Missing, Place::Contents, localized("Select the structure, the rows or both."));
}

void Collector::collectPath()
{
    if (m_options.path.empty())
        return add(HintKind::Missing, Place::Path,
            m_options.isSingleFile ? localized("Choose the file to export to.")
                                   : localized("Choose the folder to export to."));
    const auto folder = m_options.isSingleFile ? std::filesystem::path(m_options.path).parent_path()
                                               : std::filesystem::path(m_options.path);
    if (collectFolder(Place::Path, folder, !m_options.isSingleFile)) collectTargets();
}

// Whether the folder is there to be written to. `isMade`: when only it is missing, the export makes it.
bool Collector::collectFolder(Place place, const std::filesystem::path& folder, bool isMade)
{
    const auto shownFolder = folder.empty() ? std::filesystem::path(".") : folder;
    std::error_code error;
    const auto told = [&](HintKind kind, std::string text) { return add(kind, place, std::move(text)), false; };
    if (std::filesystem::is_directory(shownFolder, error)) {
        if (::access(shownFolder.c_str(), W_OK | X_OK) == 0) return true;
        return told(
            HintKind::Warning, localizedFormat("You may not create files in the folder “%@”.", {folder.string()}));
    }
    const auto parent =
        shownFolder.has_filename() ? shownFolder.parent_path() : shownFolder.parent_path().parent_path();
    if (isMade && std::filesystem::is_directory(parent, error) && !std::filesystem::exists(shownFolder, error))
        return told(HintKind::Note, localizedFormat("The folder “%@” will be made.", {folder.string()}));
    return told(HintKind::Warning, localizedFormat("There is no folder “%@”.", {folder.string()}));
}

std::vector<std::string> Collector::targetPaths() const
{
    if (m_options.isSingleFile) return {m_options.path};
    std::vector<std::string> paths;
    for (const auto& entry : m_tables)
        if (entry.selected && isUsableFileName(entry.exportFileName))
            paths.push_back(format("%@/%@", {m_options.path, entry.exportFileName}));
    return paths;
}

void Collector::collectTargets()
{
    std::vector<std::string> existing;
    std::error_code error;
    for (const auto& path : targetPaths()) {
        if (!std::filesystem::exists(path, error)) continue;
        const auto name = std::filesystem::path(path).filename().string();
        if (std::filesystem::is_directory(path, error))
            return warn(Place::Path, localizedFormat("“%@” is a folder.", {name.empty() ? path : name}));
        if (std::filesystem::equivalent(path, m_file.fullPath(), error))
            return warn(Place::Path, localized("The database itself is never written to; choose another file."));
        existing.push_back(name);
    }
    collectReplaced(existing);
}

void Collector::collectReplaced(const std::vector<std::string>& names)
{
    if (names.size() == 1)
        warn(Place::Path, localizedFormat("The file “%@” exists and will be replaced.", {names.front()}));
    else if (names.size() > 1)
        warn(Place::Path, localizedFormat("%d files exist in this folder and will be replaced.", {names.size()}));
}

} // namespace

std::vector<ExportHint> exportHints(
    const TAdmMDBFile& file, std::span<const ExportEntry> tables, const ExportOptions& options)
{
    return Collector(file, tables, options).collect();
}

} // namespace vellumo

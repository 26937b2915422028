// SPDX-License-Identifier: MIT
#include "export/objects/ObjectsExport.h"

#include "embedded/TAdmBlobData.h"
#include "export/objects/ObjectFile.h"
#include "jet/Crypto.h"
#include "text/Format.h"
#include "text/Messages.h"
#include "text/QuotedText.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>

namespace vellumo {

namespace {

constexpr const char* manifestName = "manifest.csv";

// As RFC 4180 has it.
std::string csvLine(std::initializer_list<std::string_view> fields)
{
    std::string line;
    const char* delimiter = "";
    for (const auto field : fields) {
        line += std::exchange(delimiter, ",");
        if (field.find_first_of("\",\r\n") == std::string_view::npos)
            line += field;
        else
            appendQuoted(field, line);
    }
    return line + "\r\n";
}

const char* stateName(ObjectState state)
{
    switch (state) {
    case ObjectState::Damaged: return "damaged";
    case ObjectState::Linked: return "linked";
    case ObjectState::Whole: break;
    }
    return "whole";
}

// Calls `visit` for every object, column by column, until it returns false.
template <typename Visit> bool forEachObject(const TAdmMDBTable& table, const Visit& visit)
{
    const auto& rows = table.rows();
    for (std::size_t c = 0; c < rows.columnCount(); ++c) {
        for (std::size_t g = 0; g < rows.groups().size(); ++g) {
            const auto& cells = rows.groups()[g].blobs[c];
            for (std::size_t r = 0; r < cells.size(); ++r)
                if (cells[r] && !visit(c, rows.firstRow(g) + r, *cells[r])) return false;
        }
    }
    return true;
}

std::uint64_t objectCount(std::span<const TAdmMDBTable* const> tables)
{
    std::uint64_t count = 0;
    for (const auto* table : tables)
        forEachObject(*table, [&](auto, auto, const auto&) { return ++count, true; });
    return count;
}

} // namespace

ObjectFolder::ObjectFolder(const TAdmMDBFile& file, std::string folder)
    : m_file(file)
    , m_folder(std::move(folder))
{
    m_tableFolders.reserve(manifestName);
}

bool ObjectFolder::open()
{
    if (!makeFolder(m_folder)) return false;
    const auto path = format("%@/%@", {m_folder, manifestName});
    if (isDatabase(path, m_file.fullPath())) return fail(path, isDatabaseText()), false;
    if (!m_manifest.open(path)) return fail(path, m_manifest.failureReason()), false;
    m_manifest.write(csvLine({"table", "column", "row", "file", "name", "type", "bytes", "sha256", "state"}));
    return true;
}

std::string ObjectFolder::add(
    const TAdmMDBTable& table, std::size_t column, std::size_t row, const TAdmBlobData& object)
{
    auto path = addFile({table, column, row, 1}, object);
    for (std::size_t i = 0; i < object.furtherFiles().size(); ++i)
        addFile({table, column, row, i + 2}, *object.furtherFiles()[i]);
    return path;
}

std::string ObjectFolder::addFile(const Place& place, const TAdmBlobData& object)
{
    const bool isEmpty = object.data().empty();
    auto path = isEmpty ? std::string() : writeObject(place, object);
    if (!path.empty()) ++m_report.written;
    if (object.state() == ObjectState::Damaged) ++m_report.damaged;
    if (object.state() == ObjectState::Linked) ++m_report.linked;
    // The file of a linked object has its name where it lies.
    const auto& name = object.storedName().empty() ? object.linkTarget() : object.storedName();
    m_manifest.write(csvLine({place.table.name(), place.table.columns()[place.column]->name(),
        format("%ld", {place.row + 1}), path, name, object.fileExtension(), format("%ld", {object.data().size()}),
        isEmpty ? "" : jet::sha256(object.data()), stateName(object.state())}));
    return path;
}

void ObjectFolder::finish()
{
    if (!m_manifest.close()) fail(format("%@/%@", {m_folder, manifestName}), m_manifest.failureReason());
}

std::string ObjectFolder::writeObject(const Place& place, const TAdmBlobData& object)
{
    const auto folder = columnFolder(place.table, place.column);
    if (folder.empty()) return {};
    auto path = format("%@/%@", {folder, objectFileName(place.row + 1, object, place.number)});
    const auto fullPath = format("%@/%@", {m_folder, path});
    const auto reason = objectFileFailure(object, fullPath, m_file.fullPath());
    if (!reason) return path;
    fail(fullPath, *reason);
    return {};
}

std::string ObjectFolder::columnFolder(const TAdmMDBTable& table, std::size_t column)
{
    auto& names = m_tables[table.name()];
    if (names.folder.empty()) names.folder = m_tableFolders.nameFor(table.name());
    const auto known = names.columnFolders.find(column);
    if (known != names.columnFolders.end()) return known->second;
    auto& path = names.columnFolders[column]; // tried once
    const auto wanted = format("%@/%@", {names.folder, names.columns.nameFor(table.columns()[column]->name())});
    if (makeFolder(format("%@/%@", {m_folder, names.folder})) && makeFolder(format("%@/%@", {m_folder, wanted})))
        path = wanted;
    return path;
}

bool ObjectFolder::makeFolder(const std::string& path)
{
    std::error_code error;
    std::filesystem::create_directory(path, error);
    if (error) fail(path, error.message());
    return !error;
}

void ObjectFolder::fail(const std::string& path, std::string_view reason)
{
    m_report.failures.push_back(localizedFormat("File (%@) cannot be written: %@", {path, reason}));
}

ObjectsReport exportObjects(const TAdmMDBFile& file, std::span<const TAdmMDBTable* const> tables,
    const std::string& folder, const OpenObserver& observer)
{
    ObjectFolder out(file, folder);
    if (!out.open()) return out.report();
    const auto total = objectCount(tables);
    std::uint64_t done = 0;
    for (const auto* table : tables) {
        const bool isFinished = forEachObject(*table, [&](std::size_t column, std::size_t row, const auto& object) {
            out.add(*table, column, row, object);
            return observer(++done, total);
        });
        if (isFinished) continue;
        auto report = out.report();
        report.isStopped = true;
        return report;
    }
    out.finish();
    return out.report();
}

} // namespace vellumo

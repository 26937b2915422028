// SPDX-License-Identifier: MIT
#include "model/TAdmMDBFile.h"

#include "model/FileLoader.h"
#include "text/FinderCompare.h"
#include "text/Format.h"

#include <new>

namespace vellumo {

TAdmMDBFile::TAdmMDBFile()
    : m_createDate(std::chrono::system_clock::now())
    , m_modifyDate(m_createDate)
    , m_lastOpenDate(m_createDate)
{
}

std::string TAdmMDBFile::label() const { return m_ext.empty() ? name() : vellumo::format("%@.%@", {name(), m_ext}); }

std::string TAdmMDBFile::fullPath() const { return vellumo::format("%@/%@", {m_path, label()}); }

void TAdmMDBFile::setFullPath(std::string_view fullPath)
{
    const auto slash = fullPath.rfind('/');
    const auto fileName = fullPath.substr(slash == std::string_view::npos ? 0 : slash + 1);
    m_path = slash == std::string_view::npos ? "." : fullPath.substr(0, slash);
    const auto dot = fileName.rfind('.');
    // A dot at the very front marks a hidden file, not an extension.
    const bool hasExtension = dot != std::string_view::npos && dot > 0 && dot + 1 < fileName.size();
    setName(std::string(hasExtension ? fileName.substr(0, dot) : fileName));
    m_ext = hasExtension ? fileName.substr(dot + 1) : std::string_view();
}

void TAdmMDBFile::setTables(Tables tables)
{
    m_tables = std::move(tables);
    for (const auto& table : m_tables)
        table->setFile(this);
}

void TAdmMDBFile::setAllForeignKeys(ForeignKeys foreignKeys)
{
    m_allForeignKeys = std::move(foreignKeys);
    for (const auto& foreignKey : m_allForeignKeys)
        foreignKey->setFile(this);
}

bool TAdmMDBFile::open(const OpenOptions& options)
{
    if (m_fActive) return true;
    m_openFailure.reset();
    try {
        auto failure = OpenFailure::Stopped;
        const auto database = jet::Database::open(fullPath(), options, failure);
        m_fActive = database && FileLoader(*database, *this, options).load();
        if (!m_fActive) m_openFailure = failure;
    } catch (const std::bad_alloc&) {
        m_openFailure = OpenFailure::TooLittleMemory;
    }
    if (!m_fActive) close();
    return m_fActive;
}

void TAdmMDBFile::close()
{
    for (const auto& table : m_tables)
        table->close();
    m_tables.clear();
    m_allForeignKeys.clear();
    m_contents = {};
    m_damage = {};
    m_format = {};
    m_fActive = false;
}

void TAdmMDBFile::takeContentOf(TAdmMDBFile& read)
{
    close();
    setTables(std::move(read.m_tables));
    setAllForeignKeys(std::move(read.m_allForeignKeys));
    m_contents = std::move(read.m_contents);
    m_damage = std::move(read.m_damage);
    m_format = read.m_format;
    m_openFailure = read.m_openFailure;
    m_fActive = read.m_fActive;
    read.close();
}

TAdmMDBTable* TAdmMDBFile::findTable(std::string_view name) const
{
    for (const auto& table : m_tables)
        if (table->name() == name) return table.get();
    return nullptr;
}

TAdmMDBForeignKey* TAdmMDBFile::findForeignKeyByName(std::string_view name) const
{
    for (const auto& foreignKey : m_allForeignKeys)
        if (foreignKey->name() == name) return foreignKey.get();
    return nullptr;
}

std::vector<TAdmMDBForeignKey*> TAdmMDBFile::foreignKeysForTable(std::string_view tableName) const
{
    std::vector<TAdmMDBForeignKey*> found;
    for (const auto& foreignKey : m_allForeignKeys)
        if (foreignKey->referencingTable() == tableName) found.push_back(foreignKey.get());
    return found;
}

std::string TAdmMDBFile::dateWithFinderFormat(std::optional<Timestamp> date) const
{
    return vellumo::dateWithFinderFormat(date, std::chrono::system_clock::now());
}

int TAdmMDBFile::compareByName(const TAdmMDBObject& other) const
{
    const auto byName = TAdmMDBObject::compareByName(other);
    const auto* file = dynamic_cast<const TAdmMDBFile*>(&other);
    return byName != 0 || file == nullptr ? byName : finderCompare(m_path, file->m_path);
}

int TAdmMDBFile::compareByLastOpenDate(const TAdmMDBFile& other) const
{
    if (other.m_lastOpenDate == m_lastOpenDate) return 0;
    return other.m_lastOpenDate < m_lastOpenDate ? -1 : 1;
}

Information TAdmMDBFile::information() const
{
    Information list = {{PropertyId::Name, label()}, {PropertyId::Where, m_path}, {PropertyId::Size, FileSize{m_size}},
        {PropertyId::Created, m_createDate}, {PropertyId::Modified, m_modifyDate},
        {PropertyId::LastOpened, m_lastOpenDate}};
    if (m_format.hasIdlePassword) list.push_back({PropertyId::DatabasePassword, IdlePassword()});
    return list;
}

} // namespace vellumo

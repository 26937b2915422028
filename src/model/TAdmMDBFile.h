// SPDX-License-Identifier: MIT
#pragma once

#include "jet/DamageReport.h"
#include "jet/OpenFailure.h"
#include "jet/OpenOptions.h"
#include "model/Contents.h"
#include "model/TAdmMDBTable.h"
#include "text/DateText.h"

#include <functional>
#include <optional>

namespace vellumo {

// What the first page of a file says of it.
struct FileFormat {
    int version = 0;  // as stored; 0: Access 97 (Jet 3), 1: Access 2000 to 2003 (Jet 4)
    int codePage = 0; // Windows code page; only the texts of a Jet 3 file depend on it
    bool isEncrypted = false;
    bool hasIdlePassword = false; // a database password of Access 97 to 2003, which protects nothing
};

// A database file of the file list. It knows its path and facts from the start; everything inside is read by `open`
// and kept in memory until `close`. One thread at a time.
class TAdmMDBFile : public TAdmMDBObject {
public:
    TAdmMDBFile();

    // The folder without trailing separator, and the extension without dot, as the file name has it; `name` is the
    // file name without both.
    [[nodiscard]] const std::string& path() const { return m_path; }
    void setPath(std::string path) { m_path = std::move(path); }
    [[nodiscard]] const std::string& fileExtension() const { return m_ext; }
    void setFileExtension(std::string extension) { m_ext = std::move(extension); }
    // "folder/name.extension", and "name.extension". A file without an extension has no dot either.
    [[nodiscard]] std::string fullPath() const;
    [[nodiscard]] std::string label() const;
    // Takes folder, name and extension from a full path.
    void setFullPath(std::string_view fullPath);

    [[nodiscard]] std::uint64_t size() const { return m_size; } // bytes
    void setSize(std::uint64_t size) { m_size = size; }
    [[nodiscard]] Timestamp createDate() const { return m_createDate; }
    void setCreateDate(Timestamp date) { m_createDate = date; }
    [[nodiscard]] Timestamp modifyDate() const { return m_modifyDate; }
    void setModifyDate(Timestamp date) { m_modifyDate = date; }
    [[nodiscard]] Timestamp lastOpenDate() const { return m_lastOpenDate; }
    void setLastOpenDate(Timestamp date) { m_lastOpenDate = date; }

    // The user tables, sorted by name, and all relations, sorted by name. Never null; empty while inactive.
    using Tables = std::vector<std::unique_ptr<TAdmMDBTable>>;
    [[nodiscard]] const Tables& tables() const { return m_tables; }
    void setTables(Tables tables);
    using ForeignKeys = std::vector<std::unique_ptr<TAdmMDBForeignKey>>;
    [[nodiscard]] const ForeignKeys& allForeignKeys() const { return m_allForeignKeys; }
    void setAllForeignKeys(ForeignKeys foreignKeys);

    // True while the content is loaded.
    [[nodiscard]] bool active() const { return m_fActive; }
    void setActive(bool active) { m_fActive = active; }

    // Reads the whole file: true when it is active afterwards. A missing, unreadable or foreign file, a newer format,
    // too little memory, and a stop by the observer give false and leave it inactive and empty.
    [[nodiscard]] bool open(const OpenOptions& options = {});
    void close();
    // Takes over, at once, all that the last `open` of `read` gave: content, damage and failure. What this file held
    // before is gone, `read` is closed. So a file can be read where nobody looks, and be shown when it is whole.
    void takeContentOf(TAdmMDBFile& read);
    // Why the last `open` gave false; nullopt before any, and after one that gave true.
    [[nodiscard]] const std::optional<OpenFailure>& openFailure() const { return m_openFailure; }
    // Of the open file.
    [[nodiscard]] const FileFormat& format() const { return m_format; }
    void setFormat(const FileFormat& format) { m_format = format; }
    // Queries, linked tables, forms and the like; empty while inactive.
    [[nodiscard]] const FileContents& contents() const { return m_contents; }
    void setContents(FileContents contents) { m_contents = std::move(contents); }
    // What of the open file could not be read; empty for a sound one, and while inactive.
    [[nodiscard]] const DamageReport& damage() const { return m_damage; }
    void setDamage(DamageReport damage) { m_damage = std::move(damage); }

    [[nodiscard]] TAdmMDBTable* findTable(std::string_view name) const; // exactly this name
    [[nodiscard]] TAdmMDBForeignKey* findForeignKeyByName(std::string_view name) const;
    // The relations whose referencing table is exactly this one, in the order of allForeignKeys.
    [[nodiscard]] std::vector<TAdmMDBForeignKey*> foreignKeysForTable(std::string_view tableName) const;

    [[nodiscard]] std::string dateWithFinderFormat(std::optional<Timestamp> date) const;

    // Equal names are ordered by folder.
    [[nodiscard]] int compareByName(const TAdmMDBObject& other) const override;
    // The one opened last comes first.
    [[nodiscard]] int compareByLastOpenDate(const TAdmMDBFile& other) const;

    [[nodiscard]] Information information() const override;

private:
    std::string m_path;
    std::string m_ext;
    std::uint64_t m_size = 0;
    Timestamp m_createDate;
    Timestamp m_modifyDate;
    Timestamp m_lastOpenDate;
    Tables m_tables;
    ForeignKeys m_allForeignKeys;
    FileContents m_contents;
    FileFormat m_format;
    DamageReport m_damage;
    std::optional<OpenFailure> m_openFailure;
    bool m_fActive = false;
};

} // namespace vellumo

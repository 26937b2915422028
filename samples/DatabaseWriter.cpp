// SPDX-License-Identifier: MIT
#include "samples/DatabaseWriter.h"

#include "samples/ComplexColumns.h"
#include "samples/DescriptionCheck.h"
#include "samples/Rc4.h"
#include "samples/SystemTables.h"
#include "samples/TableWriter.h"
#include "text/Format.h"

#include <filesystem>

namespace vellumo::samples {
namespace {

constexpr std::uint32_t mapPage = 1;

class DatabaseWriter {
public:
    DatabaseWriter(const DatabaseDescription& description, PageFile& file)
        : m_description(description)
        , m_file(file)
        , m_maps(file)
    {
    }

    [[nodiscard]] WriteResult write()
    {
        while (m_file.pageCount() < firstTablePage)
            m_file.allocate();
        for (std::size_t i = 0; i < m_description.tables.size(); ++i)
            m_tablePages.push_back(m_file.allocate());
        writeHeader();
        writeFreePages();
        if (!writeUserTables() || !writeSystemTables()) return std::move(m_result);
        m_maps.finish();
        m_result.pageCount = m_file.pageCount();
        return std::move(m_result);
    }

private:
    // Page 0. What follows the version is encoded with a key that is the same in every file.
    void writeHeader()
    {
        using namespace std::string_view_literals;
        const bool isJet3 = m_description.version == JetVersion::Jet3;
        Bytes page;
        page.reserve(m_file.pageSize());
        const auto newer = static_cast<std::uint32_t>(m_description.newerVersion);
        appendText(page, newer != 0 ? "\0\1\0\0Standard ACE DB\0"sv : "\0\1\0\0Standard Jet DB\0"sv);
        appendNumber<std::uint32_t>(page, newer != 0 ? newer : isJet3 ? 0 : 1);
        for (const std::uint32_t pointer :
            {mapPage << 8, mapPage << 8 | 1, objectsPage, acesPage, queriesPage, relationshipsPage})
            appendNumber<std::uint32_t>(page, pointer);
        page.resize(m_file.pageSize());
        constexpr std::uint16_t sortOrder = 0x0409;
        if (isJet3) {
            putNumber<std::uint16_t>(&page[0x38], 1);
            putNumber<std::uint16_t>(&page[0x3A], sortOrder);
        }
        putNumber<std::uint16_t>(&page[0x3C], 1252);
        putNumber<std::uint32_t>(&page[0x3E], m_description.databaseKey);
        if (!isJet3) writeJet4Header(page, sortOrder);
        constexpr std::uint8_t key[] = {0xC7, 0xDA, 0x39, 0x6B};
        applyRc4(std::span(page).subspan(0x18, isJet3 ? 126 : 128), key);
        m_file.write(0, page);
    }

    [[nodiscard]] std::uint8_t passwordByte(std::size_t i) const
    {
        const auto& password = m_description.password;
        return i % 2 == 0 && i / 2 < password.size() ? static_cast<std::uint8_t>(password[i / 2]) : std::uint8_t{0};
    }

    // Each byte of the password is combined with one of the creation day.
    void writeJet4Header(Bytes& page, std::uint16_t sortOrder) const
    {
        std::uint8_t day[4];
        putNumber<std::int32_t>(day, static_cast<std::int32_t>(m_description.created.days));
        for (std::size_t i = 0; i < 40; ++i)
            page[0x42 + i] = day[i % 4] ^ passwordByte(i);
        putNumber<std::uint16_t>(&page[0x6E], sortOrder);
        putNumber<std::uint64_t>(&page[0x72], std::bit_cast<std::uint64_t>(m_description.created.days));
        page[0x9C] = '4';
        page[0x9D] = '.';
        page[0x9E] = '0';
    }

    // Page 1: the map of free pages and an empty one. No page of a written file is free, which only the large form of a
    // map can say of files of any size: it names no page of bits.
    void writeFreePages()
    {
        const Bytes emptyMap(m_description.version == JetVersion::Jet3 ? 133 : 69);
        Bytes page(m_file.pageSize());
        const std::size_t header = m_description.version == JetVersion::Jet3 ? 8 : 12;
        page[0] = 1;
        page[1] = 1;
        putNumber<std::uint16_t>(&page[2], static_cast<std::uint16_t>(page.size() - header - 6 - 2 * emptyMap.size()));
        putNumber<std::uint32_t>(&page[4], mapPage);
        putNumber<std::uint16_t>(&page[header], 2);
        putNumber<std::uint16_t>(&page[header + 2], static_cast<std::uint16_t>(page.size() - emptyMap.size()));
        putNumber<std::uint16_t>(&page[header + 4], static_cast<std::uint16_t>(page.size() - 2 * emptyMap.size()));
        page[page.size() - emptyMap.size()] = 1;
        m_file.write(mapPage, page);
    }

    [[nodiscard]] bool writeUserTables()
    {
        const auto indexes = planIndexes(m_description);
        for (std::size_t i = 0; i < m_description.tables.size(); ++i) {
            if (!writeTable(m_description.tables[i], m_tablePages[i], indexes[i], false)) return false;
        }
        return true;
    }

    [[nodiscard]] bool writeSystemTables()
    {
        const auto version = m_description.version;
        std::string failedTable;
        const auto rows = catalogRows(m_description, m_tablePages, failedTable);
        if (!rows) {
            m_result.error = localizedFormat("A property of table <%@> cannot be stored.", {failedTable});
            return false;
        }
        return writeSystemTable(acesTable(version), acesPage)
            && writeSystemTable(queriesTable(m_description), queriesPage)
            && writeSystemTable(relationshipsTable(version, m_description.relations), relationshipsPage)
            && writeSystemTable(objectsTable(version, m_description.created, *rows), objectsPage);
    }

    [[nodiscard]] bool writeSystemTable(TableDescription table, std::uint32_t page)
    {
        DatabaseDescription alone;
        alone.version = m_description.version;
        alone.tables.push_back(std::move(table));
        const auto indexes = planIndexes(alone);
        return writeTable(alone.tables[0], page, indexes[0], true);
    }

    [[nodiscard]] bool writeTable(
        const TableDescription& table, std::uint32_t page, const TableIndexes& indexes, bool isSystem)
    {
        TableWriter writer(m_file, m_maps, table, page);
        if (!writer.write(indexes, m_tablePages, isSystem)) {
            m_result.error = writer.error();
            return false;
        }
        if (!isSystem) {
            m_result.tables.push_back(std::move(writer.places()));
            m_result.tables.back().name = table.name;
        }
        return true;
    }

    const DatabaseDescription& m_description;
    PageFile& m_file;
    UsageMaps m_maps;
    std::vector<std::uint32_t> m_tablePages;
    WriteResult m_result;
};

} // namespace

WriteResult writeDatabase(const DatabaseDescription& given, const std::string& path)
{
    WriteResult result;
    result.error = checkDescription(given);
    if (!result.ok()) return result;
    const auto description = withValueTables(given);
    auto file = PageFile::create(path, description.version, description.databaseKey);
    if (file == nullptr) {
        result.error = localizedFormat("Unable to write file <%@>.", {path});
        return result;
    }
    result = DatabaseWriter(description, *file).write();
    if (!file->finish() && result.ok()) result.error = localizedFormat("Unable to write file <%@>.", {path});
    std::error_code ignored; // there is nothing more to tell than the first error
    if (!result.ok() && std::filesystem::is_regular_file(path, ignored)) std::filesystem::remove(path, ignored);
    return result;
}

} // namespace vellumo::samples

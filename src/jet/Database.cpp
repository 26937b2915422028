#include "jet/DatabaseImpl.h"

#include "embedded/TAdmBlobData.h"
#include "jet/ByteReader.h"
#include "jet/Definition.h"
#include "jet/Properties.h"
#include "jet/RowReader.h"
#include "jet/UsageMap.h"
#include "rows/RowStore.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <numeric>
#include <sys/stat.h>
#include <unistd.h>

namespace vellumo::jet {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t jet3PageSize = 2048;
constexpr std::size_t jet4PageSize = 4096;
constexpr std::uint16_t rowOffsetMask = 0x1FFF;
constexpr std::size_t rowOffsetsBehindCount = 2;
constexpr std::size_t definitionHeader = 8;         // of every page of a definition; its total length stands behind it
constexpr std::size_t largestDefinition = 16 << 20; // far above 255 columns and all indexes a table can have
constexpr std::uint32_t catalogPage = 2;
constexpr std::uint32_t typeMask = 0x7F;       // of a catalogue entry; forms and the like have negative types
constexpr std::uint32_t pageMask = 0x00FFFFFF; // of its Id

// The library's texts and its search for files depend on these.
void clearLibraryEnvironment()
{
    for (const auto* variable : {"MDBPATH", "MDBICONV", "MDB_JET3_CHARSET", "MDBOPTS"})
        unsetenv(variable);
}

struct FileDescriptor {
    explicit FileDescriptor(const char* path)
        : value(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
    }
    ~FileDescriptor()
    {
        if (value >= 0) ::close(value);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int value;
};

// The size of the file when it is a database in one of the two formats that are read. The library itself does not
// look at the mark, and takes a file of zeros for a database.
std::optional<std::uint64_t> sizeOfDatabase(const std::string& path)
{
    const FileDescriptor file(path.c_str());
    struct stat facts { };
    if (file.value < 0 || fstat(file.value, &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    std::uint8_t start[24];
    if (pread(file.value, start, sizeof start, 0) != static_cast<ssize_t>(sizeof start)) return std::nullopt;
    constexpr std::string_view mark("\0\1\0\0Standard Jet DB\0", 20);
    if (std::string_view(reinterpret_cast<const char*>(start), mark.size()) != mark) return std::nullopt;
    const auto version = load32(start + 20);
    if (version > MDB_VER_JET4) return std::nullopt;
    const auto size = static_cast<std::uint64_t>(facts.st_size);
    if (size < (version == MDB_VER_JET3 ? jet3PageSize : jet4PageSize)) return std::nullopt;
    return size;
}

NameDecoder nameDecoder(const Database::Impl& database)
{
    return [rules = TextRules{database.isJet3(), &database.codePage}](Bytes stored) {
        TextColumnBuilder text;
        appendStoredText(stored, rules, text);
        return std::string(text.openText());
    };
}

std::vector<std::uint32_t> dataPages(Database::Impl& database, const MdbTableDef& library)
{
    const Bytes map(library.usage_map, library.usage_map == nullptr ? 0 : library.map_sz);
    auto pages =
        pagesOfUsageMap(map, database.pageCount(), [&](std::uint32_t page) { return database.otherPage(page); });
    if (pages) return std::move(*pages);
    return database.dataPagesOf(library.entry->table_pg);
}

std::uint32_t unsignedNumber(std::string_view text)
{
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return static_cast<std::uint32_t>(number);
}

std::shared_ptr<TAdmBlobData> rawObject(Bytes stored)
{
    const auto bytes = std::as_bytes(stored);
    return std::make_shared<TAdmBlobData>(std::vector<std::byte>(bytes.begin(), bytes.end()), std::string());
}

// Object cells are kept as they are stored.
RowStore readAllRows(Database& database, const TableDef& table)
{
    RowStore rows({}, cellKinds(table));
    RowReader reader(database, table, rawObject);
    RowGroupBuilder builder(rows.kinds());
    std::vector<RowGroup> groups;
    for (const auto page : table.dataPages)
        reader.readPage(page, builder, groups);
    groups.push_back(builder.take());
    for (auto& group : groups)
        rows.append(std::move(group));
    return rows;
}

std::optional<std::size_t> columnNamed(const TableDef& table, std::string_view name)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (table.columns[i].name == name) return i;
    return std::nullopt;
}

} // namespace

Database::Impl::Impl(HandlePtr openHandle, std::uint64_t sizeOfFile)
    : handle(std::move(openHandle))
    , fileSize(sizeOfFile)
    , codePage(handle->f->code_page)
    , m_pageCount(static_cast<std::uint32_t>(sizeOfFile / static_cast<std::uint64_t>(handle->fmt->pg_size)))
{
}

Bytes Database::Impl::otherPage(std::uint32_t page)
{
    if (page >= m_pageCount) return {};
    if (page != m_otherPage) {
        m_otherPage = 0;
        if (mdb_read_alt_pg(handle.get(), page) != handle->fmt->pg_size) return {};
        m_otherPage = page;
    }
    return {handle->alt_pg_buf, pageSize()};
}

const std::vector<std::uint32_t>& Database::Impl::dataPagesOf(std::uint32_t definitionPage)
{
    constexpr std::size_t ownerOffset = 4;
    if (!m_pagesByOwner) {
        m_pagesByOwner.emplace();
        for (std::uint32_t number = 1; number < m_pageCount; ++number)
            if (const auto page = otherPage(number); !page.empty() && page[0] == MDB_PAGE_DATA)
                (*m_pagesByOwner)[load32(&page[ownerOffset])].push_back(number);
    }
    return (*m_pagesByOwner)[definitionPage];
}

bool Database::Impl::readPage(std::uint32_t page)
{
    if (page < m_pageCount && mdb_read_pg(handle.get(), page) == handle->fmt->pg_size) return true;
    // The library takes a page that it failed to read for the current one.
    handle->cur_pg = 0;
    return false;
}

Bytes Database::Impl::row(std::uint32_t pointer)
{
    const auto page = otherPage(pointer >> 8);
    if (page.empty() || page[0] != MDB_PAGE_DATA) return {};
    const std::size_t number = pointer & 0xFF;
    const std::size_t countOffset = handle->fmt->row_count_offset;
    const auto count = load16(&page[countOffset]);
    const auto entry = countOffset + rowOffsetsBehindCount + 2 * number;
    if (number >= count || entry + 2 > page.size()) return {};
    const std::size_t start = load16(&page[entry]) & rowOffsetMask;
    const std::size_t end = number == 0 ? page.size() : load16(&page[entry - 2]) & rowOffsetMask;
    if (start > end || end > page.size()) return {};
    return page.subspan(start, end - start);
}

std::unique_ptr<LibraryTable> LibraryTable::open(Database::Impl& database, std::uint32_t definitionPage)
{
    if (definitionPage == 0 || definitionPage >= database.pageCount()) return nullptr;
    auto table = std::make_unique<LibraryTable>();
    table->entry.mdb = database.handle.get();
    table->entry.object_type = MDB_TABLE;
    table->entry.table_pg = definitionPage;
    table->def.reset(mdb_read_table(&table->entry));
    // The columns must be read at once: the library goes on from where it stopped reading the definition.
    const bool hasColumns = table->def && mdb_read_columns(table->def.get()) != nullptr;
    database.forgetOtherPage();
    return hasColumns ? std::move(table) : nullptr;
}

std::vector<std::size_t> mdb_read_columns_without_sorting(const std::vector<ColumnDef>& columns)
{
    std::vector<std::size_t> order(columns.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
        [&](auto a, auto b) { return (columns[a].number & 0xFF) < (columns[b].number & 0xFF); });
    return order;
}

bool LibraryTable::agrees(const TableDef& table) const
{
    if (def->columns == nullptr || def->columns->len != table.columns.size() || def->num_cols != table.columns.size())
        return false;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const auto* column = static_cast<const MdbColumn*>(g_ptr_array_index(def->columns, i));
        if (column->col_type != table.columns[table.numberOrder[i]].typeCode) return false;
    }
    return true;
}

Database::Database(std::unique_ptr<Impl> impl)
    : m_impl(std::move(impl))
{
}

Database::~Database() = default;

std::unique_ptr<Database> Database::open(const std::string& path)
{
    static std::once_flag isEnvironmentCleared;
    std::call_once(isEnvironmentCleared, clearLibraryEnvironment);
    const auto size = sizeOfDatabase(path);
    if (!size) return nullptr;
    HandlePtr handle(mdb_open(path.c_str(), MDB_NOFLAGS));
    if (!handle || handle->f->jet_version > MDB_VER_JET4) return nullptr;
    return std::unique_ptr<Database>(new Database(std::make_unique<Impl>(std::move(handle), *size)));
}

int Database::formatVersion() const { return static_cast<int>(m_impl->handle->f->jet_version); }

// Not by the library: it never comes back from a damaged property value, and loses characters beyond U+FFFF.
std::optional<std::vector<CatalogEntry>> Database::readCatalog()
{
    const auto objects = readTableAt(catalogPage);
    if (!objects) return std::nullopt;
    const auto id = columnNamed(*objects, "Id");
    const auto name = columnNamed(*objects, "Name");
    const auto type = columnNamed(*objects, "Type");
    const auto flags = columnNamed(*objects, "Flags");
    if (!id || !name || !type || !flags) return std::nullopt;
    const auto properties = columnNamed(*objects, "LvProp");
    const auto rows = readAllRows(*this, *objects);
    std::vector<CatalogEntry> catalog;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        CatalogEntry entry;
        entry.name = rows.text(row, *name);
        entry.type = static_cast<int>(unsignedNumber(rows.text(row, *type)) & typeMask);
        entry.flags = unsignedNumber(rows.text(row, *flags));
        entry.page = unsignedNumber(rows.text(row, *id)) & pageMask;
        if (properties && rows.kinds()[*properties] == CellKind::Blob) {
            const auto value = rows.value(row, *properties);
            if (const auto* blob = std::get_if<std::shared_ptr<TAdmBlobData>>(&value)) entry.properties = *blob;
        }
        catalog.push_back(std::move(entry));
    }
    return catalog;
}

std::optional<TableDef> Database::readTable(const CatalogEntry& entry)
{
    auto table = readTableAt(entry.page);
    if (!table) return std::nullopt;
    table->name = entry.name;
    if (!entry.properties) return table;
    const auto data = entry.properties->data();
    const Bytes bytes(reinterpret_cast<const std::uint8_t*>(data.data()), data.size());
    auto properties = parseProperties(bytes, {m_impl->isJet3(), &m_impl->codePage});
    for (auto& column : table->columns)
        if (const auto found = properties.find(column.name); found != properties.end())
            column.properties = std::move(found->second);
    return table;
}

std::optional<TableDef> Database::readTableAt(std::uint32_t page)
{
    auto raw = parseDefinition(readDefinition(page), m_impl->isJet3(), nameDecoder(*m_impl));
    if (!raw) return std::nullopt;
    const auto library = LibraryTable::open(*m_impl, page);
    if (!library) return std::nullopt;
    TableDef table;
    table.definitionPage = page;
    table.statedRowCount = raw->rowCount;
    table.columns = std::move(raw->columns);
    table.numberOrder = mdb_read_columns_without_sorting(table.columns);
    table.indices = std::move(raw->indices);
    if (!library->agrees(table)) return std::nullopt;
    table.dataPages = dataPages(*m_impl, *library->def);
    return table;
}

// All pages of the definition joined, the headers of those behind the first left out; empty when a page is none.
std::vector<std::uint8_t> Database::readDefinition(std::uint32_t firstPage)
{
    std::vector<std::uint8_t> bytes;
    auto next = firstPage;
    while (next != 0 && bytes.size() < largestDefinition) {
        const auto page = m_impl->otherPage(next);
        if (page.empty() || page[0] != MDB_PAGE_TABLE) return {};
        const auto content = bytes.empty() ? page : page.subspan(definitionHeader);
        bytes.insert(bytes.end(), content.begin(), content.end());
        next = load32(&page[4]);
    }
    return next == 0 ? bytes : std::vector<std::uint8_t>();
}

std::uint64_t Database::fileSize() const { return m_impl->fileSize; }

} // namespace vellumo::jet

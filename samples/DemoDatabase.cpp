// SPDX-License-Identifier: MIT
#include "samples/DemoDatabase.h"

#include "samples/DemoData.h"
#include "samples/DemoDocuments.h"
#include "samples/OleObjects.h"
#include "samples/Random.h"

#include <algorithm>

namespace vellumo::samples {
namespace {

using Rows = std::vector<std::vector<Value>>;

constexpr int orderCount = 420;
constexpr int firstOrderNumber = 10001;

Value textOrNull(const char* text)
{
    if (text == nullptr) return {};
    return std::string(text);
}

ColumnDescription column(std::string name, ColumnType type, std::string description = {}, int size = 0)
{
    ColumnDescription made{.name = std::move(name), .type = type, .size = size};
    made.compressed = type == ColumnType::Text || type == ColumnType::Memo;
    if (!description.empty()) made.properties.push_back(textProperty("Description", std::move(description)));
    return made;
}

ColumnDescription captioned(ColumnDescription made, std::string caption)
{
    made.properties.push_back(memoProperty("Caption", std::move(caption)));
    return made;
}

// Stores the first column of the source and shows the second.
ColumnDescription lookedUp(ColumnDescription made, std::string source)
{
    made.properties.push_back({"DisplayControl", PropertyType::Integer, 111});
    made.properties.push_back(textProperty("RowSourceType", "Table/Query"));
    made.properties.push_back(memoProperty("RowSource", std::move(source)));
    made.properties.push_back({"BoundColumn", PropertyType::Integer, 1});
    made.properties.push_back({"ColumnCount", PropertyType::Integer, 2});
    made.properties.push_back(textProperty("ColumnWidths", "0;2880"));
    return made;
}

ColumnDescription withDefault(ColumnDescription made, std::string value)
{
    made.properties.push_back(memoProperty("DefaultValue", std::move(value)));
    return made;
}

// A price with two decimals, never empty.
ColumnDescription priceColumn(std::string name, std::string description)
{
    auto made = withDefault(column(std::move(name), ColumnType::Currency, std::move(description)), "0");
    made.properties.push_back(byteProperty("DecimalPlaces", 2));
    made.properties.push_back(textProperty("Format", "Currency"));
    return made;
}

ColumnDescription textColumn(std::string name, int size, std::string description, bool required = false)
{
    auto made = column(std::move(name), ColumnType::Text, std::move(description), size);
    made.properties.push_back(booleanProperty("AllowZeroLength", !required));
    made.properties.push_back(booleanProperty("Required", required));
    made.properties.push_back(booleanProperty("UnicodeCompression", true));
    return made;
}

ColumnDescription keyColumn(std::string name, std::string description)
{
    auto made = column(std::move(name), ColumnType::Long, std::move(description));
    made.autonumber = true;
    return made;
}

ColumnDescription hyperlinkColumn(std::string name, std::string description)
{
    auto made = column(std::move(name), ColumnType::Memo, std::move(description));
    made.hyperlink = true;
    return made;
}

IndexDescription primaryKey(std::vector<std::string> columns)
{
    IndexDescription index{.name = "PrimaryKey", .primary = true};
    for (auto& name : columns)
        index.columns.push_back({std::move(name)});
    return index;
}

IndexDescription plainIndex(const std::string& name) { return {.name = name, .columns = {{name}}}; }

Date randomDay(Random& random, int firstYear, int yearCount)
{
    const int year = firstYear + random.below(yearCount);
    const int month = 1 + random.below(12);
    return dateOf(year, month, 1 + random.below(28));
}

std::string mailLink(const std::string& address)
{
    auto link = address;
    link.append("#mailto:").append(address).append("#");
    return link;
}

Value cents(std::int64_t amount) { return Currency{amount * 100}; }

TableDescription categoriesTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Categories"};
    table.columns = {keyColumn("CategoryID", ""), textColumn("CategoryName", 40, "Name on the shelf", true),
        captioned(column("Description", Memo), "In other languages"), column("Picture", Ole, "Shown in the catalogue")};
    table.indexes = {
        primaryKey({"CategoryID"}), {.name = "CategoryName", .columns = {{"CategoryName"}}, .unique = true}};
    table.properties = {textProperty("Description", "What the shop sells")};
    Rows rows;
    for (const auto& category : demoCategories()) {
        rows.push_back({static_cast<std::int64_t>(rows.size() + 1), category.name, category.description,
            pictureObject(encodeBmp(drawProduct(category.motif, category.color)))});
    }
    table.rows = rowsOf(std::move(rows));
    return table;
}

TableDescription suppliersTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Suppliers"};
    table.columns = {keyColumn("SupplierID", ""), textColumn("CompanyName", 60, "As on the invoice", true),
        textColumn("ContactName", 40, ""), textColumn("City", 30, ""), textColumn("Country", 30, ""),
        textColumn("Phone", 24, "With country code"), hyperlinkColumn("HomePage", "Opens in the browser")};
    table.indexes = {primaryKey({"SupplierID"}), plainIndex("CompanyName")};
    Rows rows;
    for (const auto& supplier : demoSuppliers()) {
        rows.push_back({static_cast<std::int64_t>(rows.size() + 1), supplier.company, supplier.contact, supplier.city,
            supplier.country, supplier.phone, textOrNull(supplier.homepage)});
    }
    table.rows = rowsOf(std::move(rows));
    return table;
}

std::vector<Value> productRow(const DemoProduct& product, std::int64_t id, Random& random)
{
    Guid code;
    for (auto& byte : code.bytes)
        byte = static_cast<std::uint8_t>(random.below(256));
    const auto motif = demoCategories()[static_cast<std::size_t>(product.category - 1)].motif;
    Value weight;
    if (product.weight > 0) weight = static_cast<float>(product.weight);
    const bool isFood = product.category <= 3;
    return {id, product.name, product.supplier, product.category, product.unit, cents(product.cents), product.stock,
        random.below(4) * 5, weight, numericOf(isFood ? 700 : 1900), product.discontinued, code,
        pictureObject(encodeBmp(drawProduct(motif, product.color)))};
}

TableDescription productsTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Products"};
    auto tax = column("TaxRate", ColumnType::Numeric, "Per cent");
    tax.precision = 5;
    tax.scale = 2;
    table.columns = {keyColumn("ProductID", "Given out by the database"), textColumn("ProductName", 60, "", true),
        lookedUp(captioned(column("SupplierID", Long, "Who delivers it"), "Supplier"),
            "SELECT SupplierID, CompanyName FROM Suppliers ORDER BY CompanyName;"),
        lookedUp(captioned(column("CategoryID", Long), "Category"), "Categories"),
        textColumn("QuantityPerUnit", 30, "Tin, bag, jar .."),
        priceColumn("UnitPrice", "Without tax · Τιμή · Цена · 価格 · السعر"),
        withDefault(column("UnitsInStock", Integer), "0"), column("ReorderLevel", Byte, "Order again below this"),
        column("Weight", Single, "Kilograms, packed"), tax, column("Discontinued", Boolean, "No longer ordered"),
        column("ProductCode", ColumnType::Guid), column("Picture", Ole)};
    table.indexes = {primaryKey({"ProductID"}), plainIndex("ProductName"), plainIndex("CategoryID"),
        {.name = "Stock", .columns = {{"UnitsInStock", false}, {"ProductName"}}}};
    table.properties = {textProperty("Description", "Everything on the shelves")};
    Random random(7);
    Rows rows;
    for (const auto& product : demoProducts())
        rows.push_back(productRow(product, static_cast<std::int64_t>(rows.size() + 1), random));
    table.rows = rowsOf(std::move(rows));
    return table;
}

TableDescription customersTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Customers"};
    table.columns = {keyColumn("CustomerID", "Αριθμός · Номер · 番号 · رقم"), textColumn("CustomerName", 60, "", true),
        textColumn("City", 40, "Πόλη · Город · 都市 · مدينة"), textColumn("Country", 30, ""),
        captioned(hyperlinkColumn("Email", ""), "E-mail"),
        captioned(column("CustomerSince", DateTime), "Customer since"),
        column("CreditLimit", ColumnType::Currency, "Empty: pays in advance"), column("Newsletter", Boolean),
        column("Note", Memo, "Anything worth knowing")};
    table.indexes = {
        primaryKey({"CustomerID"}), plainIndex("CustomerName"), {.name = "Place", .columns = {{"Country"}, {"City"}}}};
    Random random(11);
    Rows rows;
    for (const auto& customer : demoCustomers()) {
        const std::string email = customer.email == nullptr ? "" : customer.email;
        const auto since = randomDay(random, 1998, 24);
        Value credit;
        if (random.below(3) > 0) credit = cents(25'000L * (1 + random.below(20)));
        rows.push_back({static_cast<std::int64_t>(rows.size() + 1), customer.name, customer.city, customer.country,
            email.empty() ? Value{} : Value{mailLink(email)}, since, credit, random.below(2) == 1,
            textOrNull(customer.note)});
    }
    table.rows = rowsOf(std::move(rows));
    return table;
}

TableDescription employeesTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Employees"};
    table.columns = {keyColumn("EmployeeID", ""), textColumn("LastName", 30, "", true),
        textColumn("FirstName", 30, "", true), textColumn("Title", 30, ""), column("BirthDate", DateTime),
        column("HireDate", DateTime, "First day at work"), captioned(column("ReportsTo", Long), "Reports to"),
        column("Photo", Ole), column("Notes", Memo)};
    table.indexes = {primaryKey({"EmployeeID"}), {.name = "FullName", .columns = {{"LastName"}, {"FirstName"}}}};
    Random random(3);
    Rows rows;
    for (const auto& person : demoEmployees()) {
        rows.push_back({static_cast<std::int64_t>(rows.size() + 1), person.lastName, person.firstName, person.title,
            randomDay(random, person.birthYear, 1), randomDay(random, person.hireYear, 1),
            person.reportsTo == 0 ? Value{} : Value{person.reportsTo},
            pictureObject(encodeBmp(drawPortrait(person.looks))), textOrNull(person.notes)});
    }
    table.rows = rowsOf(std::move(rows));
    return table;
}

Value remark(Random& random)
{
    constexpr const char* remarks[] = {"Gift wrapping, please.", "Ring twice.", "Bitte keine Folie.",
        "С днём рождения! 🎉", "Παράδοση μετά τις 18:00", "のし紙をお願いします", "هدية", ""};
    const auto pick = static_cast<std::size_t>(random.below(30));
    if (pick >= std::size(remarks)) return {};
    return std::string(remarks[pick]);
}

// Orders come in the order of their dates, a few a week.
Rows orderRows()
{
    Random random(23);
    const auto customers = demoCustomers();
    auto day = dateOf(2021, 1, 4).days;
    Rows rows;
    for (int i = 0; i < orderCount; ++i) {
        day += 1 + random.below(4);
        const auto customer = static_cast<std::size_t>(random.below(static_cast<int>(customers.size())));
        const double time = (8 * 60 + random.below(10 * 60)) / 1440.0;
        const bool isShipped = i < orderCount - 12 || random.below(2) == 0;
        rows.push_back({firstOrderNumber + i, static_cast<std::int64_t>(customer + 1), 2 + random.below(7),
            Date{day + time}, Date{day + 14}, isShipped ? Value{Date{day + 1 + random.below(9)}} : Value{},
            cents(350 + 5 * random.below(400)), customers[customer].name, isShipped && random.below(12) > 0,
            remark(random)});
    }
    return rows;
}

TableDescription ordersTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Orders"};
    table.columns = {keyColumn("OrderID", "Printed on the parcel"),
        lookedUp(captioned(column("CustomerID", Long), "Customer"), "SELECT CustomerID, CustomerName FROM Customers;"),
        lookedUp(captioned(column("EmployeeID", Long), "Sold by"),
            "SELECT EmployeeID, [LastName] & \", \" & [FirstName] AS Name FROM Employees;"),
        column("OrderDate", DateTime), column("RequiredDate", DateTime),
        column("ShippedDate", DateTime, "Empty: not yet"), priceColumn("Freight", ""),
        textColumn("ShipName", 60, "Παραλήπτης · Получатель · お届け先 · المستلم"), column("Paid", Boolean),
        column("Remark", Text, "", 120)};
    table.indexes = {primaryKey({"OrderID"}), plainIndex("OrderDate"), plainIndex("ShippedDate")};
    table.rows = rowsOf(orderRows());
    return table;
}

// One to five different products an order.
Rows orderDetailRows()
{
    Random random(41);
    const auto products = demoProducts();
    Rows rows;
    for (int i = 0; i < orderCount; ++i) {
        const int lines = 1 + random.below(5);
        auto product = random.below(static_cast<int>(products.size()));
        for (int line = 0; line < lines; ++line) {
            const auto& item = products[static_cast<std::size_t>(product)];
            const float discount = random.below(6) == 0 ? 0.05F * static_cast<float>(1 + random.below(3)) : 0;
            rows.push_back({firstOrderNumber + i, product + 1, cents(item.cents), 1 + random.below(12), discount});
            product = (product + 7) % static_cast<int>(products.size());
        }
    }
    return rows;
}

TableDescription orderDetailsTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Order Details"};
    table.columns = {column("OrderID", Long),
        lookedUp(captioned(column("ProductID", Long), "Product"), "Product Names"),
        priceColumn("UnitPrice", "At the time of the order"), withDefault(column("Quantity", Integer), "1"),
        column("Discount", Single, "Share of the price, 0 to 1")};
    table.indexes = {primaryKey({"OrderID", "ProductID"}), plainIndex("ProductID")};
    table.rows = rowsOf(orderDetailRows());
    return table;
}

Bytes document(std::string_view className, ByteSpan content)
{
    const auto classes = oleClasses();
    const auto found = std::find_if(
        classes.begin(), classes.end(), [&](const OleClass& oleClass) { return oleClass.className == className; });
    return documentObject(*found, content);
}

Rows documentRows()
{
    Rows rows;
    const auto add = [&](const char* title, const char* kind, Bytes content) {
        const auto number = static_cast<int>(rows.size());
        const auto size = static_cast<std::int64_t>(content.size());
        rows.push_back({number + 1, title, kind, dateOf(2022, 1 + number % 12, 3 + number), size, std::move(content)});
    };
    add("Opening hours", "Package",
        packageObject("opening-hours.txt", asBytes("Monday to Friday 9:30 - 18:00\r\nSaturday 10:00 - 16:00\r\n")));
    add("Price list, spring", "Package",
        packageObject("prices.csv", asBytes("product;price\r\nAssam Breakfast;8.95\r\nHouse Blend;21.50\r\n")));
    add("Delivery terms", "Package", packageObject("terms.pdf", asBytes(pdfDocument("Delivery within ten days."))));
    add("Read me", "Package", packageObject("README", asBytes("A file whose name has no extension.\n")));
    add("Shelf labels", "WordPad.Document.1",
        document("WordPad.Document.1", asBytes(richTextDocument("Second batch."))));
    add("Letter to Harbour Leaf", "Word.Document.12",
        document("Word.Document.12", wordDocument("Dear Agnes, the tins arrived.")));
    add("House rules", "Word.OpenDocumentText.12",
        document("Word.OpenDocumentText.12", openDocumentText("The last one out waters the plants.")));
    add("Shop window", "PBrush", pictureObject(encodeBmp(drawProduct(Motif::Plant, {194, 102, 68}))));
    add("Newsletter picture", "Attachment",
        attachmentRecord("png", encodePng(drawProduct(Motif::Mug, {62, 98, 168})), AttachmentStorage::Stored));
    add("Minutes of May", "Attachment",
        attachmentRecord(
            "txt", asBytes("Present: all.\nThe kettle is to be replaced.\n"), AttachmentStorage::Deflated));
    add("Invoice template", "Attachment",
        attachmentRecord("pdf", asBytes(pdfDocument("Invoice")), AttachmentStorage::Deflated));
    rows.push_back({static_cast<int>(rows.size()) + 1, "Lease (on paper only)", {}, dateOf(1996, 3, 1), {}, {}});
    return rows;
}

TableDescription documentsTable()
{
    using enum ColumnType;
    TableDescription table{.name = "Documents"};
    table.columns = {keyColumn("DocumentID", ""), textColumn("Title", 60, "Τίτλος · Название · 題名 · العنوان", true),
        textColumn("Kind", 40, "How the document is embedded"), column("Added", DateTime),
        column("Size", Long, "Bytes"), column("Content", Ole, "The document itself")};
    table.indexes = {primaryKey({"DocumentID"}), plainIndex("Title")};
    table.rows = rowsOf(documentRows());
    return table;
}

RelationDescription relation(std::string table, std::string column, std::string referencedTable, std::string key)
{
    RelationDescription made;
    made.name = referencedTable + table;
    std::erase(made.name, ' ');
    made.table = std::move(table);
    made.columns = {std::move(column)};
    made.referencedTable = std::move(referencedTable);
    made.referencedColumns = {std::move(key)};
    return made;
}

std::vector<RelationDescription> demoRelations()
{
    auto details = relation("Order Details", "OrderID", "Orders", "OrderID");
    details.cascadeUpdates = true;
    details.cascadeDeletes = true;
    auto orders = relation("Orders", "CustomerID", "Customers", "CustomerID");
    orders.cascadeUpdates = true;
    auto reportsTo = relation("Employees", "ReportsTo", "Employees", "EmployeeID");
    reportsTo.enforced = false;
    return {details, orders, reportsTo, relation("Orders", "EmployeeID", "Employees", "EmployeeID"),
        relation("Order Details", "ProductID", "Products", "ProductID"),
        relation("Products", "CategoryID", "Categories", "CategoryID"),
        relation("Products", "SupplierID", "Suppliers", "SupplierID")};
}

QueryRow part(int attribute, std::string name1, std::string expression = {}, std::string name2 = {}, int flag = 0)
{
    return {attribute, std::move(name1), std::move(name2), std::move(expression),
        flag == 0 ? std::nullopt : std::optional(flag)};
}

// Queries and what else stands around the tables of a database.
std::vector<CatalogEntry> demoEntries()
{
    constexpr int kind = 1, parameter = 2, table = 5, column = 6, join = 7, where = 8, groupBy = 9, orderBy = 11;
    return {{.name = "Product Names",
                .query = {part(table, "Products"), part(column, "", "Products.ProductID"),
                    part(column, "", "Products.ProductName"), part(orderBy, "", "Products.ProductName")}},
        {.name = "Sales by Product",
            .query = {part(table, "Order Details"), part(table, "Products"), part(column, "", "Products.ProductName"),
                part(column, "Sales", "Sum([Order Details].[UnitPrice]*[Quantity])"),
                part(join, "Products", "Products.ProductID = [Order Details].ProductID", "Order Details", 1),
                part(groupBy, "", "Products.ProductName")}},
        {.name = "Raise Prices",
            .flags = 0x30,
            .query = {part(kind, "", "", "", 4), part(parameter, "Per cent", "", "", 7), part(table, "Products"),
                part(column, "", "[UnitPrice]*(1+[Per cent]/100)", "Products.UnitPrice"),
                part(where, "", "Products.Discontinued = False")}},
        {.name = "Exchange Rates",
            .type = 6,
            .database = "C:\\Shop\\Rates.xls",
            .connect = "Excel 8.0;HDR=YES",
            .foreignName = "Rates$"},
        {.name = "Order Entry", .type = -32768}, {.name = "Catalogue", .type = -32764},
        {.name = "Prices", .type = -32761}};
}

} // namespace

DatabaseDescription demoDatabase()
{
    DatabaseDescription shop;
    shop.tables = {customersTable(), ordersTable(), orderDetailsTable(), productsTable(), categoriesTable(),
        suppliersTable(), employeesTable(), documentsTable()};
    shop.relations = demoRelations();
    shop.otherEntries = demoEntries();
    return shop;
}

} // namespace vellumo::samples

// SPDX-License-Identifier: MIT
// Writes small good inputs for the fuzz targets: make_seeds FOLDER makes a folder in it for each of them.
#include "embedded/OleCells.h"
#include "fuzz/RowTable.h"
#include "jet/PageBuilder.h"
#include "samples/ZipFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

using namespace vellumo;
using namespace vellumo::testing;
using namespace std::string_literals;

struct Seed {
    std::string name;
    Buffer content;
};

// A file small enough to be mutated well whose list of table blocks goes on in an extension block: 110 times the same
// block.
Buffer extendedCompoundFile(const Buffer& stream)
{
    constexpr std::uint32_t tableBlocks = 110;
    constexpr std::uint32_t extension = 119;
    auto file = writeCompoundFile({7, 6, {{"Contents", stream}}});
    const auto tableBlock = file.tableBlock(0);
    file.bytes.resize(file.offsetOfBlock(extension));
    for (int i = 0; i < 31; ++i)
        addU32(file.bytes, tableBlock);
    addU32(file.bytes, 0xFFFFFFFE);
    putU32(file.bytes, 44, tableBlocks);
    putU32(file.bytes, 68, extension);
    putU32(file.bytes, 72, 1);
    for (std::size_t i = 0; i < 109; ++i)
        putU32(file.bytes, 76 + 4 * i, tableBlock);
    return file.bytes;
}

std::vector<Seed> compoundFiles()
{
    const auto small = bytesOf("{\\rtf1 a short document}");
    const Buffer big(4200, std::byte{'x'});
    std::vector<Seed> seeds;
    for (const unsigned shift : {7U, 9U, 12U}) {
        const auto name = "shift" + std::to_string(shift);
        seeds.push_back(
            {name + "-small", writeCompoundFile({shift, 6, {{"Contents", small}, {"Package", small}}}).bytes});
        seeds.push_back(
            {name + "-big", writeCompoundFile({shift, 6, {{"EmbeddedOdf", big}, {"\5Info", small}}}).bytes});
        seeds.push_back({name + "-folder", writeCompoundFile({shift, 6, {{"Folder/Inner", small}}}).bytes});
    }
    seeds.push_back({"extended", extendedCompoundFile(small)});
    return seeds;
}

void addPictures(std::vector<Seed>& seeds)
{
    const auto dib = smallBitmap();
    const auto presentation = presentationOf("DIB", dib);
    auto shown = objectCell("StaticDib", {});
    shown.insert(shown.end(), presentation.begin(), presentation.end());
    const auto contents = [](const Buffer& content) {
        return writeCompoundFile({7, 6, {{"CONTENTS", content}, {"\1Ole10Native", content}}}).bytes;
    };
    seeds.push_back({"paint", objectCell("Paint.Picture", contents(dib))});
    seeds.push_back({"static-bitmap", staticCell("DIB", dib)});
    seeds.push_back({"static-metafile", staticCell("METAFILEPICT", smallMetafile())});
    seeds.push_back({"presentation", shown});
    seeds.push_back({"bare-bitmap", dib});
    seeds.push_back({"acrobat", objectCell("AcroExch.Document.7", contents(bytesOf("%PDF-1.4")))});
    seeds.push_back({"link", linkCell("C:\\Data\\Caf\xE9.xls", presentation)});
    seeds.push_back({"package-in-ole2", objectCell("Package", contents(packageNative("x/..\\a.b", bytesOf("file"))))});
}

void addBareFiles(std::vector<Seed>& seeds)
{
    const auto archive = vellumo::samples::zipFile({{"[Content_Types].xml", "<a/>"}, {"word/document.xml", "<b/>"}});
    seeds.push_back({"zip", bytesOf({reinterpret_cast<const char*>(archive.data()), archive.size()})});
    seeds.push_back({"doc", writeCompoundFile({7, 6, {{"WordDocument", bytesOf("text")}}}).bytes});
    const std::string_view files[] = {{"\0\0\1\0\1\0\x10\x10\0\0\1\0\x18\0\1\0\0\0\x16\0\0\0x", 23},
        "\xFF\xFB\x90\x44 a sound frame", "<?xml version='1.0'?><html>", "BM", "RIFF\4   WAVE", "Viele Gr\xFC\xDF\x65"};
    for (const auto file : files)
        seeds.push_back({"bare-" + std::to_string(seeds.size()), bytesOf(file)});
}

std::vector<Seed> cells()
{
    const auto text = bytesOf("plain text, long enough to be deflated deflated deflated deflated");
    const auto record = attachmentRecord("txt", text);
    const auto recordSize = static_cast<std::uint32_t>(record.size());
    std::vector<Seed> seeds{
        {"package", objectCell("Package", packageNative("report.pdf", text))},
        {"picture", objectCell("PBrush", bytesOf("BM......"))},
        {"unknown", objectCell("Some.Class.1", text)},
        {"stored", storedAttachment(record)},
        {"deflated", deflatedAttachment(record, recordSize)},
        {"raw", bytesOf(std::string_view("\2\0\0\0some bytes", 14))},
        {"utf16",
            storedAttachment(attachmentRecord("txt",
                bytesOf(std::string_view("\xFF\xFE"
                                         "a\0\x3D\xD8\x00\xDE",
                    8))))},
        {"utf32", storedAttachment(attachmentRecord("txt", bytesOf(std::string_view("\0\0\xFE\xFF\0\1\xF6\0", 8))))},
    };
    const CompoundFileContent content{9, 6, {{"Contents", text}, {"Package", text}, {"EmbeddedOdf", text}}};
    const auto file = writeCompoundFile(content).bytes;
    for (const auto* name : {"WordPad.Document.1", "Word.Document.12", "Excel.OpenDocumentSpreadsheet.12"})
        seeds.push_back({name, objectCell(name, file)});
    addPictures(seeds);
    addBareFiles(seeds);
    return seeds;
}

using test::longValueHeader;
using test::rowBytes;
using test::u16;
using test::u32;
using test::u8;

Seed seedOf(const std::string& name, const std::string& content) { return {name, bytesOf(content)}; }

std::vector<Seed> definitions()
{
    const test::DefinitionParts small{.rows = 3,
        .columnLimit = 4,
        .mapPointer = 0x0201,
        .columns = {{.name = "Note", .type = 12, .number = 1, .flags = 0x80},
            {.name = "Id", .type = 4, .number = 0, .size = 4, .flags = 5},
            {.name = "Price",
                .type = 16,
                .number = 3,
                .offset = 4,
                .size = 17,
                .flags = 1,
                .precision = 18,
                .scale = 4}},
        .indexes = {{"PK", {{0, true}, {3, false}}, 3, 9, 1}, {"Rel", {{0, true}}, 3, 0, 2}}};
    test::DefinitionParts wide{.columnLimit = 120};
    for (unsigned number = 0; number < 120; ++number)
        wide.columns.push_back({.name = "Column with number " + std::to_string(number), .type = 10, .number = number});
    std::vector<Seed> seeds;
    for (const bool isJet3 : {false, true}) {
        const auto& format = isJet3 ? jet::jet3Pages : jet::jet4Pages;
        const auto version = u8(isJet3 ? 1 : 0);
        const auto suffix = isJet3 ? "-jet3" : "-jet4";
        const auto definition = test::definitionBytes(isJet3, small);
        seeds.push_back(seedOf("small" + std::string(suffix), version + definition));
        // Page 1 the definition, page 2 its usage maps, page 3 a leaf of its index with two entries.
        auto first = definition;
        first.resize(format.size);
        const auto maps = test::dataPage(
            format, 0, {{"\1" + u32(0) + u32(4)}, {std::string(5, '\0') + "\x0E"}, {std::string(69, '\0')}});
        auto leaf = "\4\1" + u16(0) + u32(1);
        leaf.resize(format.size);
        leaf[isJet3 ? 23 : 28] = '\x22'; // entries end 9 and 13 bytes behind the start
        seeds.push_back(seedOf("pages" + std::string(suffix), version + first + maps + leaf));
        test::MemoryPages pages(format, 4);
        test::putDefinition(pages, test::definitionBytes(isJet3, wide), {1, 2, 3});
        seeds.push_back(
            seedOf("wide" + std::string(suffix), version + pages.content[1] + pages.content[2] + pages.content[3]));
    }
    return seeds;
}

// A row that knows all columns of the table, and older ones.
std::vector<test::StoredRow> rowsOfAllTypes(bool isJet3)
{
    const std::string fixed = std::string(76, '\0') + u32(7);
    const auto memo = longValueHeader(0x80000004, 0) + "memo";
    const std::vector<std::string> values{
        "\1\xFF", isJet3 ? "text" : "\xFF\xFEtext", memo, longValueHeader(0x40000006, 0x200), u32(9), "?"};
    return {{rowBytes(isJet3, {18, fixed, values, "\xFF\xFF\x03"})},
        {rowBytes(isJet3, {4, fixed.substr(0, 7), {}, "\x0F"})},
        {rowBytes(isJet3, {14, fixed, {{"\1", "x"}}, "\xFF\x3F"}), test::deletedRow}, {u32(0x205), test::movedAway},
        {rowBytes(isJet3, {15, fixed, {{"", "", longValueHeader(13, 0x201)}}, u16(0x4001)})}};
}

// A row with what newer files have.
std::string newerRow()
{
    const auto wrapped = [](const std::string& value) {
        return std::string(16, '\0') + u32(value.size()) + value + std::string(3, '\0');
    };
    std::vector<std::string> values(6);
    for (const auto& value : {u32(1) + u32(2), "0000000000000737954:0000000819123456789:7\0"s, wrapped("\xFF"),
             wrapped("\x0E\0\4\x80"s + u32(0) + u32(7) + u32(0)), wrapped("text"),
             longValueHeader(0x8000001B, 0) + wrapped("memo"), u32(7), u32(7), u32(7)})
        values.push_back(value);
    return rowBytes(false, {27, std::string(80, '\1'), values, "\xFF\xFF\xFF\x07"});
}

std::vector<Seed> rows()
{
    const jet::PageFormat formats[] = {jet::jet4Pages, jet::jet3Pages, {false, 512, 12}, {true, 512, 8}};
    std::vector<Seed> seeds;
    for (std::size_t i = 0; i < std::size(formats); ++i) {
        const auto& format = formats[i];
        const auto ownPage = test::dataPage(format, rowTablePage, rowsOfAllTypes(format.isJet3));
        const auto others = test::longValuePage(format, {"object", u32(0x202) + "two ", u32(0) + "links and"});
        seeds.push_back(seedOf("pages" + std::to_string(i), u8(i) + ownPage + others));
        if (format.size < 2048) continue;
        if (!format.isJet3)
            seeds.push_back(seedOf("newer", u8(i) + test::dataPage(format, rowTablePage, {{newerRow()}})));
        // Jet 3: the second value begins at 381, the others behind 512.
        const std::vector<std::string> longer{std::string(300, 'b'), std::string(600, 't'), "", "", "", ""};
        const auto row = rowBytes(format.isJet3,
            {18, std::string(80, '\1'), longer, "\xFE\x3F\0"s,
                format.isJet3 ? std::vector{1U, 2U, 2U} : std::vector<unsigned>{}});
        seeds.push_back(
            seedOf("long" + std::to_string(i), u8(i) + test::dataPage(format, rowTablePage, {{row}, {row}})));
    }
    return seeds;
}

std::vector<Seed> selects()
{
    return {seedOf("plain", "SELECT DISTINCTROW ID, [Last Name] & ', ' & t.First AS Name FROM [T x] AS t ORDER BY 2;"),
        seedOf("joins",
            "SELECT TOP 5 PERCENT a.*, Len(b.x) FROM (a INNER JOIN b ON (a.i = b.i)) LEFT JOIN c d ON d.i = b.i"),
        seedOf("long",
            "PARAMETERS p Long; SELECT K FROM T, U WHERE K IN (SELECT 1 FROM V UNION SELECT 2 FROM W) GROUP BY K "
            "HAVING Max(L) > p WITH OWNERACCESS OPTION;")};
}

std::vector<Seed> properties()
{
    const auto chunk = [](unsigned kind, const std::string& body) { return u32(body.size() + 6) + u16(kind) + body; };
    const auto property = [](unsigned type, unsigned name, const std::string& value) {
        return u16(8 + value.size()) + u8(1) + u8(type) + u16(name) + u16(value.size()) + value;
    };
    std::vector<Seed> seeds;
    for (const bool isJet3 : {false, true}) {
        const auto name = [&](const std::string& text) {
            std::string stored;
            for (const auto letter : text)
                stored += isJet3 ? std::string(1, letter) : std::string{letter, '\0'};
            return u16(stored.size()) + stored;
        };
        const auto column = [&](const std::string& text, const std::string& list) {
            return chunk(1, u32(name(text).size() + 4) + name(text) + list);
        };
        seeds.push_back(seedOf(isJet3 ? "jet3" : "jet4",
            u8(isJet3 ? 1 : 0) + (isJet3 ? "KKD\0"s : "MR2\0"s)
                + chunk(0x80, name("Required") + name(std::string(64, 'D')) + name("Width") + name("GUID"))
                + chunk(0, u32(6) + name("") + property(10, 1, "table"))
                + column(
                    "A", property(1, 0, "\1") + property(12, 1, "what it is") + property(9, 3, std::string(16, 'g')))
                + column("B",
                    property(3, 2, u16(7)) + property(4, 2, u32(9)) + property(2, 2, "\xFF")
                        + property(8, 2, std::string(8, '\0')) + property(7, 2, std::string(8, '\x40')))));
    }
    return seeds;
}

// How encrypted files describe their encryption.
std::vector<Seed> ciphers()
{
    const auto salt = std::string(16, 's');
    std::vector<Seed> seeds;
    for (const unsigned algorithm : {0x6801U, 0x660EU}) {
        const auto header = u32(4) + u32(0) + u32(algorithm) + u32(0x8004) + u32(128) + u32(1) + std::string(14, '\0');
        const bool isRc4 = algorithm == 0x6801;
        seeds.push_back(seedOf(isRc4 ? "rc4" : "aes",
            u16(3) + u16(2) + u32(0) + u32(header.size()) + header + u32(16) + salt + std::string(16, 'v') + u32(20)
                + std::string(isRc4 ? 20U : 32U, 'h')));
    }
    const auto scheme =
        R"( saltSize="16" blockSize="16" keyBits="128" hashSize="20" cipherAlgorithm="AES" )"
        R"(cipherChaining="ChainingModeCBC" hashAlgorithm="SHA1" saltValue="c3Nzc3Nzc3Nzc3Nzc3Nzcw==")"s;
    const auto block = "c3Nzc3Nzc3Nzc3Nzc3Nzcw=="s;                         // 16 bytes
    const auto twoBlocks = "c3Nzc3Nzc3Nzc3Nzc3Nzc3Nzc3Nzc3Nzc3Nzc3Nzc3M="s; // 32
    seeds.push_back(seedOf("agile",
        u16(4) + u16(4) + u32(0x40) + "<encryption><keyData" + scheme + "/><p:encryptedKey spinCount=\"9\"" + scheme
            + " encryptedVerifierHashInput=\"" + block + "\" encryptedVerifierHashValue=\"" + twoBlocks
            + "\" encryptedKeyValue=\"" + block + "\"/></encryption>"));
    return seeds;
}

bool writeAll(const std::filesystem::path& folder, const std::vector<Seed>& seeds)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    for (const auto& seed : seeds) {
        std::ofstream out(folder / seed.name, std::ios::binary);
        out.write(
            reinterpret_cast<const char*>(seed.content.data()), static_cast<std::streamsize>(seed.content.size()));
        out.close();
        if (!out) return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: make_seeds FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    if (writeAll(folder / "ole_field", cells()) && writeAll(folder / "compound_file", compoundFiles())
        && writeAll(folder / "definition", definitions()) && writeAll(folder / "rows", rows())
        && writeAll(folder / "properties", properties()) && writeAll(folder / "cipher", ciphers())
        && writeAll(folder / "select", selects()))
        return 0;
    std::fputs("make_seeds: cannot write the seeds\n", stderr);
    return 1;
}

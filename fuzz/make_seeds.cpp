// Writes small good inputs for the fuzz targets: make_seeds FOLDER makes FOLDER/ole_field and FOLDER/compound_file.
#include "embedded/OleCells.h"
#include "samples/ZipFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

using namespace vellumo::testing;

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
    if (writeAll(folder / "ole_field", cells()) && writeAll(folder / "compound_file", compoundFiles())) return 0;
    std::fputs("make_seeds: cannot write the seeds\n", stderr);
    return 1;
}

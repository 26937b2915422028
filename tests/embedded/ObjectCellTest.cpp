// SPDX-License-Identifier: MIT
#include "embedded/ObjectCell.h"
#include "embedded/OleCells.h"
#include "embedded/TAdmBlobData.h"
#include "samples/ZipFile.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace testing;
using namespace std::string_literals;
using enum ObjectState;

constexpr std::size_t plenty = std::size_t{1} << 30U;

std::shared_ptr<TAdmBlobData> decoded(const Buffer& cell, bool isWhole = true)
{
    UnpackBudget budget{plenty};
    return decodeObjectCell(cell, isWhole, budget);
}

std::string textOf(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Buffer compoundFile(const std::string& stream, const Buffer& content)
{
    return writeCompoundFile({9, 6, {{"Other", bytesOf("other")}, {stream, content}}}).bytes;
}

Buffer sized(const Buffer& content)
{
    Buffer out;
    addU32(out, static_cast<std::uint32_t>(content.size()));
    out.insert(out.end(), content.begin(), content.end());
    return out;
}

Buffer joined(Buffer first, const Buffer& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Buffer changed(Buffer buffer, const Change& change)
{
    change(buffer);
    return buffer;
}

// What OLE 2 keeps to show an object: a bitmap behind 40 bytes.
Buffer presentationStream(const Buffer& dib)
{
    Buffer out;
    for (const std::uint32_t field : {0xFFFFFFFFU, 8U, 4U, 1U, 0xFFFFFFFFU, 2U, 0U, 100U, 50U})
        addU32(out, field);
    return joined(out, sized(dib));
}

Buffer zip(const std::vector<samples::ZipEntry>& entries)
{
    const auto bytes = samples::zipFile(entries);
    return bytesOf({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

// "BM", size, zeros, offset of the pixels, and the bitmap.
std::string bitmapFile(const Buffer& dib, unsigned pixelOffset)
{
    Buffer out = bytesOf("BM");
    addU32(out, static_cast<std::uint32_t>(14 + dib.size()));
    addU32(out, 0);
    addU32(out, pixelOffset);
    return textOf(joined(out, dib));
}

struct CellCase {
    const char* name;
    Buffer cell;
    ObjectState state;
    std::string extension;
    std::string payload;
    std::string storedName{};
    std::string linkTarget{};
};

void check(const CellCase& test)
{
    const auto object = decoded(test.cell);
    ASSERT_NE(object, nullptr) << test.name;
    EXPECT_EQ(object->state(), test.state) << test.name;
    EXPECT_EQ(object->fileExtension(), test.extension) << test.name;
    EXPECT_EQ(textOf(object->data()), test.payload) << test.name;
    EXPECT_EQ(object->storedName(), test.storedName) << test.name;
    EXPECT_EQ(object->linkTarget(), test.linkTarget) << test.name;
    EXPECT_EQ(decoded(test.cell, false)->state(), Damaged) << test.name;
}

TEST(ObjectCell, PicturesAndDocumentsComeOutAsFiles)
{
    const auto dib = smallBitmap();
    const auto bmp = bitmapFile(dib, 54);
    const auto metafile = smallMetafile();
    const auto wmf = "\xD7\xCD\xC6\x9A\0\0\0\0\0\0\x64\0\x32\0\xEC\x09\0\0\0\0\xAB\x5E"s + textOf(metafile).substr(8);
    const auto pdf = "%PDF-1.4 a document"s;
    const auto cutDib = changed(dib, resizeTo(dib.size() - 1));
    const auto other = compoundFile("Else", bytesOf("x"));
    const CellCase cases[] = {
        {"Paint: bitmap file", objectCell("Paint.Picture", bytesOf(bmp)), Whole, "bmp", bmp},
        {"Paint: bitmap", objectCell("Paint.Picture.1", dib), Whole, "bmp", bmp},
        {"Paint: native data of OLE 1", objectCell("Paint.Picture", compoundFile("\1Ole10Native", sized(bytesOf(bmp)))),
            Whole, "bmp", bmp},
        {"Paint: contents", objectCell("Paint.Picture", compoundFile("CONTENTS", dib)), Whole, "bmp", bmp},
        {"Paint: presentation", objectCell("Paint.Picture", compoundFile("\2OlePres000", presentationStream(dib))),
            Whole, "bmp", bmp},
        {"Paint: nothing of it", objectCell("Paint.Picture", other), Whole, "", textOf(other)},
        {"PBrush with a bitmap", objectCell("PBrush", dib), Whole, "bmp", bmp},
        {"PBrush with a cut bitmap", objectCell("PBrush", cutDib), Damaged, "bmp", bitmapFile(cutDib, 54)},
        {"PBrush with anything", objectCell("PBrush", bytesOf("anything")), Whole, "bmp", "anything"},
        {"static bitmap", staticCell("DIB", dib), Whole, "bmp", bmp},
        {"static bitmap, cut", staticCell("DIB", cutDib), Damaged, "bmp", bitmapFile(cutDib, 54)},
        {"static bitmap of OLE 2", objectCell("StaticDib", compoundFile("CONTENTS", dib)), Whole, "bmp", bmp},
        {"static bitmap, another mark", objectCell("StaticDib", bytesOf("XM" + bmp.substr(2))), Whole, "",
            "XM" + bmp.substr(2)},
        {"static metafile", staticCell("METAFILEPICT", metafile), Whole, "wmf", wmf},
        {"static picture, shown only", joined(objectCell("StaticDib", {}), presentationOf("DIB", dib)), Whole, "bmp",
            bmp},
        {"bitmap of another class", objectCell("Some.Class", dib), Whole, "bmp", bmp},
        {"cut bitmap of another class", objectCell("Some.Class", cutDib), Whole, "", textOf(cutDib)},
        {"bitmap without any wrapper", dib, Whole, "bmp", bmp},
        {"Acrobat", objectCell("AcroExch.Document.7", compoundFile("CONTENTS", bytesOf(pdf))), Whole, "pdf", pdf},
        {"Acrobat, nested", objectCell("AcroExch.Document", compoundFile("Inner/Contents", bytesOf(pdf))), Whole, "pdf",
            pdf},
        {"Acrobat, bare", objectCell("Acrobat.Document.2020", bytesOf(pdf)), Whole, "pdf", pdf},
        {"Acrobat with something else", objectCell("AcroExch.Document", other), Whole, "", textOf(other)},
        {"the wrapper ends early", changed(objectCell("PBrush", bytesOf(bmp)), resizeTo(33 + 24 + 7 + 60)), Damaged,
            "bmp", bmp.substr(0, 60)},
    };
    for (const auto& test : cases)
        check(test);
}

// Where the pixels begin depends on the version of the header, the palette and the masks.
TEST(ObjectCell, BitmapFileTellsWhereItsPixelsBegin)
{
    const auto info = [](std::uint32_t size, unsigned bits, std::uint32_t compression, std::uint32_t colours) {
        Buffer dib;
        for (const std::uint32_t field : {size, 1U, 1U, 1U | bits << 16U, compression, 0U, 0U, 0U, colours, 0U})
            addU32(dib, field);
        dib.resize(size + 1100);
        return dib;
    };
    Buffer core;
    for (const std::uint32_t field : {12U, 0x00010001U, 0x00080001U})
        addU32(core, field);
    core.resize(900);
    const struct {
        const char* name;
        Buffer dib;
        unsigned pixelOffset; // 0: no bitmap
    } cases[] = {
        {"24 bits", info(40, 24, 0, 0), 54},
        {"palette of 256", info(40, 8, 0, 0), 54 + 1024},
        {"palette of 16", info(40, 4, 0, 0), 54 + 64},
        {"palette of 3", info(40, 8, 0, 3), 54 + 12},
        {"palette of more than there can be", info(40, 8, 0, 257), 0},
        {"masks behind the header", info(40, 16, 3, 0), 54 + 12},
        {"four masks", info(40, 32, 6, 0), 54 + 16},
        {"masks in the header", info(108, 32, 3, 0), 14 + 108},
        {"version 5", info(124, 24, 0, 0), 14 + 124},
        {"version 1, palette of three bytes", core, 14 + 12 + 768},
        {"palette beyond the end", changed(core, resizeTo(12 + 767)), 0},
        {"unknown header", info(41, 24, 0, 0), 0},
        {"5 bits", info(40, 5, 0, 0), 0},
        {"no width", changed(info(40, 24, 0, 0), set32(4, 0)), 0},
        {"negative width", changed(info(40, 24, 0, 0), set32(4, 0x80000000)), 0},
        {"from the top", changed(info(40, 24, 0, 0), set32(8, 0xFFFFFFFF)), 54},
        {"two planes", changed(info(40, 24, 0, 0), set16(12, 2)), 0},
    };
    for (const auto& test : cases) {
        const auto expected = test.pixelOffset == 0 ? textOf(test.dib) : bitmapFile(test.dib, test.pixelOffset);
        EXPECT_EQ(textOf(decoded(objectCell("Some.Class", test.dib))->data()), expected) << test.name;
    }
}

TEST(ObjectCell, PackagesAndLinksTellTheirNames)
{
    const auto file = bytesOf("file");
    const auto named = [&](std::string_view label) { return objectCell("Package", packageNative(label, file)); };
    const auto package = packageNative("a.b", file);
    const auto sizeOffset = package.size() - 8;
    const auto dib = smallBitmap();
    const auto link = linkCell("C:\\Data\\Caf\xE9.xls", {});
    const CellCase cases[] = {
        {"label", named("report.pdf"), Whole, "pdf", "file", "report.pdf"},
        {"folders", named("C:\\a/b\\c.txt"), Whole, "txt", "file", "c.txt"},
        {"windows-1252", named("\x80uro\x85.txt"), Whole, "txt", "file", "€uro….txt"},
        {"UTF-8", named("é.txt"), Whole, "txt", "file", "é.txt"},
        {"control and bidi characters", named("a\tb\u202Egpj\u2066.exe"), Whole, "exe", "file", "abgpj.exe"},
        {"space around", named("  a b  "), Whole, "", "file", "a b"},
        {"nothing but dots: the source path names it", named("x/.."), Whole, "", "file", "somewhere"},
        {"no label", named(""), Whole, "", "file", "somewhere"},
        {"long", named(std::string(300, 'n') + ".docx"), Whole, "docx", "file", std::string(195, 'n') + ".docx"},
        {"file of no bytes", objectCell("Package", packageNative("a.b", {})), Whole, "b", "", "a.b"},
        {"states more", objectCell("Package", changed(package, set32(sizeOffset, 5))), Damaged, "b", "file", "a.b"},
        {"states less", objectCell("Package", changed(package, set32(sizeOffset, 3))), Whole, "b", "fil", "a.b"},
        {"through OLE 2", objectCell("Package", compoundFile("\1Ole10Native", sized(package))), Whole, "b", "file",
            "a.b"},
        {"link", link, Linked, "bin", textOf(link), "", "C:\\Data\\Café.xls"},
        {"link with its picture", linkCell("D:\\x", presentationOf("DIB", dib)), Linked, "bmp", bitmapFile(dib, 54), "",
            "D:\\x"},
    };
    for (const auto& test : cases)
        check(test);
}

// Nothing here can be decoded: the cell's bytes are what is shown.
TEST(ObjectCell, WhatCannotBeDecodedIsKeptAsStored)
{
    const auto deflatedCell = deflatedAttachment(attachmentRecord("txt", bytesOf("text")), 20);
    const auto truncatedHeader = changed(objectCell("PBrush", bytesOf("x")), resizeTo(25));
    const struct {
        const char* name;
        Buffer cell;
        const char* extension;
        ObjectState state = Whole;
    } cases[] = {
        {"JPEG", bytesOf("\xFF\xD8\xFF\xE0\0\x10JFIF"s), "jpg"},
        {"PNG", bytesOf("\x89PNG\r\n\x1A\nIHDR"s), "png"},
        {"bitmap file", bytesOf(bitmapFile(smallBitmap(), 54)), "bmp"},
        {"text like a bitmap file", bytesOf("BMW and other makers"), "txt"},
        {"PDF", bytesOf("%PDF-1.7"), "pdf"},
        {"Word", compoundFile("WordDocument", bytesOf("x")), "doc"},
        {"Excel", compoundFile("Workbook", bytesOf("x")), "xls"},
        {"other compound file", compoundFile("Folder/Workbook", bytesOf("x")), "bin"},
        {"Word 2007", zip({{"[Content_Types].xml", "<a/>"}, {"word/document.xml", "<b/>"}}), "docx"},
        {"Word 2007, the first entry with an extra field of 4 bytes",
            changed(zip({{"[Content_Types].xml", "<a/>"}, {"word/document.xml", "<b/>"}}),
                [](Buffer& archive) {
                    const auto entry = textOf(archive).find("PK\1\2");
                    set16(entry + 30, 4)(archive);
                    archive.insert(archive.begin() + static_cast<std::ptrdiff_t>(entry + 46 + 19), 4, std::byte{});
                }),
            "docx"},
        {"Excel with macros", zip({{"[Content_Types].xml", ""}, {"xl/vbaProject.bin", ""}}), "xlsm"},
        {"OpenDocument", zip({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}}), "ods"},
        {"Java", zip({{"META-INF/MANIFEST.MF", ""}}), "jar"},
        {"archive", zip({{"word/own notes.txt", ""}}), "zip"},
        {"cut archive", changed(zip({{"[Content_Types].xml", ""}, {"ppt/a", "1234"}}), resizeTo(90)), "pptx"},
        {"cut archive in the first entry", changed(zip({{"ppt/a", "1234"}}), resizeTo(32)), "zip"},
        {"ICO", bytesOf("\0\0\1\0\1\0\x10\x10\0\0\1\0\x18\0\1\0\0\0\x16\0\0\0x"s), "ico"},
        {"RIFF of no known kind", bytesOf("RIFF\4\0\0\0ABCD"s), "bin"},
        {"wave", bytesOf("RIFF\4\0\0\0WAVE"s), "wav"},
        {"script", bytesOf("#!/bin/sh\necho"), "sh"},
        {"HTML behind a declaration", bytesOf("\xEF\xBB\xBF<?xml version='1.0'?><HTML>"), "html"},
        {"XML", bytesOf("<?xml version='1.0'?><header/>"), "xml"},
        {"UTF-8", bytesOf("Grüße"), "txt"},
        {"windows-1252", bytesOf("Viele Gr\xFC\xDF\x65"), "txt"},
        {"UTF-16", bytesOf("\xFF\xFEz\0\xE9\0"s), "txt"},
        {"text with a control character", bytesOf("abc\x01"), "bin"},
        {"mostly no ASCII", bytesOf("a\xFC\xDF"), "bin"},
        {"one byte", bytesOf("\xC3"), "bin"},
        {"deflated, record too short for what it states", changed(deflatedCell, set32(4, 0)), "bin"},
        {"like a deflated one", bytesOf("\1\0\0\0\x6C\0\0\0\1\2\3\4\5\6"s), "bin"},
        {"deflated, and no stream", changed(deflatedCell, set32(10, 0xFFFFFFFF)), "bin", Damaged},
        {"OLE mark and no header", truncatedHeader, "bin", Damaged},
        {"OLE without native data", objectCell("PBrush", {}), "bin"},
        {"no package", objectCell("Package", bytesOf("short")), "bin"},
    };
    for (const auto& test : cases)
        check({test.name, test.cell, test.state, test.extension, textOf(test.cell)});
    EXPECT_EQ(decoded({}), nullptr);
}

TEST(ObjectCell, BrokenDeflateStreamGivesWhatItHeld)
{
    const auto record = attachmentRecord("txt", Buffer(1000, std::byte{'a'}));
    const auto size = static_cast<std::uint32_t>(record.size());
    auto cut = deflatedAttachment(record, size);
    cut.pop_back();
    const auto object = decoded(cut);
    EXPECT_EQ(object->state(), Damaged);
    EXPECT_EQ(object->fileExtension(), "txt");
    EXPECT_TRUE(!object->data().empty() && textOf(object->data()).find_first_not_of('a') == std::string::npos);
    check({"states less", deflatedAttachment(record, size - 1), Damaged, "txt", std::string(999, 'a')});
    check({"states more", deflatedAttachment(record, size + 1), Whole, "txt", std::string(1000, 'a')});
}

// 40 cells of a few hundred bytes that ask for 100,000 each.
TEST(ObjectCell, CellsTogetherStopAtTheBudget)
{
    const auto record = attachmentRecord("txt", Buffer(100000, std::byte{'a'}));
    const auto cell = deflatedAttachment(record, static_cast<std::uint32_t>(record.size()));
    UnpackBudget budget{5 * record.size() + 10};
    const auto total = budget.bytesLeft;
    std::size_t whole = 0;
    std::size_t produced = 0;
    for (int i = 0; i < 40; ++i) {
        const auto object = decodeObjectCell(cell, true, budget);
        if (object->state() == Whole) {
            ++whole;
            produced += object->data().size();
            continue;
        }
        EXPECT_EQ(object->state(), Damaged);
        EXPECT_EQ(textOf(object->data()), textOf(cell)) << "kept packed";
    }
    EXPECT_EQ(whole, 5U);
    EXPECT_TRUE(budget.isExceeded);
    EXPECT_LE(produced + budget.bytesLeft, total);

    UnpackBudget exact{record.size()};
    EXPECT_EQ(decodeObjectCell(cell, true, exact)->state(), Whole);
    EXPECT_FALSE(exact.isExceeded) << "the last that fits";
    const auto stored = decodeObjectCell(storedAttachment(record), true, exact);
    EXPECT_EQ(stored->state(), Whole) << "what is not packed costs nothing";
}

TEST(ObjectCell, EveryCutAndEveryFlippedByteIsHarmless)
{
    const Buffer cells[] = {
        joined(objectCell("StaticDib", {}), presentationOf("DIB", smallBitmap())),
        staticCell("METAFILEPICT", smallMetafile()),
        linkCell("C:\\x.doc", presentationOf("DIB", smallBitmap())),
        objectCell("Paint.Picture", compoundFile("\2OlePres000", presentationStream(smallBitmap()))),
        zip({{"[Content_Types].xml", ""}, {"word/a", "1234"}}),
    };
    for (const auto& cell : cells)
        for (std::size_t i = 0; i < cell.size(); ++i) {
            // An allocation of its own, so that a read past the cut is seen by the address sanitizer.
            const Buffer cut(cell.begin(), cell.begin() + static_cast<std::ptrdiff_t>(i));
            EXPECT_EQ(decoded(cut) == nullptr, cut.empty());
            EXPECT_NE(decoded(changed(cell, [i](Buffer& bytes) { bytes[i] ^= std::byte{0xFF}; })), nullptr);
        }
}

} // namespace
} // namespace vellumo

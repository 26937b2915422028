// SPDX-License-Identifier: MIT
#include "embedded/OleField.h"
#include "embedded/OleCells.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace testing;
using namespace std::string_literals;

// What a cell decodes to: "1" when it is refused, else the extension, a colon and the payload.
std::string decoded(const Buffer& cell)
{
    OlePayload payload{bytesOf("old"), "old"};
    const auto status = mdb_read_ole_field(cell, payload);
    if (status == 0) return payload.extension + ":" + textOf(payload.data);
    EXPECT_EQ(payload.extension + textOf(payload.data), "oldold") << "a refused cell left something behind";
    return std::to_string(status);
}

Buffer compoundFileWith(const std::string& stream)
{
    return writeCompoundFile({9, 6, {{"Other", bytesOf("other")}, {stream, bytesOf("the document")}}}).bytes;
}

// A change to something good, and what its cell decodes to then.
struct ChangedCase {
    const char* name;
    Change change;
    std::string expected;
};

struct CellCase {
    const char* name;
    Buffer cell;
    std::string expected;
};

TEST(OleField, ClassNameTellsExtensionAndStream)
{
    const struct {
        const char* className;
        const char* extension;
        const char* stream; // "" when the native data is the document
    } cases[] = {
        {"PBrush", "bmp", ""},
        {"Word.Document.12", "docx", "Package"},
        {"WordPad.Document.1", "rtf", "Contents"},
        {"Word.OpenDocumentText.12", "odt", "EmbeddedOdf"},
        {"word.document.12", "", ""},
        {"Word.Document.1", "", ""},
        {"Word.Document.120", "", ""},
    };
    for (const auto& test : cases) {
        const auto extension = test.extension + ":"s;
        const auto hasStream = *test.stream != '\0';
        const auto with = compoundFileWith(hasStream ? test.stream : "Package");
        const auto without = compoundFileWith("package");
        EXPECT_EQ(decoded(objectCell(test.className, with)), extension + (hasStream ? "the document" : textOf(with)))
            << test.className;
        EXPECT_EQ(decoded(objectCell(test.className, without)), extension + textOf(without)) << test.className;
        EXPECT_EQ(decoded(objectCell(test.className, bytesOf("plain"))), extension + "plain") << test.className;
        EXPECT_EQ(decoded(objectCell(test.className, {})), extension) << test.className;
    }
}

TEST(OleField, BrokenCompoundFileIsKeptWhole)
{
    auto file = compoundFileWith("Package");
    file.resize(600);
    EXPECT_EQ(decoded(objectCell("Word.Document.12", file)), "docx:" + textOf(file));
}

TEST(OleField, PackageNamesItsFile)
{
    const struct {
        const char* label;
        const char* extension;
    } cases[] = {
        {"report.pdf", "pdf"},
        {"archive.tar.gz", "gz"},
        {"README", ""},
        {"ends with a dot.", ""},
        {".profile", "profile"},
        {"", ""},
    };
    for (const auto& test : cases)
        EXPECT_EQ(decoded(objectCell("Package", packageNative(test.label, bytesOf("file")))), test.extension + ":file"s)
            << test.label;
}

// Every row changes the native data of a package with the label "a.b" and the file "file".
TEST(OleField, PackageIsBoundedByItsBytes)
{
    const auto good = packageNative("a.b", bytesOf("file"));
    const auto sizeOffset = good.size() - 8;
    const ChangedCase cases[] = {
        {"size of one byte more", set32(sizeOffset, 5), "b:file"},
        {"size of 4 GB", set32(sizeOffset, 0xFFFFFFFF), "b:file"},
        {"size of less", set32(sizeOffset, 2), "b:fi"},
        {"nothing after the size", resizeTo(sizeOffset + 4), "b:"},
        {"cut inside the size", resizeTo(sizeOffset + 3), "1"},
        {"cut before the end of the temporary path", resizeTo(sizeOffset - 1), "1"},
        {"cut before the temporary path", resizeTo(2 + 4 + 13 + 7), "1"},
        {"cut inside the source path", resizeTo(18), "1"},
        {"no terminator at all", [](Buffer& native) { native.assign(200, std::byte{'x'}); }, "1"},
        {"16 zeros", [](Buffer& native) { native.assign(16, std::byte{0}); }, "1"},
        {"17 zeros", [](Buffer& native) { native.assign(17, std::byte{0}); }, ":"},
    };
    for (const auto& test : cases) {
        auto native = good;
        test.change(native);
        EXPECT_EQ(decoded(objectCell("Package", native)), test.expected) << test.name;
    }
}

// Every row changes a cell that decodes to "bmp:picture".
TEST(OleField, ChecksBothHeaders)
{
    const auto good = objectCell("PBrush", bytesOf("picture"));
    const auto body = bodyOffset(good);
    const auto native = body + 24 + 7;
    const auto size = static_cast<unsigned>(good.size());
    const ChangedCase cases[] = {
        {"none", [](Buffer&) {}, "bmp:picture"},
        {"empty cell", resizeTo(0), "1"},
        {"three bytes", resizeTo(3), "1"},
        {"header size beyond the cell", set16(2, size + 1), "1"},
        {"header size at the end of the cell", set16(2, size), "1"},
        {"negative header size", set16(2, 0xFFFF), "1"},
        {"negative friendly length", set16(8, 0xFFFF), "1"},
        {"empty friendly name", set16(8, 0), "1"},
        {"friendly name without a terminator", set16(8, 6), "1"},
        {"friendly name ends with the header", set16(8, 13), "bmp:picture"},
        {"friendly name starts beyond the cell", set16(12, 0x7FFF), "1"},
        {"negative friendly offset", set16(12, 0x8000), "1"},
        {"class name of 256 bytes", both(resizeTo(600), set16(10, 256)), "1"},
        {"class name of 255 bytes", both(resizeTo(600), set16(10, 255)), "bmp:picture"},
        {"class name one byte past the cell", both(set8(size - 1, 0), set16(14, size - 5)), "1"},
        {"class name to the end of the cell", both(set8(size - 1, 0), set16(14, size - 6)), "bmp:pictur\0"s},
        {"eleven bytes of body", resizeTo(body + 11), "1"},
        {"negative length of the class", set32(body + 8, 0xFFFFFFFF), "1"},
        {"no class", set32(body + 8, 0), "1"},
        {"class without a terminator", set32(body + 8, 6), "1"},
        {"class of 256 bytes", both(resizeTo(600), set32(body + 8, 256)), "1"},
        {"cut before the native size ends", resizeTo(native - 1), "1"},
        {"cut after the native size", both(resizeTo(native), set32(native - 4, 0)), "bmp:"},
        {"native size too large", set32(native - 4, 8), "1"},
        {"native size negative", set32(native - 4, 0xFFFFFFFF), "1"},
        {"native size smaller", set32(native - 4, 3), "bmp:pic"},
        {"topic and item lengths", both(set32(native - 12, 9), set32(native - 8, 9)), "bmp:picture"},
        {"class ends at a zero inside", set8(body + 14, 0), ":picture"},
    };
    for (const auto& test : cases) {
        auto cell = good;
        test.change(cell);
        EXPECT_EQ(decoded(cell), test.expected) << test.name;
    }
}

TEST(OleField, BodyWithoutObjectIsAnAttachment)
{
    auto headed = objectCell("x", {});
    putU16(headed, 0, 0x1234);
    headed.resize(bodyOffset(headed));
    auto rawAfterHeader = headed;
    for (const char letter : "\3\0\0\0raw"s)
        rawAfterHeader.push_back(static_cast<std::byte>(letter));
    auto storedAfterHeader = headed;
    const auto stored = storedAttachment(attachmentRecord("txt", bytesOf("text")));
    storedAfterHeader.insert(storedAfterHeader.end(), stored.begin(), stored.end());
    auto withoutName = storedAfterHeader;
    putU16(withoutName, 10, 0);
    const CellCase cases[] = {
        {"other flag", bytesOf("\2\0\0\0x"s), ":\2\0\0\0x"s},
        {"other flag in four bytes", bytesOf("\2\0\0\0"s), "1"},
        {"other flag behind a header", rawAfterHeader, ":\3\0\0\0raw"s},
        {"stored behind a header", storedAfterHeader, "txt:text"},
        {"a header without names", withoutName, "1"},
        {"a header in less than 20 bytes", bytesOf("\2\0\1\0abcdefghijklmno"s), "1"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(decoded(test.cell), test.expected) << test.name;
}

// Every row changes the inner record of an attachment that decodes to "txt:text" and is then stored and deflated.
TEST(OleField, AttachmentRecordIsBoundedByItsBytes)
{
    const auto good = attachmentRecord("txt", bytesOf("text"));
    const ChangedCase cases[] = {
        {"none", [](Buffer&) {}, "txt:text"},
        {"the last character is not a zero", set8(18, 'x'), "txt:text"},
        {"a zero in the middle", set8(14, 0), "t:text"},
        {"high bytes are dropped", set8(13, 0x21), "txt:text"},
        {"only a terminator", set32(8, 1), ":x\0t\0\0\0text"s},
        {"extension to the end", set32(8, 6), "txt:"},
        {"extension past the end", set32(8, 7), "1"},
        {"negative extension", set32(8, 0xFFFFFFFF), "1"},
        {"largest extension", set32(8, 0x7FFFFFFF), "1"},
        {"no extension", set32(8, 0), ":t\0x\0t\0\0\0text"s},
        {"eleven bytes", resizeTo(11), "1"},
    };
    for (const auto& test : cases) {
        auto record = good;
        test.change(record);
        EXPECT_EQ(decoded(storedAttachment(record)), test.expected) << test.name;
        const auto size = std::max<std::size_t>(record.size(), 12);
        EXPECT_EQ(decoded(deflatedAttachment(record, static_cast<std::uint32_t>(size))), test.expected) << test.name;
    }
}

TEST(OleField, DeflatedAttachmentFitsItsStatedSize)
{
    const auto record = attachmentRecord("txt", Buffer(100000, std::byte{'a'}));
    const auto size = static_cast<std::uint32_t>(record.size());
    const auto whole = "txt:" + std::string(100000, 'a');
    const auto few = attachmentRecord("", {});
    auto cutStream = deflatedAttachment(record, size);
    cutStream.pop_back();
    auto noStream = deflatedAttachment(record, size);
    noStream.resize(10);
    const CellCase cases[] = {
        {"exact", deflatedAttachment(record, size), whole},
        {"more", deflatedAttachment(record, size + 1), whole},
        {"2 GB, which are not allocated", deflatedAttachment(record, 0x7FFFFFFF), whole},
        {"less", deflatedAttachment(record, size - 1), "1"},
        {"negative", deflatedAttachment(record, 0x80000000), "1"},
        {"14, which is all", deflatedAttachment(few, 14), ":"},
        {"11", deflatedAttachment(Buffer(11), 11), "1"},
        {"12", deflatedAttachment(Buffer(12), 12), ":"},
        {"stream is cut", cutStream, "1"},
        {"no stream", noStream, "1"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(decoded(test.cell), test.expected) << test.name;
}

TEST(OleField, EveryCutAndEveryFlippedByteIsHarmless)
{
    const auto file = bytesOf("content of the file");
    const auto record = attachmentRecord("txt", file);
    const Buffer cells[] = {
        objectCell("Package", packageNative("a.b", file)),
        objectCell("Word.Document.12", compoundFileWith("Package")),
        storedAttachment(record),
        deflatedAttachment(record, static_cast<std::uint32_t>(record.size())),
    };
    for (const auto& cell : cells) {
        for (std::size_t length = 0; length < cell.size(); ++length) {
            // An allocation of its own, so that a read past the cut is seen by the address sanitizer.
            const Buffer cut(cell.begin(), cell.begin() + static_cast<std::ptrdiff_t>(length));
            const auto result = decoded(cut);
            EXPECT_TRUE(result == "1" || result.size() <= length) << length;
        }
        for (std::size_t i = 0; i < cell.size(); ++i) {
            auto flipped = cell;
            flipped[i] ^= std::byte{0xFF};
            EXPECT_LE(decoded(flipped).size(), cell.size() + 5) << i;
        }
    }
}

} // namespace
} // namespace vellumo

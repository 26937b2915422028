// SPDX-License-Identifier: MIT
#include "embedded/TAdmBlobData.h"
#include "embedded/OleCells.h"
#include "platform/ImageDecoder.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace testing;
using namespace std::string_literals;

constexpr const char* notText = "[NON-TEXTUAL DATA]";

TEST(TAdmBlobData, DescriptionIsTheTextIfItIsOne)
{
    const struct {
        const char* name;
        std::string bytes;
        std::string expected;
    } cases[] = {
        {"empty", "", ""},
        {"lines and all white space", "a\tb\r\nc\v\f d\x7F", "a\tb\r\nc\v\f d\x7F"},
        {"control character", "ab\x1F", notText},
        {"zero as second byte", "a\0b"s, notText},
        {"zero as first byte", "\0ab"s, "\0ab"s},
        {"Latin 1 after the first byte", "caf\xE9", notText},
        {"UTF-8 after the first byte", "caf\u00E9", notText},
        {"Latin 1 as first byte", "\xE9t", "\u00E9t"},
        {"Latin 1 alone", "\xFF", "\u00FF"},
        {"UTF-8 mark", "\xEF\xBB\xBFtext", notText},
        {"binary behind the sample", std::string(2000, 'a') + '\1', std::string(2000, 'a') + '\1'},
        {"binary at the end of the sample", std::string(1999, 'a') + '\1', notText},
        {"UTF-8 behind the sample", std::string(2000, 'a') + "\u00E9", std::string(2000, 'a') + "\u00E9"},
        {"no UTF-8 behind the sample", std::string(2000, 'a') + '\xE9', notText},
        {"Latin 1 behind the sample of Latin 1", '\xE9' + std::string(1999, 'a') + '\xE8',
            "\u00E9" + std::string(1999, 'a') + "\u00E8"},
        {"UTF-16 little-endian", "\xFF\xFEz\0\xE9\0\x3D\xD8\x00\xDE"s, "zé😀"},
        {"UTF-16 big-endian", "\xFE\xFF\0z\0\xE9\xD8\x3D\xDE\x00"s, "zé😀"},
        {"UTF-16 mark alone", "\xFE\xFF"s, ""},
        {"UTF-16 with half a character", "\xFF\xFEz\0z"s, notText},
        {"UTF-16 ends with a lead surrogate", "\xFF\xFE\x3D\xD8"s, notText},
        {"UTF-16 lead surrogate before a letter", "\xFF\xFE\x3D\xD8z\0"s, notText},
        {"UTF-16 trail surrogate first", "\xFF\xFE\x00\xDE\x3D\xD8"s, notText},
        {"UTF-32 little-endian", "\xFF\xFE\0\0A\0\0\0\x00\xF6\x01\x00"s, "A\U0001F600"},
        {"UTF-32 big-endian", "\0\0\xFE\xFF\0\0\0A\x00\x01\xF6\x00"s, "A\U0001F600"},
        {"UTF-32 with half a character", "\xFF\xFE\0\0A\0"s, notText},
        {"UTF-32 surrogate", "\xFF\xFE\0\0\x00\xD8\0\0"s, notText},
        {"UTF-32 beyond the last character", "\xFF\xFE\0\0\x00\x00\x11\x00"s, notText},
    };
    for (const auto& test : cases)
        EXPECT_EQ(TAdmBlobData(bytesOf(test.bytes), "").description(), test.expected) << test.name;
}

TEST(TAdmBlobData, CellShowsExtensionAndSize)
{
    EXPECT_EQ(TAdmBlobData(Buffer(12288), "bmp").cellDescription(), ".bmp [12 KB]");
    EXPECT_EQ(TAdmBlobData({}, "").cellDescription(), "[0 KB]");
    EXPECT_EQ(TAdmBlobData(Buffer(1), "\xE9").cellDescription(), "[1 KB]") << "an extension that is no UTF-8";
}

TEST(TAdmBlobData, TellsDamageAndLinks)
{
    const TAdmBlobData damaged(Buffer(12288), "jpg", {ObjectState::Damaged, {}, {}});
    EXPECT_EQ(damaged.cellDescription(), ".jpg [12 KB, damaged]");
    const TAdmBlobData linked(bytesOf("x"), "", {ObjectState::Linked, {}, "C:\\a.xls"});
    EXPECT_EQ(linked.cellDescription(), "[1 KB, linked]");
    EXPECT_EQ(linked.description(), "Linked to the file C:\\a.xls");
}

// Whatever a file is called, it is named and opened as what it is.
TEST(TAdmBlobData, FileIsNamedByItsContent)
{
    const auto png = "\x89PNG\r\n\x1A\n"s;
    const struct {
        const char* name;
        std::string content;
        const char* extension;
        const char* storedName;
        const char* fileName; // "x" stands for an object without a name
        bool mayBeOpened;
    } cases[] = {
        {"all agree", png, "png", "a.png", "a.png", true},
        {"any case, any spelling", "\xFF\xD8\xFF", "JPEG", "A.JPEG", "A.JPEG", true},
        {"no extension", png, "", "", "x.png", true},
        {"another picture", png, "jpg", "a.jpg", "a.png", true},
        {"a picture called a program", png, "exe", "a.exe", "a.png", false},
        {"a program called a picture", "MZ\x90\0"s, "jpg", "a.jpg", "a.exe", false},
        {"a program",
            "\x7F"
            "ELF",
            "", "", "x.elf", false},
        {"a script called a text", "#!/bin/sh", "txt", "a.txt", "a.sh", false},
        {"a web page called a document", "<html>", "pdf", "", "x.html", false},
        {"a drawing that may run scripts", "<svg>", "png", "", "x.svg", false},
        {"a launcher", "# note\n[Desktop Entry]\nExec=x", "txt", "", "x.desktop", false},
        {"text under the name of a launcher", "Exec=x", "desktop", "", "x.desktop", false},
        {"text under the name of a script", "alert(1)", "js", "", "x.js", false},
        {"text under the name of a picture", "hello", "png", "", "x.txt", true},
        {"an installer", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", "msi", "", "x.msi", false},
        {"text of another type", "a;b", "csv", "a.csv", "a.csv", false},
        {"unknown content", "\1\2", "raw", "", "x.raw", true},
        {"unknown content and no extension", "\1\2", "", "", "x", false},
        {"unknown content of a dangerous name", "\1\2", "com", "", "x.com", false},
        {"a text without a name", "text", "", "", "x.txt", false},
        {"a text that had no extension", "text", "", "README", "README", false},
        {"a dot in the name", "%PDF-1.4", "2", "Report v1.2", "Report v1.2.pdf", true},
        {"hidden file", "text", "profile", ".profile", ".profile", false},
    };
    for (const auto& test : cases) {
        TAdmBlobData blob(bytesOf(test.content), test.extension, {ObjectState::Whole, test.storedName, {}});
        EXPECT_EQ(blob.fileName("x"), test.fileName) << test.name;
        EXPECT_EQ(blob.mayBeOpened(), test.mayBeOpened) << test.name;
    }
    TAdmBlobData damaged(bytesOf(png), "png", {ObjectState::Damaged, "a.png", {}});
    EXPECT_EQ(damaged.fileName("x"), "a.damaged.png");
}

class CountingDecoder : public ImageDecoder {
public:
    std::shared_ptr<const Image> decode(std::span<const std::byte> bytes) override
    {
        ++calls;
        return bytes.empty() ? nullptr : std::make_shared<const Image>(Image{1, 1, {1, 2, 3, 4}});
    }
    int calls = 0;
};

TEST(TAdmBlobData, PictureIsDecodedOnceAtFirstAsk)
{
    CountingDecoder decoder;
    TAdmBlobData picture(bytesOf("x"), "");
    TAdmBlobData none({}, "");
    EXPECT_EQ(decoder.calls, 0);
    EXPECT_NE(picture.image(decoder), nullptr);
    EXPECT_EQ(picture.image(decoder), picture.image(decoder));
    EXPECT_EQ(none.image(decoder), nullptr);
    EXPECT_EQ(none.image(decoder), nullptr);
    EXPECT_EQ(decoder.calls, 2);
}

TEST(SafeFileExtension, IsTrueForDocumentsAndMediaAlone)
{
    for (const auto* safe : {"txt", "pdf", "PDF", "DocX", "264", "raw", "accdb"})
        EXPECT_TRUE(isSafeFileExtension(safe)) << safe;
    for (const auto* unsafe : {"", "exe", "sh", "docm", "html", "pdf ", ".pdf", "jpeg", "desktop"})
        EXPECT_FALSE(isSafeFileExtension(unsafe)) << unsafe;
}

// A temporary folder of its own for each test.
class BlobTempFile : public ::testing::Test {
public:
    ~BlobTempFile() override { unsetenv("TMPDIR"); }

protected:
    BlobTempFile() { setenv("TMPDIR", m_folder.path().c_str(), 1); }
    test::TempFolder m_folder;
};

TEST_F(BlobTempFile, LivesAsLongAsTheBlob)
{
    {
        TAdmBlobData blob(bytesOf("payload"), "txt");
        const std::filesystem::path path = blob.createTempFile();
        EXPECT_EQ(path.parent_path(), m_folder.path());
        EXPECT_EQ(path.extension(), ".txt");
        EXPECT_EQ(path.filename().string().size(), "Vellumo-XXXXXXXXX.txt"s.size());
        EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
        EXPECT_EQ(blob.createTempFile(), path.string());
        EXPECT_EQ(m_folder.read(path.filename().string()), "payload");
    }
    EXPECT_TRUE(m_folder.names().empty());
}

TEST_F(BlobTempFile, HasItsStoredNameInAFolderOfItsOwn)
{
    {
        TAdmBlobData blob(bytesOf("payload"), "txt", {ObjectState::Whole, "my notes.txt", {}});
        const std::filesystem::path path = blob.createTempFile();
        EXPECT_EQ(path.filename(), "my notes.txt");
        EXPECT_EQ(path.parent_path().parent_path(), m_folder.path());
        EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
        EXPECT_EQ(std::filesystem::status(path.parent_path()).permissions(), std::filesystem::perms(0700));
        EXPECT_EQ(blob.createTempFile(), path.string());
    }
    EXPECT_TRUE(m_folder.names().empty());
}

TEST_F(BlobTempFile, UnknownContentWithoutExtensionHasNoDot)
{
    TAdmBlobData blob(bytesOf("\1\2"), "");
    EXPECT_EQ(std::filesystem::path(blob.createTempFile()).extension(), "");
}

TEST_F(BlobTempFile, ExtensionLeadsToNoOtherFolder)
{
    TAdmBlobData blob(bytesOf("\1\2"), "x/../../y");
    EXPECT_EQ(std::filesystem::path(blob.createTempFile()).parent_path(), m_folder.path());
}

TEST_F(BlobTempFile, FailedWriteLeavesNothingAndIsTriedAgain)
{
    TAdmBlobData blob(Buffer(5000), "bin");
    {
        const test::FileSizeLimit limit(1000);
        EXPECT_EQ(blob.createTempFile(), "");
    }
    EXPECT_TRUE(m_folder.names().empty());
    EXPECT_EQ(std::filesystem::file_size(blob.createTempFile()), 5000U);
}

} // namespace
} // namespace vellumo

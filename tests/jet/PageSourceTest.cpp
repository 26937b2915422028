// SPDX-License-Identifier: MIT
#include "jet/PageSource.h"

#include "jet/PageBuilder.h"
#include "samples/DatabaseWriter.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace vellumo::jet {
namespace {

using namespace std::string_literals;
using namespace vellumo::test;

class PageSourceTest : public testing::Test {
protected:
    // A sound file with a table of 300 rows; its bytes.
    std::string make(const char* name, samples::JetVersion version, std::uint32_t databaseKey = 0)
    {
        samples::DatabaseDescription database{.version = version, .databaseKey = databaseKey};
        std::vector<std::vector<samples::Value>> rows(300, {std::string(100, 'x')});
        database.tables = {{.name = "T", .columns = {{.name = "Text"}}, .rows = samples::rowsOf(std::move(rows))}};
        EXPECT_TRUE(samples::writeDatabase(database, m_folder.path(name)).ok());
        return m_folder.read(name).value_or("");
    }
    std::unique_ptr<PageSource> open(const char* name) { return PageSource::open(m_folder.path(name), {}, m_failure); }
    // What refuses a file of these bytes; nullopt when nothing does.
    std::optional<OpenFailure> refusal(const std::string& bytes)
    {
        m_folder.write("x.mdb", bytes);
        return open("x.mdb") ? std::nullopt : std::optional(m_failure);
    }

    TempFolder m_folder;
    OpenFailure m_failure = OpenFailure::Stopped;
};

// Whether all pages from `first` on are those of `file`.
bool arePagesOf(const std::string& file, Pages& pages, std::uint32_t first = 1)
{
    PageBuffer buffer;
    const auto size = pages.format().size;
    for (auto page = first; page < pages.count(); ++page)
        if (textOf(pages.read(page, buffer)) != file.substr(page * size, size)) return false;
    return first < pages.count();
}

TEST_F(PageSourceTest, ReadsPagesOfBothVersionsDecoded)
{
    for (const auto version : {samples::JetVersion::Jet3, samples::JetVersion::Jet4}) {
        const auto plain = make("plain.mdb", version);
        ASSERT_NE(plain.substr(8192), make("key.mdb", version, 0x12345678).substr(8192));
        for (const auto* name : {"plain.mdb", "key.mdb"}) {
            const auto pages = open(name);
            ASSERT_TRUE(pages);
            EXPECT_EQ(pages->formatVersion(), version == samples::JetVersion::Jet3 ? 0 : 1);
            EXPECT_EQ(pages->codePage(), 1252);
            EXPECT_EQ(pages->count() * pages->format().size, plain.size());
            EXPECT_TRUE(arePagesOf(plain, *pages)) << name;
            EXPECT_TRUE(arePagesOf(plain, *pages->another())) << name;
            EXPECT_FALSE(pages->isCutOrChanged());
            PageBuffer buffer;
            EXPECT_TRUE(pages->read(0, buffer).empty());
            EXPECT_TRUE(pages->read(pages->count(), buffer).empty());
        }
    }
}

TEST_F(PageSourceTest, RefusalsHaveAReason)
{
    const auto jet4 = make("4.mdb", samples::JetVersion::Jet4);
    const auto jet3 = make("3.mdb", samples::JetVersion::Jet3);
    const auto patched = [&](std::size_t offset, const std::string& bytes) {
        auto copy = jet4;
        return copy.replace(offset, bytes.size(), bytes);
    };
    EXPECT_EQ(refusal(""), OpenFailure::NotADatabase);
    EXPECT_EQ(refusal(std::string(100000, '\0')), OpenFailure::NotADatabase);
    EXPECT_EQ(refusal("Standard Jet DB, a text"), OpenFailure::NotADatabase);
    EXPECT_EQ(refusal(patched(0, "\1")), OpenFailure::NotADatabase);
    EXPECT_EQ(refusal(patched(18, "x")), OpenFailure::NotADatabase);
    EXPECT_EQ(refusal(jet4.substr(0, 4095)), OpenFailure::NotADatabase);
    EXPECT_EQ(refusal(jet4.substr(0, 4096)), std::nullopt);
    EXPECT_EQ(refusal(jet3.substr(0, 2047)), OpenFailure::NotADatabase);
    EXPECT_EQ(refusal(jet3.substr(0, 2048)), std::nullopt);
    for (std::size_t version = 0; version <= 7; ++version) {
        const auto newer = version == 7 ? OpenFailure::UnknownNewer : OpenFailure::NewerFormat;
        EXPECT_EQ(refusal(patched(4, "Standard ACE DB\0"s + u8(version))), newer) << version;
        EXPECT_TRUE(version < 2 || refusal(patched(20, u8(version))) == newer) << version;
    }

    open("no.mdb");
    EXPECT_EQ(m_failure, OpenFailure::Missing);
    open("4.mdb/x");
    EXPECT_EQ(m_failure, OpenFailure::Missing);
    open(".");
    EXPECT_EQ(m_failure, OpenFailure::NotAFile);
    EXPECT_FALSE(PageSource::open("/dev/null", {}, m_failure = OpenFailure::Stopped));
    EXPECT_EQ(m_failure, OpenFailure::NotAFile);
}

TEST_F(PageSourceTest, AFileThatMayNotBeReadIsRefused)
{
    make("x.mdb", samples::JetVersion::Jet4);
    std::filesystem::permissions(m_folder.path("x.mdb"), std::filesystem::perms::none);
    // Nothing is forbidden to root, so another process becomes someone else.
    const auto tryAsNobody = [&] {
        if (geteuid() == 0 && seteuid(65534) != 0) _exit(2);
        _exit(!open("x.mdb") && m_failure == OpenFailure::NoPermission ? 0 : 1);
    };
    EXPECT_EXIT(tryAsNobody(), testing::ExitedWithCode(0), "");
}

TEST_F(PageSourceTest, AFileThatIsReplacedIsReadToItsEnd)
{
    const auto bytes = make("x.mdb", samples::JetVersion::Jet4);
    const auto pages = open("x.mdb");
    make("y.mdb", samples::JetVersion::Jet3);
    std::filesystem::rename(m_folder.path("y.mdb"), m_folder.path("x.mdb"));
    EXPECT_TRUE(arePagesOf(bytes, *pages));
    EXPECT_TRUE(arePagesOf(bytes, *pages->another()));
    EXPECT_FALSE(pages->isCutOrChanged());
}

TEST_F(PageSourceTest, AFileThatIsCutGivesTheRest)
{
    const auto bytes = make("x.mdb", samples::JetVersion::Jet4);
    ASSERT_GT(bytes.size(), 6U * 4096);
    const auto pages = open("x.mdb");
    PageBuffer buffer;
    EXPECT_FALSE(pages->read(5, buffer).empty());
    std::filesystem::resize_file(m_folder.path("x.mdb"), 4 * 4096 + 4095);
    PageBuffer other;
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(pages->read(5, other).empty());
        EXPECT_TRUE(pages->read(4, other).empty()) << "all but a byte of it is there";
        EXPECT_EQ(textOf(pages->read(3, other)), bytes.substr(3 * std::size_t{4096}, 4096)) << "failures do not stick";
    }
    EXPECT_TRUE(pages->isCutOrChanged());
    const auto cut = open("x.mdb");
    EXPECT_EQ(cut->count(), 4U);
    EXPECT_TRUE(arePagesOf(bytes, *cut));
    EXPECT_TRUE(cut->isCutOrChanged()) << "ends inside a page";
}

} // namespace
} // namespace vellumo::jet

// SPDX-License-Identifier: MIT
#include "adapters/XbelRecentDocuments.h"

#include "adapters/Files.h"
#include "adapters/LockFile.h"
#include "platform/DatabasePath.h"
#include "support/TempFolder.h"

#include <functional>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Entries as other desktop programs write them: indented or not, quoted or not, with metadata of their own.
const std::string head = R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0"
      xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info"
>
)";
const std::string gtkEntry =
    R"(  <bookmark href="file:///home/a/b%20c.txt" added="2024-01-02T03:04:05.678901Z" modified="2024-01-02T03:04:05.678904Z" visited="2024-01-02T03:04:05.678902Z">
    <info>
      <metadata owner="http://freedesktop.org">
        <mime:mime-type type="text/plain"/>
        <bookmark:applications>
          <bookmark:application name="Text > Editor" exec="&apos;gedit %u&apos;" modified="2024-01-02T03:04:05.678903Z" count="3"/>
        </bookmark:applications>
      </metadata>
    </info>
  </bookmark>
)";
const std::string kdeEntry =
    R"(<!-- <bookmark href="x"> --> <bookmark visited='2024-05-06T07:08:09.123Z' added='2024-05-06T07:08:09.123Z' modified='2024-05-06T07:08:09.123Z' href='file:///data/a&amp;b.mdb'>
  <info>
   <metadata owner="http://freedesktop.org"><mime:mime-type type="application/vnd.ms-access"/>
    <bookmark:groups><bookmark:group>Office</bookmark:group></bookmark:groups>
    <bookmark:applications><bookmark:application exec="kexi %u" count="1" name="org.kde.kexi" modified="2024-05-06T07:08:09.123Z"/></bookmark:applications>
   </metadata>
  </info>
 </bookmark>
)";
const std::string foreignMetadataEntry =
    R"(  <bookmark href="file:///data/f.mdb" added="2024-01-02T03:04:05Z" modified="2024-01-02T03:04:05Z" visited="2024-01-02T03:04:05Z">
    <info>
      <metadata owner="http://example.org" rating="5"/>
      <metadata owner="http://freedesktop.org">
        <mime:mime-type type="application/vnd.ms-access"/>
        <bookmark:applications>
          <bookmark:application name="other" exec="&apos;other %u&apos;" modified="2024-01-02T03:04:05Z" count="1"/>
        </bookmark:applications>
      </metadata>
    </info>
  </bookmark>
)";
const std::string foot = "</xbel>\n<!-- the end -->\n";

class XbelRecentDocumentsTest : public ::testing::Test {
protected:
    [[nodiscard]] XbelSettings settings() const
    {
        XbelSettings settings{path, "vellumo", "vellumo %u", {}};
        settings.lockPatience = std::chrono::milliseconds(0);
        return settings;
    }

    TempFolder folder;
    std::string path = folder.path("recently-used.xbel");
};

TEST_F(XbelRecentDocumentsTest, ListsWhatWasNotedTheLatestFirst)
{
    path = folder.path("new folder/recently-used.xbel");
    XbelRecentDocuments documents(settings());
    EXPECT_THAT(documents.paths(), ElementsAre());
    for (const auto* file : {"/data/one.mdb", "/data/Größe & 'co' 100%.accdb", "/data/two.mdb", "/data/one.mdb"})
        documents.note(file);
    const auto expected = ElementsAre("/data/one.mdb", "/data/two.mdb", "/data/Größe & 'co' 100%.accdb");
    EXPECT_THAT(documents.paths(), expected);
    EXPECT_THAT(XbelRecentDocuments(settings()).paths(), expected);
    EXPECT_TRUE(isPrivate(path));
    const auto text = readFile(path);
    EXPECT_THAT(text, HasSubstr("<mime:mime-type type=\"application/vnd.ms-access\"/>"));
    EXPECT_THAT(text, HasSubstr("<bookmark:group>Database</bookmark:group>"));
    EXPECT_THAT(text, HasSubstr("name=\"vellumo\" exec=\"&apos;vellumo %u&apos;\""));
    EXPECT_THAT(text, HasSubstr("count=\"2\""));
    auto elsewhere = settings();
    elsewhere.application = "other";
    EXPECT_THAT(XbelRecentDocuments(elsewhere).paths(), ElementsAre());
    documents.clear();
    EXPECT_THAT(XbelRecentDocuments(settings()).paths(), ElementsAre());
}

TEST_F(XbelRecentDocumentsTest, FindsTheFileOfAPathWithoutExtension)
{
    for (const auto* name :
        {"One.MDB", "Two.accdb", "Two.mdb", "Sub.2020.mdb", "One.txt", "Both.mdb", "Both.accdb", "Bare"})
        folder.write(name, "");
    XbelRecentDocuments documents(settings());
    documents.note(folder.path("Two.accdb"));
    const struct {
        const char* noted;
        const char* listed;
    } cases[] = {{"Two.", "Two.accdb"}, {"One.", "One.MDB"}, {"One", "One.MDB"}, {"Sub.2020.", "Sub.2020.mdb"},
        {"Bare", "Bare"}, {"None.", "None."}, {"Both.", "Both."}};
    for (const auto& [noted, listed] : cases) {
        documents.clear();
        documents.note(folder.path(noted));
        EXPECT_THAT(documents.paths(), ElementsAre(folder.path(listed))) << noted;
    }
    EXPECT_EQ(completedDatabasePath(folder.path("One")), folder.path("One.MDB"));
    EXPECT_EQ(completedDatabasePath(folder.path("Both.")), folder.path("Both.")) << "either may be meant";
    // One that was noted before the file was there.
    documents.clear();
    documents.note(folder.path("Later."));
    folder.write("Later.mdb", "");
    EXPECT_THAT(documents.paths(), ElementsAre(folder.path("Later.mdb")));
}

TEST_F(XbelRecentDocumentsTest, LeavesTheEntriesOfOthersByteForByte)
{
    const auto others = head + gtkEntry + kdeEntry + foreignMetadataEntry;
    folder.write("recently-used.xbel", others + foot);
    XbelRecentDocuments documents(settings());
    documents.note("/data/new.mdb");
    documents.note("/data/newer.mdb");
    const auto text = readFile(path);
    EXPECT_TRUE(text.starts_with(others + "  <bookmark href=\"file:///data/new.mdb\"")) << text;
    EXPECT_TRUE(text.ends_with("</bookmark>\n" + foot)) << text;
    EXPECT_TRUE(isPrivate(path));
    documents.clear();
    EXPECT_EQ(readFile(path), others + foot);
}

TEST_F(XbelRecentDocumentsTest, SharesAnEntryWithOtherPrograms)
{
    folder.write("recently-used.xbel", head + kdeEntry + gtkEntry + foot);
    XbelRecentDocuments documents(settings());
    documents.note("/data/a&b.mdb");
    EXPECT_THAT(documents.paths(), ElementsAre("/data/a&b.mdb"));
    EXPECT_THAT(readFile(path), HasSubstr("name=\"org.kde.kexi\""));
    documents.clear();
    EXPECT_THAT(documents.paths(), ElementsAre());
    const auto text = readFile(path);
    EXPECT_THAT(text, HasSubstr(R"(name="org.kde.kexi" exec="kexi %u" modified="2024-05-06T07:08:09.123000Z")"));
    EXPECT_THAT(text, HasSubstr("<bookmark:group>Office</bookmark:group>"));
    EXPECT_THAT(text, HasSubstr(gtkEntry));
    EXPECT_THAT(text, ::testing::Not(HasSubstr("vellumo")));
}

TEST_F(XbelRecentDocumentsTest, WritesNothingThatCouldLoseSomething)
{
    const struct {
        const char* name;
        std::string content;
    } cases[] = {
        {"cut short", (head + gtkEntry).substr(0, head.size() + 200)},
        {"not closed", head + gtkEntry},
        {"no XML", "recent files"},
        {"empty file", ""},
        {"metadata with children of its own",
            head + "<bookmark href=\"file:///x\"><info><metadata owner=\"o\"><y/></metadata></info></bookmark>" + foot},
        {"a shared entry with metadata of others", head + foreignMetadataEntry + foot},
        {"root without content", "<xbel version=\"1.0\"/>"},
        {"other prefixes for the same names", "<xbel version=\"1.0\"></xbel>"},
    };
    for (const auto& test : cases) {
        folder.write("recently-used.xbel", test.content);
        XbelRecentDocuments documents(settings());
        documents.note("/data/f.mdb");
        EXPECT_EQ(readFile(path), test.content) << test.name;
        EXPECT_THAT(documents.paths(), ElementsAre("/data/f.mdb")) << test.name;
        documents.clear();
        EXPECT_EQ(readFile(path), test.content) << test.name;
        EXPECT_THAT(documents.paths(), ElementsAre()) << test.name;
    }
}

TEST_F(XbelRecentDocumentsTest, KeepsForThisRunWhatMayNotBeWritten)
{
    const auto globals = folder.path("kdeglobals");
    const struct {
        const char* name;
        const char* globals;
        const char* noted;
        bool isWritten;
    } cases[] = {
        {"no switches", "", "/data/.x/a.mdb", true},
        {"recent files off", "[RecentDocuments]\nUseRecent=false\n", "/data/a.mdb", false},
        {"hidden files ignored: a hidden one", "[RecentDocuments]\nIgnoreHidden=true\n", "/data/.x/a.mdb", false},
        {"hidden files ignored: another", "[RecentDocuments]\nIgnoreHidden=true\n", "/data/x.y/a.mdb", true},
        {"in the temporary folder", "", "/temporary/a.mdb", false},
        {"beside the temporary folder", "", "/temporary2/a.mdb", true},
    };
    for (const auto& test : cases) {
        folder.write("kdeglobals", test.globals);
        std::filesystem::remove(path);
        auto mine = settings();
        mine.policy = readRecentFilesPolicy(globals);
        mine.policy.temporaryFolder = "/temporary";
        XbelRecentDocuments documents(mine);
        documents.note(test.noted);
        EXPECT_EQ(std::filesystem::exists(path), test.isWritten) << test.name;
        EXPECT_THAT(documents.paths(), ElementsAre(test.noted)) << test.name;
    }
}

// In a process of its own: the settings' descriptions are read once.
TEST_F(XbelRecentDocumentsTest, AGnomeDesktopThatRemembersNothingIsHeard)
{
    folder.write("privacy.gschema.xml",
        R"(<schemalist><schema id="org.gnome.desktop.privacy" path="/org/gnome/desktop/privacy/">
           <key name="remember-recent-files" type="b"><default>false</default></key></schema></schemalist>)");
    if (std::system(("glib-compile-schemas '" + folder.path() + "'").c_str()) != 0)
        GTEST_SKIP() << "there is no schema compiler";
    const auto child = ::fork();
    if (child == 0) {
        ::setenv("GSETTINGS_SCHEMA_DIR", folder.path().c_str(), 1);
        ::setenv("GSETTINGS_BACKEND", "memory", 1);
        std::_Exit(userRecentFilesPolicy().remembers ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_F(XbelRecentDocumentsTest, DoesNotWriteWhileAnotherProgramHoldsTheLock)
{
    XbelRecentDocuments documents(settings());
    {
        LockFile other(path + ".lock");
        ASSERT_TRUE(other.tryLock(std::chrono::milliseconds(0)));
        documents.note("/data/a.mdb");
        EXPECT_FALSE(std::filesystem::exists(path));
    }
    documents.note("/data/b.mdb");
    EXPECT_THAT(documents.paths(), ElementsAre("/data/b.mdb", "/data/a.mdb"));
    EXPECT_THAT(XbelRecentDocuments(settings()).paths(), ElementsAre("/data/b.mdb"));
}

TEST_F(XbelRecentDocumentsTest, WaitsForTheLockOnceUntilItIsFreeAgain)
{
    using std::chrono::steady_clock;
    auto patient = settings();
    patient.lockPatience = std::chrono::milliseconds(500);
    XbelRecentDocuments documents(patient);
    LockFile other(path + ".lock");
    ASSERT_TRUE(other.tryLock(std::chrono::milliseconds(0)));
    const auto start = steady_clock::now();
    for (int i = 0; i < 20; ++i)
        documents.note("/data/a.mdb");
    EXPECT_LT(steady_clock::now() - start, 10 * patient.lockPatience);
    EXPECT_GE(steady_clock::now() - start, patient.lockPatience);
}

TEST_F(XbelRecentDocumentsTest, KeepsItsListWhileTheFileCannotBeRead)
{
    XbelRecentDocuments documents(settings());
    documents.note("/data/a.mdb");
    documents.note("/data/b.mdb");
    const auto expected = ElementsAre("/data/b.mdb", "/data/a.mdb");
    EXPECT_THAT(documents.paths(), expected);
    const auto text = readFile(path);
    for (const auto& damaged : {std::string(), text.substr(0, text.size() / 2), std::string("recent files")}) {
        folder.write("recently-used.xbel", damaged);
        EXPECT_THAT(documents.paths(), expected) << damaged;
    }
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_THAT(documents.paths(), expected) << "a folder";
    std::filesystem::remove(path);
    EXPECT_THAT(documents.paths(), ElementsAre()) << "no file";
}

TEST_F(XbelRecentDocumentsTest, HidesForThisRunWhatCannotBeTakenOut)
{
    // What another program added to an entry of ours.
    const auto makeForeign = [](std::string text) {
        const std::string metadata = "<metadata owner=\"http://freedesktop.org\">";
        const std::string application = "<bookmark:applications>";
        text.insert(text.find(application) + application.size(),
            R"(<bookmark:application name="other" exec="other" modified="2024-01-02T03:04:05Z" count="1"/>)");
        return text.insert(text.find(metadata), "<metadata owner=\"http://example.org\" rating=\"5\"/>");
    };
    const struct {
        const char* name;
        std::function<std::string(std::string)> change;
        bool isLocked;
    } cases[] = {
        {"an entry with metadata of others", makeForeign, false},
        {"another program holds the lock", [](std::string text) { return text; }, true},
        {"a file that cannot be read", [](const std::string& text) { return text.substr(0, text.size() / 2); }, false},
    };
    for (const auto& test : cases) {
        std::filesystem::remove(path);
        XbelRecentDocuments documents(settings());
        documents.note("/data/a.mdb");
        EXPECT_THAT(documents.paths(), ElementsAre("/data/a.mdb")) << test.name;
        const auto text = readFile(path);
        folder.write("recently-used.xbel", test.change(text));
        EXPECT_THAT(documents.paths(), ElementsAre("/data/a.mdb")) << test.name;
        LockFile other(path + ".lock");
        EXPECT_TRUE(!test.isLocked || other.tryLock(std::chrono::milliseconds(0))) << test.name;
        documents.clear();
        EXPECT_THAT(documents.paths(), ElementsAre()) << test.name;
        folder.write("recently-used.xbel", text);
        EXPECT_THAT(documents.paths(), ElementsAre()) << test.name << ", later";
        EXPECT_THAT(XbelRecentDocuments(settings()).paths(), ElementsAre("/data/a.mdb")) << test.name << ", next run";
        documents.note("/data/a.mdb");
        EXPECT_THAT(documents.paths(), ElementsAre("/data/a.mdb")) << test.name << ", noted again";
    }
}

// Under another name the desktop finds neither icon nor program for our entries.
TEST(XbelSettings, NameTheProgramAsItsDesktopFileDoes)
{
    const auto settings = userXbelSettings();
    const auto text = readFile(VELLUMO_SOURCE_DIR "/packaging/" + settings.application + ".desktop");
    EXPECT_THAT(text, HasSubstr("\nExec=" + settings.command.substr(0, settings.command.find(' ')) + ' '));
}

TEST_F(XbelRecentDocumentsTest, ProgramsThatWriteAtOnceLoseNothing)
{
    constexpr std::size_t processes = 4;
    constexpr std::size_t documentsEach = 50;
    auto patient = settings();
    patient.lockPatience = std::chrono::minutes(2);
    for (std::size_t process = 0; process < processes; ++process) {
        if (fork() != 0) continue;
        XbelRecentDocuments documents(patient);
        for (std::size_t i = 0; i < documentsEach; ++i)
            documents.note("/data/" + std::to_string(process) + '-' + std::to_string(i) + ".mdb");
        _exit(0);
    }
    for (std::size_t process = 0; process < processes; ++process)
        wait(nullptr);
    EXPECT_EQ(XbelRecentDocuments(settings()).paths().size(), processes * documentsEach);
}

} // namespace
} // namespace vellumo

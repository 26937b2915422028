// SPDX-License-Identifier: MIT
// The parts of the controller by themselves: the files, and what is selected of them.

#include "browser/Files.h"
#include "FakeWindow.h"
#include "browser/Selection.h"
#include "support/FakeDesktop.h"
#include "support/ModelBuilder.h"

#include <atomic>
#include <chrono>
#include <future>
#include <gmock/gmock.h>
#include <thread>

namespace vellumo {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <typename... Names> void fill(TAdmMDBFile& file, Names... names)
{
    TAdmMDBFile::Tables tables;
    (tables.push_back(makeTable(names, {})), ...);
    file.setTables(std::move(tables));
    file.setActive(true);
}

TEST(Selection, FindsWhatItNamesAndNothingThatHasGone)
{
    FakeFileFacts facts;
    FileList list(facts);
    auto& file = list.createNewMDBFile("/d/F.mdb", true);
    fill(file, "A", "Twice", "Twice");
    Selection selection(list);
    selection.select(TreeItem::of(*file.tables()[2]));
    selection.setClickedItem(TreeItem::of(*file.tables()[1]));
    EXPECT_EQ(selection.item().table, file.tables()[2].get()) << "a damaged file has two of a name";
    EXPECT_EQ(selection.clickedItem().table, file.tables()[1].get());
    file.close();
    EXPECT_EQ(selection.item(), TreeItem::of(file)) << "a table that has gone";
    fill(file, "Twice", "Z");
    EXPECT_EQ(selection.item().table, file.tables()[0].get()) << "found again by its name";
    selection.fileWillClose(file);
    EXPECT_EQ(selection.item(), TreeItem::of(file));
    EXPECT_EQ(selection.clickedItem(), TreeItem());
    const auto removed = list.remove(file);
    list.createNewMDBFile("/d/F.mdb", true);
    EXPECT_EQ(selection.item(), TreeItem()) << "another entry is another file";
    selection.select(TreeItem::of(*removed));
    EXPECT_EQ(selection.item(), TreeItem());
}

TEST(FileList, TellsFilesOfOneNameApart)
{
    FakeFileFacts facts;
    FileList list(facts);
    const auto& first = list.createNewMDBFile("/d/F.mdb", false);
    const auto& second = list.createNewMDBFile("/e/F.mdb", false);
    EXPECT_EQ(list.findByFolderAndName("/d/F.accdb"), &first);
    EXPECT_EQ(list.findByFolderAndName("/e/F.mdb"), &second);
    EXPECT_EQ(list.findByFolderAndName("/f/F.mdb"), nullptr);
}

TEST(Files, AFileInUseStaysWhateverTheDocumentsSay)
{
    FakeWindow window;
    FakeDesktop<> desktop;
    bool isExporting = true;
    std::vector<std::string> closed;
    Files files(window, desktop.ports,
        {[&](TAdmMDBFile& file) { closed.push_back(file.name()); }, [](TAdmMDBFile&) {},
            [&](const TAdmMDBFile&) { return isExporting; }, [](const TAdmMDBFile&) { return OpenOptions(); }});
    files.reconcile({"/d/F.mdb"});
    auto& file = *files.list().recentFiles().front();
    const std::weak_ptr<TAdmMDBFile> kept = files.list().share(file);
    fill(file, "A");
    files.reconcile({});
    EXPECT_TRUE(file.active());
    EXPECT_FALSE(files.canUse(FileCommand::Close, &file));
    isExporting = false;
    EXPECT_TRUE(files.canUse(FileCommand::Close, &file));
    files.reconcile({});
    EXPECT_THAT(files.list().recentFiles(), IsEmpty());
    EXPECT_THAT(closed, ElementsAre("F"));
    EXPECT_THAT(window.events, ElementsAre("collapse F", "will close F"));
    EXPECT_FALSE(kept.expired()) << "the tree still has its row";
    files.forgetDropped();
    EXPECT_TRUE(kept.expired());
}

class CountedFacts : public FakeFileFacts {
public:
    std::optional<FileFacts> facts(const std::string& path) const override
    {
        ++questions;
        return FakeFileFacts::facts(path);
    }
    mutable int questions = 0;
};

TEST(Files, DiskIsAskedOnceForAFileThatIsOpened)
{
    FakeWindow window;
    FakeDesktop<CountedFacts> desktop;
    Files files(window, desktop.ports,
        {[](TAdmMDBFile&) {}, [](TAdmMDBFile&) {}, [](const TAdmMDBFile&) { return false; },
            [](const TAdmMDBFile&) { return OpenOptions(); }});
    files.reconcile({"/d/F.mdb"});
    desktop.fileFacts.byPath["/d/F.mdb"] = {7, {}, {}, {}};
    auto& file = *files.list().recentFiles().front();
    desktop.fileFacts.questions = 0;
    bool isDone = false;
    files.open(file, [&](TAdmMDBFile&, OpenResult) { isDone = true; });
    desktop.mainThread.runUntil([&] { return isDone; });
    EXPECT_EQ(desktop.fileFacts.questions, 1);
    EXPECT_EQ(file.size(), 7U);
}

// Does not answer until it is told to, as a file system that is gone.
class SlowFacts : public FileFactsSource {
public:
    ~SlowFacts() override { EXPECT_TRUE(isSoon(m_answers, m_questions)); }
    std::optional<FileFacts> facts(const std::string&) const override
    {
        ++m_questions;
        m_mayAnswer.wait();
        ++m_answers;
        return FileFacts{5, {}, {}, {}};
    }
    void waitForQuestions(int count) { EXPECT_TRUE(isSoon(m_questions, count)); }
    void answer() { m_answer.set_value(); }

private:
    static bool isSoon(const std::atomic<int>& count, int wanted)
    {
        for (int tries = 0; count != wanted && tries < 10'000; ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return count == wanted;
    }

    mutable std::atomic<int> m_questions = 0;
    mutable std::atomic<int> m_answers = 0;
    std::promise<void> m_answer;
    std::shared_future<void> m_mayAnswer{m_answer.get_future()};
};

TEST(DiskLook, WaitsForNoFileSystem)
{
    MainThreadQueue mainThread;
    SlowFacts slow;
    FakeFileFacts quick;
    quick.byPath["/d/F.mdb"] = {3, {}, {}, {}};
    std::string seen;
    const auto note = [&](const std::string& path, const auto& facts) {
        seen += path + (facts ? " " + std::to_string(facts->size) : " is gone") + "; ";
    };
    {
        DiskLook hanging(slow, mainThread, note);
        hanging.begin("/d/A.mdb"); // and goes without an answer
        slow.waitForQuestions(1);
    }
    DiskLook forgetful(slow, mainThread, note);
    forgetful.begin("/d/F.mdb");
    forgetful.forgetQuestion();
    DiskLook look(slow, mainThread, note);
    look.begin("/d/B.mdb");
    look.begin("/d/C.mdb"); // has no turn while B has no answer
    slow.waitForQuestions(3);
    slow.answer();
    mainThread.runUntil([&] { return !seen.empty(); });
    look.begin("/d/D.mdb");
    DiskLook other(quick, mainThread, note);
    mainThread.runUntil([&] { return seen.find("D.mdb") != std::string::npos; });
    other.begin("/d/E.mdb");
    mainThread.runUntil([&] { return seen.find("E.mdb") != std::string::npos; });
    EXPECT_EQ(seen, "/d/B.mdb 5; /d/D.mdb 5; /d/E.mdb is gone; ");
}

} // namespace
} // namespace vellumo

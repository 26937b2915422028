#include "export/ExportHints.h"
#include "support/ExportDesktop.h"
#include "support/ModelBuilder.h"
#include "support/TempFolder.h"
#include "text/TextEncoding.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellumo {
namespace {

using namespace test;
using enum ExportFileType;
using testing::ElementsAreArray;

std::vector<std::string> texts(const ExportWizard& wizard)
{
    std::vector<std::string> result;
    for (const auto& hint : exportHints(wizard))
        result.push_back((hint.kind == ExportHint::Kind::Missing ? "missing: " : "warning: ") + hint.text);
    return result;
}

// In every text, % stands for the folder of the test.
TEST(ExportHints, SaysWhatIsMissingAndWhatWillSurprise)
{
    using Change = std::function<void(ExportWizard&)>;
    const auto path = [](const char* value) {
        return [value](ExportWizard& wizard) { wizard.controls().exportPathTextField.value = value; };
    };
    const auto fileName = [](std::size_t row, const char* name) {
        return [=](ExportWizard& wizard) { wizard.setObjectValueForTableColumn(name, "filename", row); };
    };
    const auto encoding = [](const char* name) {
        return [name](ExportWizard& wizard) {
            wizard.controls().encodingPopup.selectedTag = findTextEncoding(name).value();
        };
    };
    const std::string cut = "warning: Each text is written up to its first zero byte. This encoding has zero bytes in "
                            "common letters, so the output will be cut.";
    const struct {
        const char* name;
        ExportFileType type;
        Change change;
        std::vector<std::string> hints;
    } cases[] = {
        {"all is well", CSV, [](ExportWizard&) {}, {}},
        {"no folder", CSV, path(""), {"missing: Choose the folder to export to."}},
        {"no file", SQLite, path(""), {"missing: Choose the file to export to."}},
        {"no table", TXT, [](ExportWizard& wizard) { wizard.deselectAll(); }, {"missing: Select at least one table."}},
        {"nothing of it", SQL,
            [](ExportWizard& wizard) {
                wizard.controls().exportDataCheckBox.value = false;
                wizard.controls().exportStructureCheckBox.value = false;
            },
            {"missing: Select the structure, the rows or both."}},
        {"two bytes a letter", CSV, encoding("UTF-16LE"), {cut}},
        {"four bytes a letter", XML, encoding("UTF-32"), {cut}},
        {"another text encoding", TXT, encoding("windows-1252"), {}},
        {"zero bytes do not matter to a script", SQL, encoding("UTF-16"), {}},
        {"no such folder", CSV, path("%/none"), {"warning: There is no folder “%/none”."}},
        {"no such folder of a file", XLS, path("%/none/x.xls"), {"warning: There is no folder “%/none”."}},
        {"a file that exists", XLS, path("%/old.xls"), {"warning: The file “old.xls” exists and will be replaced."}},
        {"a file among those of the tables", CSV, fileName(0, "old.xls"),
            {"warning: The file “old.xls” exists and will be replaced."}},
        {"several such files", CSV,
            [&](ExportWizard& wizard) {
                fileName(0, "old.xls")(wizard);
                fileName(1, "old.csv")(wizard);
            },
            {"warning: 2 files exist in this folder and will be replaced."}},
        {"a folder instead of a file", SQL, path("%"), {"warning: “@” is a folder."}},
        {"the database itself", SQL, path("%/Shop.mdb"),
            {"warning: The database itself is never written to; choose another file."}},
        {"two tables in one file", CSV, fileName(1, "Customers.csv"),
            {"warning: Several tables go to the file “Customers.csv”; only the last one will be left in it."}},
        {"a name that leads elsewhere", CSV, fileName(0, "../x"), {"warning: “../x” cannot be the name of a file."}},
        {"no name", CSV, fileName(0, ""), {"warning: “” cannot be the name of a file."}},
    };
    for (const auto& c : cases) {
        TempFolder folder;
        for (const auto* name : {"old.xls", "old.csv", "Shop.mdb"})
            folder.write(name, "x");
        ExportDesktop desktop;
        desktop.defaults.strings["exportFilePath"] = folder.path();
        const auto file = makeFile(
            folder.path("Shop.mdb"), makeTable("Customers", {{"T", "Text"}}), makeTable("Orders", {{"T", "Text"}}));
        ExportWizard wizard(*file, nullptr, c.type, desktop.ports);
        const auto inFolder = [&](std::string text) {
            if (const auto at = text.find('%'); at != std::string::npos) text.replace(at, 1, folder.path());
            if (const auto at = text.find('@'); at != std::string::npos)
                text.replace(at, 1, folder.path().substr(folder.path().rfind('/') + 1));
            return text;
        };
        c.change(wizard);
        auto& value = wizard.controls().exportPathTextField.value;
        value = inFolder(value);
        std::vector<std::string> expected;
        for (const auto& hint : c.hints)
            expected.push_back(inFolder(hint));
        EXPECT_THAT(texts(wizard), ElementsAreArray(expected)) << c.name;
    }
}

TEST(ExportHints, AFileWithoutTablesHasNothingToExport)
{
    TempFolder folder;
    ExportDesktop desktop;
    desktop.defaults.strings["exportFilePath"] = folder.path();
    const auto file = makeFile(folder.path("Empty.mdb"));
    const ExportWizard wizard(*file, nullptr, CSV, desktop.ports);
    EXPECT_EQ(texts(wizard), std::vector<std::string>{"missing: The file has no tables to export."});
}

} // namespace
} // namespace vellumo

// SPDX-License-Identifier: MIT
#include "ExportDesk.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <gmock/gmock.h>

namespace vellumo {
namespace {

using namespace test;
using enum ExportFileType;
using testing::ElementsAre;

// A dialog on the screen, and what a person sees of it.
class Screen {
public:
    Screen(ExportDesk& desk, ExportFileType type, const char* table = nullptr)
        : wizard(desk.wizard(type, table))
        , dialog(new ExportDialog(wizard, nullptr))
    {
        dialog->open();
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }
    ~Screen() { dialog.reset(); }

    QCheckBox& box(const char* name) { return child<QCheckBox>(*dialog, name); }
    QComboBox& popup(const char* name) { return child<QComboBox>(*dialog, name); }
    QLineEdit& field(const char* name) { return child<QLineEdit>(*dialog, name); }
    QTableView& tables() { return child<QTableView>(*dialog, "tableSelectionTableView"); }
    QPushButton& ok() { return *child<QDialogButtonBox>(*dialog, "buttonBox").button(QDialogButtonBox::Ok); }
    void click(const char* button) { child<QPushButton>(*dialog, button).click(); }
    QString hint(const char* name)
    {
        auto& label = static_cast<HintLabel&>(child<QWidget>(*dialog, name));
        return label.isVisible() ? label.text() : QString();
    }
    // "+Customers -Orders"
    std::string checked()
    {
        std::string text;
        const auto& model = *tables().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            if (row > 0) text += ' ';
            text += model.index(row, 0).data(Qt::CheckStateRole) == Qt::Checked ? '+' : '-';
            text += model.index(row, 1).data().toString().toStdString();
        }
        return text;
    }

    std::shared_ptr<ExportWizard> wizard;
    std::unique_ptr<ExportDialog> dialog;
};

// The options on the screen, in their order; a check box with its mark. A label must come and go with its field, and a
// row without anything in it must be gone.
std::string visibleOptions(Screen& screen)
{
    auto& layout = *screen.dialog->findChild<QFormLayout*>("optionsLayout");
    std::string names;
    const auto add = [&](const QWidget& widget) {
        if (!widget.isVisible()) return;
        if (!names.empty()) names += ' ';
        if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) names += box->isChecked() ? '+' : '-';
        names += widget.objectName().toStdString();
    };
    for (int row = 0; row < layout.rowCount(); ++row) {
        const auto* field = layout.itemAt(row, QFormLayout::FieldRole);
        const auto* item = field != nullptr ? field : layout.itemAt(row, QFormLayout::SpanningRole);
        auto* widget = item == nullptr ? nullptr : item->widget();
        if (widget == nullptr) continue;
        const auto* label = layout.labelForField(widget);
        EXPECT_TRUE(label == nullptr || label->isVisible() == widget->isVisible());
        const auto inner = widget->findChildren<QCheckBox*>();
        if (inner.isEmpty()) add(*widget);
        const auto before = names.size();
        for (const auto* box : inner)
            add(*box);
        EXPECT_TRUE(inner.isEmpty() || widget->isVisible() == (names.size() > before));
    }
    return names;
}

TEST(ExportDialog, ShowsWhatTheTypeNeeds)
{
    const std::string delimited =
        "-exactCheckBox +includeColumnHeaderCheckBox fieldDelimiterPopup recordDelimiterPopup "
        "decimalSymbolTextField encodingPopup -byteOrderMarkCheckBox -guardFormulasCheckBox objectsRow";
    const std::string sql =
        "exportSingleFileCheckBox -exactCheckBox sqlFormatPopup schemaNameTextField decimalSymbolTextField "
        "+exportStructureCheckBox +includeDropTableCheckBox +includeForeignKeyCheckBox "
        "+includeIndexCheckBox +exportDataCheckBox objectsRow";
    const struct {
        const char* title;
        ExportFileType type;
        const char* table;
        std::string options;
        bool isSingleFile;
    } cases[] = {
        {"Export CSV – Shop.mdb", CSV, nullptr, delimited, false},
        {"Export TXT – Shop.mdb", TXT, "Orders", delimited, false},
        {"Export XML – Shop.mdb", XML, nullptr,
            "-exactCheckBox decimalSymbolTextField encodingPopup -byteOrderMarkCheckBox objectsRow", false},
        {"Export XLS – Shop.mdb", XLS, nullptr,
            "+exportSingleFileCheckBox -exactCheckBox +includeColumnHeaderCheckBox objectsRow", true},
        {"Export XLS – Shop.mdb", XLS, "Orders",
            "-exportSingleFileCheckBox -exactCheckBox +includeColumnHeaderCheckBox objectsRow", false},
        {"Export SQL – Shop.mdb", SQL, nullptr, "+" + sql, true},
        {"Export SQL – Shop.mdb", SQL, "Orders", "-" + sql, false},
        {"Export SQLite – Shop.mdb", SQLite, "Orders",
            "-exactCheckBox +includeForeignKeyCheckBox +includeIndexCheckBox +exportDataCheckBox objectsRow", true},
    };
    for (const auto& c : cases) {
        ExportDesk desk;
        Screen screen(desk, c.type, c.table);
        EXPECT_EQ(screen.dialog->windowTitle().toStdString(), c.title);
        EXPECT_EQ(visibleOptions(screen), c.options) << c.title;
        EXPECT_EQ(
            child<QLabel>(*screen.dialog, "exportPathLabel").text(), c.isSingleFile ? "&Export file:" : "&Export path:")
            << c.title;
        EXPECT_EQ(screen.tables().isColumnHidden(2), c.isSingleFile) << c.title;
        EXPECT_EQ(screen.tables().currentIndex().row(), c.table == nullptr ? 0 : 1) << c.title;
        EXPECT_EQ(
            screen.checked(), c.table == nullptr ? "+Customers +Orders +Products" : "-Customers +Orders -Products");
    }
}

std::vector<std::string> titles(const QComboBox& popup)
{
    std::vector<std::string> result;
    for (int i = 0; i < popup.count(); ++i)
        result.push_back(popup.itemText(i).toStdString());
    return result;
}

TEST(ExportDialog, TheDelimiterOfACsvFileMovesTheDecimalSymbol)
{
    ExportDesk desk;
    Screen screen(desk, CSV);
    auto& delimiter = screen.popup("fieldDelimiterPopup");
    EXPECT_THAT(titles(delimiter), ElementsAre("Semicolon", "Comma"));
    EXPECT_EQ(delimiter.currentText(), "Comma");
    EXPECT_EQ(screen.popup("encodingPopup").currentData(), 4U);
    QTest::keyClick(&delimiter, Qt::Key_Up);
    EXPECT_EQ(delimiter.currentText(), "Semicolon");
    EXPECT_EQ(screen.field("decimalSymbolTextField").text(), ",");
    QTest::keyClick(&delimiter, Qt::Key_Down);
    EXPECT_EQ(screen.field("decimalSymbolTextField").text(), ".");
    QTest::keyClicks(&screen.field("decimalSymbolTextField"), "!");
    EXPECT_EQ(screen.wizard->controls().decimalSymbolTextField.value, ".!");
}

TEST(ExportDialog, TellsWhyItCannotExport)
{
    ExportDesk desk;
    Screen screen(desk, SQL, "Orders");
    EXPECT_FALSE(screen.ok().isEnabled());
    EXPECT_EQ(screen.hint("pathHint"), "Choose the folder to export to.");
    EXPECT_EQ(screen.ok().toolTip(), "Choose the folder to export to.");

    desk.panels.folder = desk.folder.path();
    screen.click("exportPathButton");
    EXPECT_EQ(screen.field("exportPathTextField").text().toStdString(), desk.folder.path());
    EXPECT_TRUE(screen.ok().isEnabled());
    EXPECT_EQ(screen.hint("pathHint"), "");

    screen.click("deselectAllButton");
    EXPECT_EQ(screen.checked(), "-Customers -Orders -Products");
    EXPECT_FALSE(screen.ok().isEnabled());
    EXPECT_EQ(screen.hint("tablesHint"), "Select at least one table.");
    screen.click("selectAllButton");
    EXPECT_TRUE(screen.ok().isEnabled());
    EXPECT_EQ(screen.hint("tablesHint"), "");

    screen.box("exportDataCheckBox").click();
    screen.box("exportStructureCheckBox").click();
    EXPECT_FALSE(screen.ok().isEnabled());
    EXPECT_EQ(screen.hint("contentsHint"), "Select the structure, the rows or both.");
    EXPECT_FALSE(screen.box("includeIndexCheckBox").isEnabled());
    QTest::keyClick(screen.dialog.get(), Qt::Key_Return);
    EXPECT_TRUE(screen.dialog->isVisible()); // the default button is off
}

TEST(ExportDialog, TheSchemaBelongsToSomeDialects)
{
    ExportDesk desk;
    Screen screen(desk, SQL);
    auto& dialect = screen.popup("sqlFormatPopup");
    EXPECT_THAT(titles(dialect), ElementsAre("MySQL", "PostgreSQL", "Oracle", "SQLite", "SQL Server"));
    std::string enabled;
    QTest::keyClick(&dialect, Qt::Key_Home);
    for (int i = 0; i < dialect.count(); ++i) {
        enabled += screen.field("schemaNameTextField").isEnabled() ? '1' : '0';
        QTest::keyClick(&dialect, Qt::Key_Down);
    }
    EXPECT_EQ(enabled, "01101");
}

TEST(ExportDialog, TheExactStyleBringsOptionsOfItsOwn)
{
    ExportDesk desk;
    Screen screen(desk, CSV);
    auto& field = screen.field("objectsFolderTextField");
    EXPECT_FALSE(screen.box("guardFormulasCheckBox").isEnabled() || field.isEnabled());
    screen.box("exactCheckBox").click();
    EXPECT_TRUE(screen.box("guardFormulasCheckBox").isEnabled() && field.isEnabled());
    EXPECT_FALSE(screen.field("decimalSymbolTextField").isEnabled());
    QTest::keyClick(screen.dialog.get(), Qt::Key_J, Qt::AltModifier);
    EXPECT_EQ(screen.dialog->focusWidget(), &field);
    desk.panels.folder = desk.folder.path("none/more");
    screen.click("objectsFolderButton");
    EXPECT_EQ(field.text().toStdString(), desk.folder.path("none/more"));
    EXPECT_THAT(screen.hint("objectsHint").toStdString(), testing::StartsWith("There is no folder"));
    field.clear();
    QTest::keyClicks(&field, "/");
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(screen.hint("objectsHint"), "");
}

TEST(ExportDialog, WarnsOfAnEncodingThatCutsTexts)
{
    ExportDesk desk;
    Screen screen(desk, XML);
    auto& encoding = screen.popup("encodingPopup");
    EXPECT_EQ(screen.hint("findingsLabel"), "");
    const int index = encoding.findText("UTF-16", Qt::MatchContains);
    ASSERT_GT(index, 0);
    encoding.setCurrentIndex(index - 1);
    QTest::keyClick(&encoding, Qt::Key_Down);
    EXPECT_EQ(encoding.currentIndex(), index);
    EXPECT_THAT(screen.hint("findingsLabel").toStdString(), testing::HasSubstr("will be cut"));
}

TEST(ExportDialog, APreviewOfColumnsIsATable)
{
    ExportDesk desk;
    {
        Screen screen(desk, SQLite);
        const auto& table = child<QTableWidget>(*screen.dialog, "previewTable");
        ASSERT_TRUE(eventually([&] { return table.isVisible(); }));
        EXPECT_EQ(table.horizontalHeaderItem(1)->text(), "Name\nTEXT");
        EXPECT_EQ(table.item(1, 1)->text(), "Bob");
        EXPECT_EQ(screen.hint("previewHint"), "");
        screen.click("deselectAllButton");
        EXPECT_TRUE(eventually([&] { return !table.isVisible(); }));
    }
    Screen screen(desk, CSV);
    const auto& text = child<QPlainTextEdit>(*screen.dialog, "previewText");
    EXPECT_TRUE(eventually([&] { return text.toPlainText() == "\"Id\",\"Name\"\n1,\"Ann\"\n2,\"Bob\"\n"; }));
    EXPECT_TRUE(text.isVisible());
}

TEST(ExportDialog, TheTableListIsWorkedWithTheKeyboard)
{
    ExportDesk desk;
    Screen screen(desk, CSV);
    auto& view = screen.tables();
    EXPECT_EQ(screen.dialog->focusWidget(), &view);
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(screen.checked(), "+Customers -Orders +Products");
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(screen.checked(), "+Customers +Orders +Products");

    view.setCurrentIndex(view.model()->index(1, 2));
    QTest::keyClick(&view, Qt::Key_F2);
    auto* editor = view.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, "mine.csv");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return screen.wizard->tableEntries()[1].exportFileName == "mine.csv"; }, 5000));
    EXPECT_TRUE(screen.dialog->isVisible());
    EXPECT_FALSE(view.model()->flags(view.model()->index(1, 1)) & Qt::ItemIsEditable);
}

TEST(ExportDialog, SingleFileAndFolderChangePlaces)
{
    ExportDesk desk;
    desk.defaults.strings["exportFilePath"] = desk.folder.path();
    Screen screen(desk, XLS);
    EXPECT_EQ(screen.field("exportPathTextField").text().toStdString(), desk.folder.path("Shop.xls"));
    screen.box("exportSingleFileCheckBox").click();
    EXPECT_EQ(screen.field("exportPathTextField").text().toStdString(), desk.folder.path());
    EXPECT_FALSE(screen.tables().isColumnHidden(2));
    screen.box("exportSingleFileCheckBox").click();
    desk.panels.file = desk.folder.path("My.xls");
    screen.click("exportPathButton");
    // Another folder is needed now, but the panel is cancelled.
    desk.defaults.strings.clear();
    screen.box("exportSingleFileCheckBox").click();
    EXPECT_TRUE(screen.box("exportSingleFileCheckBox").isChecked());
    EXPECT_EQ(screen.field("exportPathTextField").text().toStdString(), desk.folder.path("My.xls"));
}

TEST(ExportDialog, EscapeCancelsAndReturnExports)
{
    for (const bool isCancelled : {true, false}) {
        ExportDesk desk;
        desk.defaults.strings["exportFilePath"] = desk.folder.path();
        Screen screen(desk, CSV);
        QSignalSpy ended(screen.dialog.get(), &ExportDialog::sheetEnded);
        QTest::keyClick(screen.dialog.get(), isCancelled ? Qt::Key_Escape : Qt::Key_Return);
        EXPECT_FALSE(screen.dialog->isVisible());
        EXPECT_TRUE(ended.isEmpty()); // the wizard's call returns first
        ASSERT_TRUE(ended.wait());
        EXPECT_EQ(ended.at(0).at(0).toInt(), isCancelled ? 0 : 1);
        EXPECT_EQ(desk.defaults.synchronizeCount, isCancelled ? 0 : 1);
        const QPointer<ExportDialog> dialog(screen.dialog.release());
        EXPECT_TRUE(eventually([&] { return dialog.isNull(); })); // destroys itself
    }
}

// A table list that can be told apart by ear, and no two visible controls with the same shortcut.
TEST(ExportDialog, EveryControlHasANameAndAShortcutOfItsOwn)
{
    for (const auto type : {CSV, TXT, XML, XLS, SQL, SQLite}) {
        ExportDesk desk;
        Screen screen(desk, type);
        std::map<QString, QString> owners;
        for (const auto* widget : screen.dialog->findChildren<QWidget*>()) {
            if (!widget->isVisible()) continue;
            const auto text = widget->property("text").toString();
            const auto key = QKeySequence::mnemonic(text).toString();
            if (key.isEmpty() || qobject_cast<const QLineEdit*>(widget) != nullptr) continue;
            EXPECT_TRUE(owners.emplace(key, text).second) << text.toStdString() << owners[key].toStdString();
        }
        EXPECT_GE(owners.size(), 7U);
        EXPECT_EQ(screen.tables().accessibleName(), "Tables");
        const auto box = screen.tables().model()->index(1, 0);
        EXPECT_EQ(box.data(Qt::AccessibleTextRole), "Orders");
    }
}

} // namespace
} // namespace vellumo

// SPDX-License-Identifier: MIT
#include "desktop/ports/QtAlerts.h"

#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "desktop/ports/RunDialog.h"
#include "platform/DesktopId.h"

#include <QApplication>
#include <QDesktopServices>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <algorithm>

namespace vellumo {

namespace {

// What a message box shows without a scroll bar.
constexpr int mostLines = 14;
constexpr int mostCharacters = 900;

// A message box is as narrow as it can be, and breaks names in the middle.
void widen(QMessageBox& box)
{
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr) return;
    const int width = box.fontMetrics().averageCharWidth() * 56;
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount()); // the layout owns it
}

// A body that would not fit the screen, such as an export's report, is scrolled.
void addScrolledText(QMessageBox& box, const QString& text)
{
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    auto* title = box.findChild<QLabel*>("qt_msgbox_label");
    if (grid == nullptr || title == nullptr || grid->indexOf(title) < 0) return box.setDetailedText(text);
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(grid->indexOf(title), &row, &column, &rows, &columns);
    auto* edit = new QPlainTextEdit(text, &box);
    edit->setObjectName("alertBody");
    edit->setAccessibleName(title->text());
    edit->setReadOnly(true);
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(edit->fontMetrics().lineSpacing() * (mostLines + 1));
    grid->addWidget(edit, row + 1, column); // where a short text would be
}

void setBody(QMessageBox& box, const Alert& alert)
{
    auto text = toQString(alert.message);
    if (!alert.detail.empty()) text += "\n\n" + toQString(alert.detail);
    if (text.count('\n') < mostLines && text.size() < mostCharacters)
        box.setInformativeText(text);
    else
        addScrolledText(box, text);
    // The box's own format is for its title only, and texts bring names of files and tables: never read them as markup.
    for (auto* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
}

void addFolderButton(QMessageBox& box, const std::string& folder)
{
    auto* button = box.addButton(localizedText("Open &Folder"), QMessageBox::ActionRole);
    button->setObjectName("openFolderButton");
    QObject::connect(button, &QPushButton::clicked, &box,
        [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(toQString(folder))); });
}

void fill(QMessageBox& box, const Alert& alert)
{
    box.setObjectName("alert");
    box.setWindowTitle(programName);
    box.setText(toQString(alert.title));
    box.setStandardButtons(QMessageBox::Ok);
    const auto picture = alert.kind == Alert::Kind::Warning ? icon("warning") : applicationIcon();
    box.setIconPixmap(picture.pixmap(QSize(48, 48), box.devicePixelRatioF()));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setBody(box, alert);
    if (!alert.folder.empty()) addFolderButton(box, alert.folder);
    widen(box); // last: a new body lays the box out anew
}

} // namespace

void QtAlerts::show(const Alert& alert)
{
    ask(alert, {}, [](std::size_t) {});
}

void QtAlerts::ask(
    const Alert& alert, const std::vector<std::string>& choices, const std::function<void(std::size_t)>& chosen)
{
    const bool isModal = alert.style == Alert::Style::Modal;
    auto* box = new QMessageBox(isModal ? windowForDialog(m_mainWindow) : m_mainWindow.data());
    fill(*box, alert);
    std::vector<QAbstractButton*> buttons;
    for (const auto& choice : choices)
        buttons.push_back(box->addButton(toQString(choice), QMessageBox::ActionRole));
    box->setEscapeButton(QMessageBox::Ok);
    const auto tell = [buttons, chosen](const QAbstractButton* button) {
        const auto place = std::ranges::find(buttons, button);
        if (place != buttons.end()) chosen(static_cast<std::size_t>(place - buttons.begin()));
    };
    if (isModal) {
        // The box is destroyed when it was answered; what it answered is still told apart by its address.
        const QAbstractButton* answer = nullptr;
        QObject::connect(box, &QMessageBox::buttonClicked, box, [&](QAbstractButton* button) { answer = button; });
        static_cast<void>(runDialog(*box));
        return tell(answer);
    }
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    // Only when the box has gone: what comes of the answer may show another.
    QObject::connect(box, &QMessageBox::buttonClicked, box,
        [tell](QAbstractButton* button) { QTimer::singleShot(0, qApp, [tell, button] { tell(button); }); });
    box->show();
}

void QtAlerts::beep() { QApplication::beep(); }

} // namespace vellumo

#include "desktop/ports/QtAlerts.h"

#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "desktop/ports/RunDialog.h"
#include "platform/DesktopId.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>

namespace vellumo {

namespace {

// A message box is as narrow as it can be, and breaks names in the middle.
void widen(QMessageBox& box)
{
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr) return;
    const int width = box.fontMetrics().averageCharWidth() * 56;
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount()); // the layout owns it
}

void fill(QMessageBox& box, const Alert& alert)
{
    box.setObjectName("alert");
    box.setWindowTitle(programName);
    // File and table names come from outside: never read them as markup.
    box.setTextFormat(Qt::PlainText);
    box.setText(toQString(alert.title));
    box.setInformativeText(toQString(alert.message));
    box.setStandardButtons(QMessageBox::Ok);
    // What was said is good news or bad; the program's own picture suits both.
    box.setIconPixmap(applicationIcon().pixmap(QSize(48, 48), box.devicePixelRatioF()));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    widen(box);
}

} // namespace

void QtAlerts::show(const Alert& alert)
{
    if (alert.style == Alert::Style::Modal) {
        auto* box = new QMessageBox(windowForDialog(m_mainWindow)); // destroyed when it was answered
        fill(*box, alert);
        static_cast<void>(runDialog(*box)); // there is one answer
        return;
    }
    auto* box = new QMessageBox(m_mainWindow);
    box->setAttribute(Qt::WA_DeleteOnClose);
    fill(*box, alert);
    box->setWindowModality(Qt::WindowModal);
    box->show();
}

void QtAlerts::beep() { QApplication::beep(); }

} // namespace vellumo

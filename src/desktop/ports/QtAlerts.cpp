#include "desktop/ports/QtAlerts.h"

#include "desktop/QtText.h"

#include <QApplication>
#include <QMessageBox>

namespace vellumo {

namespace {

void fill(QMessageBox& box, const Alert& alert)
{
    box.setObjectName("alert");
    box.setWindowTitle(QApplication::applicationDisplayName());
    // File and table names come from outside: never read them as markup.
    box.setTextFormat(Qt::PlainText);
    box.setText(toQString(alert.title));
    box.setInformativeText(toQString(alert.message));
    box.setStandardButtons(QMessageBox::Ok);
    box.setIcon(QMessageBox::Information);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

} // namespace

void QtAlerts::show(const Alert& alert)
{
    if (alert.style == Alert::Style::Modal) {
        QWidget* active = QApplication::activeWindow();
        QMessageBox box(active != nullptr ? active : m_mainWindow.data());
        fill(box, alert);
        box.setWindowModality(Qt::ApplicationModal);
        box.exec();
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

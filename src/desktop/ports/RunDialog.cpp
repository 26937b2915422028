// SPDX-License-Identifier: MIT
#include "desktop/ports/RunDialog.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>

namespace vellumo {

QWidget* windowForDialog(QWidget* mainWindow)
{
    auto* active = QApplication::activeWindow();
    // A dialog that has just been answered stays active until the desktop has chosen another window.
    return active != nullptr && active->isVisible() ? active : mainWindow;
}

bool runDialog(QDialog& dialog)
{
    // A signal, or a program that hands over files, may close the window while the dialog waits.
    const QPointer<QDialog> shown = &dialog;
    dialog.setWindowModality(Qt::ApplicationModal);
    const auto result = dialog.exec();
    if (!shown) return false;
    dialog.deleteLater();
    return result == QDialog::Accepted;
}

} // namespace vellumo

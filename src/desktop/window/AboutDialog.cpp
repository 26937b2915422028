// SPDX-License-Identifier: MIT
#include "desktop/window/AboutDialog.h"

#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "platform/DesktopId.h"
#include "text/Format.h"

#include <QApplication>
#include <QMessageBox>

namespace vellumo {

void showAboutDialog(QWidget& window)
{
    auto* box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    const auto name = programName;
    box->setWindowTitle(toQString(localizedFormat("About %@", {name})));
    box->setIconPixmap(applicationIcon().pixmap(64, 64));
    box->setTextFormat(Qt::PlainText);
    box->setText(toQString(localizedFormat("%@ %@", {name, fromQString(QApplication::applicationVersion())})));
    box->setInformativeText(localizedText(
        "Opens Microsoft Access databases, shows what is in them and exports it. The databases are never changed."));
    box->setStandardButtons(QMessageBox::Close);
    box->open();
}

} // namespace vellumo

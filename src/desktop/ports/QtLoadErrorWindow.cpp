// SPDX-License-Identifier: MIT
#include "desktop/ports/QtLoadErrorWindow.h"

#include "desktop/QtText.h"
#include "desktop/ports/RunDialog.h"
#include "platform/MainThread.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace vellumo {

namespace {

QLabel* makeLabel(const LoadError& error)
{
    auto* label = new QLabel;
    // The path comes from outside: never read it as markup.
    label->setTextFormat(Qt::PlainText);
    label->setText(toQString(error.label));
    label->setWordWrap(true);
    return label;
}

QPlainTextEdit* makeList(const LoadError& error)
{
    auto* list = new QPlainTextEdit(toQString(error.list));
    list->setReadOnly(true);
    list->setFont(QFontDatabase::systemFont(QFontDatabase::SmallestReadableFont));
    return list;
}

void fill(QDialog& window, const LoadError& error)
{
    window.setObjectName("loadErrorWindow");
    window.setWindowTitle(toQString(error.title));
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(makeLabel(error));
    layout->addWidget(makeList(error));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    layout->addWidget(buttons);
}

} // namespace

void QtLoadErrorWindow::show(const LoadError& error)
{
    m_mainThread.performAndWait([&] {
        auto* window = new QDialog(windowForDialog(m_mainWindow)); // destroyed when it was closed
        fill(*window, error);
        static_cast<void>(runDialog(*window)); // there is nothing to answer
    });
}

} // namespace vellumo

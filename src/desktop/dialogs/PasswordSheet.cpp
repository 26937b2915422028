// SPDX-License-Identifier: MIT
#include "desktop/dialogs/PasswordSheet.h"

#include "desktop/QtText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace vellumo {

namespace {

// Names of files are no markup.
QLabel* plainLabel(const std::string& text, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(toQString(text));
    label->setWordWrap(true);
    return label;
}

} // namespace

PasswordSheet::PasswordSheet(const PasswordQuestion& question, QWidget* window)
    : QDialog(window, Qt::Sheet)
    , m_password(new QLineEdit(this))
{
    setObjectName("passwordSheet");
    setWindowTitle(localizedText("Password"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_password->setObjectName("password");
    m_password->setEchoMode(QLineEdit::Password);
    auto* title = plainLabel(question.title, this);
    auto font = title->font();
    font.setBold(true);
    title->setFont(font);
    title->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
    auto* form = new QFormLayout;
    form->addRow(localizedText("&Password:"), m_password);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    auto* open = buttons->addButton(localizedText("Open"), QDialogButtonBox::AcceptRole);
    open->setDefault(true);
    open->setEnabled(false);
    connect(
        m_password, &QLineEdit::textChanged, open, [open](const QString& text) { open->setEnabled(!text.isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(plainLabel(question.message, this));
    layout->addLayout(form);
    layout->addWidget(buttons);
    m_password->setFocus();
}

std::string PasswordSheet::password() const { return fromQString(m_password->text()); }

} // namespace vellumo

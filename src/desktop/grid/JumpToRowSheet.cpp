// SPDX-License-Identifier: MIT
#include "desktop/grid/JumpToRowSheet.h"

#include "desktop/QtText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace vellumo {

JumpToRowSheet::JumpToRowSheet(const QString& title, const QString& prompt, QWidget* window)
    : QDialog(window, Qt::Sheet)
    , m_number(new QLineEdit(this))
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    m_number->setObjectName("rowNumber");
    m_number->setInputMethodHints(Qt::ImhDigitsOnly);
    setMinimumWidth(fontMetrics().averageCharWidth() * 40); // room for the title, too
    auto* form = new QFormLayout(this);
    form->addRow(prompt, m_number); // the label becomes the field's buddy
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    form->addRow(buttons);
    auto* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(false);
    connect(m_number, &QLineEdit::textChanged, ok, [ok](const QString& text) { ok->setEnabled(!text.isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

long JumpToRowSheet::number() const { return m_number->text().trimmed().toLong(); }

} // namespace vellumo

#include "desktop/dialogs/SalvageSheet.h"

#include "desktop/QtText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace vellumo {

SalvageSheet::SalvageSheet(QWidget* window)
    : QDialog(window, Qt::Sheet)
    , m_withDeleted(new QCheckBox(localizedText("Also deleted rows"), this))
{
    const auto title = localizedText("Look for lost rows");
    setObjectName("salvageSheet");
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_withDeleted->setObjectName("withDeletedRows");
    auto* text =
        new QLabel(localizedText("The file is read again, and searched for tables and rows that it holds but no "
                                 "longer lists. What is found is shown as tables of their own. The file itself "
                                 "stays as it is."),
            this);
    text->setWordWrap(true);
    text->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(title, QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_withDeleted);
    layout->addWidget(buttons);
}

Salvage SalvageSheet::salvage() const
{
    return m_withDeleted->isChecked() ? Salvage::LostAndDeletedRows : Salvage::LostRows;
}

} // namespace vellumo

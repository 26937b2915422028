// SPDX-License-Identifier: MIT
#include "desktop/dialogs/ExportProgressDialog.h"

#include "desktop/QtText.h"
#include "text/Format.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace vellumo {

ExportProgressDialog::ExportProgressDialog(std::shared_ptr<ExportWizard> wizard, QWidget* parent)
    : QDialog(parent)
    , m_wizard(std::move(wizard))
    , m_progressLabel(new QLabel(this))
    , m_progressIndicator(new QProgressBar(this))
    , m_elapsedLabel(new QLabel(this))
    , m_stopButton(new QPushButton(localizedText("&Stop"), this))
{
    setObjectName("exportProgressPanel");
    setWindowTitle(localizedText("Export"));
    setWindowModality(Qt::WindowModal);
    layOut();
    const auto isSelected = std::ranges::count(m_wizard->tableEntries(), true, &ExportEntry::selected);
    m_progressIndicator->setRange(0, static_cast<int>(isSelected));
    m_progressIndicator->setAccessibleName(
        isSelected == 1 ? localizedText("Rows exported") : localizedText("Tables exported"));
    connect(m_stopButton, &QPushButton::clicked, this, &ExportProgressDialog::reject);
    connect(&m_second, &QTimer::timeout, this, &ExportProgressDialog::showElapsedTime);
    m_second.start(1000);
    m_elapsed.start();
    showElapsedTime();
    m_wizard->setView(this);
}

ExportProgressDialog::~ExportProgressDialog() { m_wizard->setView(nullptr); }

void ExportProgressDialog::layOut()
{
    m_progressLabel->setObjectName("progressLabel");
    m_progressLabel->setTextFormat(Qt::PlainText);
    m_progressLabel->setWordWrap(true);
    m_progressIndicator->setObjectName("progressIndicator");
    m_stopButton->setObjectName("stopButton");
    m_stopButton->setDefault(true);
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_elapsedLabel, 1);
    foot->addWidget(m_stopButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_progressLabel);
    layout->addWidget(m_progressIndicator);
    layout->addLayout(foot);
    setMinimumWidth(fontMetrics().averageCharWidth() * 64);
}

// A long table among others keeps the bar where it is; the seconds show that work goes on.
void ExportProgressDialog::showElapsedTime()
{
    const auto seconds = m_elapsed.elapsed() / 1000;
    const auto two = QString("%1").arg(seconds % 60, 2, 10, QChar('0'));
    m_elapsedLabel->setText(
        toQString(localizedFormat("Elapsed time: %@", {fromQString(QString::number(seconds / 60) + ":" + two)})));
}

void ExportProgressDialog::progressChanged()
{
    const auto& progress = m_wizard->progress();
    m_progressLabel->setText(toQString(progress.label));
    m_progressIndicator->setMaximum(static_cast<int>(progress.maximum));
    m_progressIndicator->setValue(static_cast<int>(progress.value));
}

void ExportProgressDialog::reject()
{
    m_wizard->stop();
    m_stopButton->setEnabled(false);
    m_stopButton->setText(localizedText("Stopping…"));
}

void ExportProgressDialog::endProgressSheet() { done(0); }

void ExportProgressDialog::exportFinished()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            emit exportDidFinish();
            deleteLater();
        },
        Qt::QueuedConnection);
}

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "export/wizard/ExportWizard.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;

namespace vellumo {

// Shows how far an export is, and lets the user stop it. Made before the export starts, and shown with open(). Ends by
// itself with the export, and destroys itself then.
class ExportProgressDialog : public QDialog, private ExportWizardView {
    Q_OBJECT

public:
    ExportProgressDialog(std::shared_ptr<ExportWizard> wizard, QWidget* parent);
    ~ExportProgressDialog() override;

    // Asks the export to stop. The dialog stays until it has.
    void reject() override;

signals:
    // The report was shown, and the wizard's call has returned.
    void exportDidFinish();

private:
    void progressChanged() override;
    void endProgressSheet() override;
    void exportFinished() override;

    void layOut();
    void showElapsedTime();

    std::shared_ptr<ExportWizard> m_wizard;
    QLabel* m_progressLabel; // these are children
    QProgressBar* m_progressIndicator;
    QLabel* m_elapsedLabel;
    QPushButton* m_stopButton;
    QElapsedTimer m_elapsed;
    QTimer m_second;
};

} // namespace vellumo

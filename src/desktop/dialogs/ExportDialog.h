// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/dialogs/HintLabel.h"
#include "export/wizard/ExportWizard.h"

#include <QDialog>
#include <QTimer>
#include <memory>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace Ui {
class ExportWizard;
}

namespace vellumo {

class ExportTableModel;

// The widgets of the export dialog: they show what the wizard's controls hold, and forward what the user enters. Shown
// with open(), on its parent. Destroys itself after it has ended.
class ExportDialog : public QDialog, private ExportWizardView {
    Q_OBJECT

public:
    ExportDialog(std::shared_ptr<ExportWizard> wizard, QWidget* parent);
    ~ExportDialog() override;

    // Both ask the wizard.
    void accept() override;
    void reject() override;

signals:
    // 1: the export shall start; 0: cancelled. Comes after the wizard's call has returned.
    void sheetEnded(int returnCode);

private:
    void controlsChanged() override;
    void findingsChanged() override;
    void reloadTableList() override;
    void endSheet(int returnCode) override;

    // Each fills a widget at first, and forwards from it from then on. `action` may be null.
    using Action = void (ExportWizard::*)();
    void connectCheckBox(QCheckBox* box, CheckBox ExportControls::*control, Action action);
    void connectPopup(QComboBox* box, Popup ExportControls::*control, Action action);
    void connectTextField(QLineEdit* field, TextField ExportControls::*control, Action action);
    void perform(Action action);

    void setUpOptions();
    void setUpTableList();
    void setUpHints();
    void setUpPreview();
    void connectCheckBoxes();
    void connectFields();
    void connectButtons();
    void toggleSelectedRows();
    void showControls();
    void showRows();
    void showHints();
    void showFindings();
    void showPreview();
    void showPreviewTable(const ExportPreview& preview);
    void growToOptions();

    std::shared_ptr<ExportWizard> m_wizard;
    std::unique_ptr<Ui::ExportWizard> m_ui;
    ExportTableModel* m_tables; // a child
    std::vector<std::pair<HintLabel*, ExportHint::Place>> m_hintLabels;
    // Brings each widget in line with its control.
    std::vector<std::function<void()>> m_refreshers;
    QTimer m_previewTimer;   // typing in a field makes one preview, not one a letter
    bool m_hasEnded = false; // the wizard has another view by then
};

} // namespace vellumo

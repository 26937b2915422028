// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FilePanels.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class QFileDialog;

namespace vellumo {

// The desktop's own file dialogs, on the window that is active when they are asked for. They block the program; one
// whose window goes meanwhile counts as cancelled.
class QtFilePanels : public FilePanels {
public:
    // Used where no window is active.
    void setMainWindow(QWidget* window) { m_mainWindow = window; }

    [[nodiscard]] std::optional<std::vector<std::string>> openFiles(
        const std::vector<std::string>& extensions, const std::string& folder) override;
    [[nodiscard]] std::optional<std::string> chooseFolder(const std::string& initial) override;
    [[nodiscard]] std::optional<std::string> saveFile(
        const std::string& extension, const std::string& suggestedName) override;

private:
    [[nodiscard]] QFileDialog& makeDialog(const QString& title, const QString& folder) const;
    [[nodiscard]] QFileDialog& makeSaveDialog(const std::string& extension) const;
    [[nodiscard]] bool run(QFileDialog& dialog);
    // Asks the user.
    [[nodiscard]] bool mayReplace(const QString& path) const;

    QPointer<QWidget> m_mainWindow;
    QString m_folder; // where the last panel was left; "" at first
};

} // namespace vellumo

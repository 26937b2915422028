// SPDX-License-Identifier: MIT
#include "desktop/ports/QtFilePanels.h"

#include "desktop/QtText.h"
#include "desktop/ports/RunDialog.h"
#include "text/Format.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

namespace vellumo {

namespace {

// "*.mdb *.MDB": the filters of some desktops tell case apart.
QString patterns(const std::vector<std::string>& extensions)
{
    QStringList list;
    for (const auto& extension : extensions)
        list << "*." + toQString(extension) << "*." + toQString(extension).toUpper();
    return list.join(' ');
}

QString nameFilter(const std::string& title, const std::vector<std::string>& extensions)
{
    return toQString(title) + " (" + patterns(extensions) + ")";
}

// The nearest folder above the path that exists.
QString existingFolder(const QString& path)
{
    QFileInfo info(path);
    while (!info.isDir() && info.absolutePath() != info.absoluteFilePath())
        info.setFile(info.absolutePath());
    return info.absoluteFilePath();
}

QString withExtension(const QString& name, const QString& extension)
{
    const auto ending = "." + extension;
    return extension.isEmpty() || name.endsWith(ending, Qt::CaseInsensitive) ? name : name + ending;
}

} // namespace

// Destroyed by `run`, or with the window it lies on.
QFileDialog& QtFilePanels::makeDialog(const QString& title, const QString& folder) const
{
    return *new QFileDialog(windowForDialog(m_mainWindow), title, folder);
}

bool QtFilePanels::run(QFileDialog& dialog)
{
    if (!runDialog(dialog) || dialog.selectedFiles().isEmpty()) return false;
    // Not the dialog's folder: a path that was typed may lead out of it.
    const QFileInfo chosen(dialog.selectedFiles().first());
    m_folder = chosen.isDir() ? chosen.absoluteFilePath() : chosen.absolutePath();
    return true;
}

std::optional<std::vector<std::string>> QtFilePanels::openFiles(
    const std::vector<std::string>& extensions, const std::string& folder)
{
    const auto start = toQString(folder);
    auto& dialog = makeDialog(localizedText("Open MDB files"), QFileInfo(start).isDir() ? start : m_folder);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilters({nameFilter(localized("Access databases"), extensions)});
    if (!run(dialog)) return std::nullopt;
    std::vector<std::string> paths;
    for (const auto& path : dialog.selectedFiles())
        paths.push_back(fromQString(QFileInfo(path).absoluteFilePath()));
    return paths;
}

std::optional<std::string> QtFilePanels::chooseFolder(const std::string& initial)
{
    const auto start = initial.empty() ? m_folder : existingFolder(toQString(initial));
    auto& dialog = makeDialog(localizedText("Choose the folder to export to"), start);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (!run(dialog)) return std::nullopt;
    return fromQString(QFileInfo(dialog.selectedFiles().first()).absoluteFilePath());
}

std::optional<std::string> QtFilePanels::saveFile(const std::string& extension, const std::string& suggestedName)
{
    const auto ending = toQString(extension);
    auto name = withExtension(toQString(suggestedName), ending);
    while (true) {
        auto& dialog = makeSaveDialog(extension);
        dialog.selectFile(name);
        if (!run(dialog)) return std::nullopt;
        // The dialog completes no name with a dot, and has asked for the name as it was typed.
        const auto chosen = QFileInfo(dialog.selectedFiles().first()).absoluteFilePath();
        name = withExtension(chosen, ending);
        if (name == chosen || !QFileInfo::exists(name) || mayReplace(name)) return fromQString(name);
    }
}

QFileDialog& QtFilePanels::makeSaveDialog(const std::string& extension) const
{
    auto start = m_folder;
    if (start.isEmpty()) start = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    auto& dialog = makeDialog(localizedText("Save as"), start);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (!extension.empty()) {
        dialog.setNameFilters({nameFilter(localizedFormat("%@ files", {"." + extension}), {extension})});
        dialog.setDefaultSuffix(toQString(extension));
    }
    return dialog;
}

bool QtFilePanels::mayReplace(const QString& path) const
{
    const auto name = fromQString(QFileInfo(path).fileName());
    const auto question = toQString(localizedFormat("The file “%@” exists already. Replace it?", {name}));
    QMessageBox box(QMessageBox::Warning, localizedText("Save as"), question, QMessageBox::Yes | QMessageBox::No,
        windowForDialog(m_mainWindow));
    box.setDefaultButton(QMessageBox::No);
    box.setTextFormat(Qt::PlainText); // names must not be read as markup
    return box.exec() == QMessageBox::Yes;
}

} // namespace vellumo

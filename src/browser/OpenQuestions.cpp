// SPDX-License-Identifier: MIT
#include "browser/OpenQuestions.h"

#include "browser/DamageDetails.h"
#include "browser/MainWindowView.h"
#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

void OpenQuestions::openDidFail(const TAdmMDBFile& file, Alert::Style style, Retry retry)
{
    const auto failure = file.openFailure();
    if (failure == OpenFailure::NewerFormat) return askForNewer(file, style, std::move(retry));
    if (failure == OpenFailure::NeedsPassword || failure == OpenFailure::WrongPassword)
        return askForPassword(file, style, std::move(retry));
    m_desktop.alerts.show(openFailureAlert(file, style));
}

void OpenQuestions::askForNewer(const TAdmMDBFile& file, Alert::Style style, Retry retry)
{
    const auto chosen = [this, path = file.fullPath(), retry = std::move(retry)](std::size_t choice) {
        if (choice == 0) m_choices.acceptNewerFile(path);
        if (choice == 1) {
            m_choices.setOpensNewerFiles(true);
            m_choiceListener();
        }
        retry(std::nullopt);
    };
    m_desktop.alerts.ask(
        openFailureAlert(file, style), {localized("Open This File"), localized("Always Open Newer Files")}, chosen);
}

void OpenQuestions::askForPassword(const TAdmMDBFile& file, Alert::Style style, Retry retry)
{
    const auto path = file.fullPath();
    const bool isWrong = file.openFailure() == OpenFailure::WrongPassword;
    const auto wrong = m_wrongPasswords[path] = isWrong ? m_wrongPasswords[path] + 1 : 0;
    if (wrong >= mostTries) {
        m_wrongPasswords.erase(path);
        return m_desktop.alerts.show(openFailureAlert(file, style));
    }
    const auto left = mostTries - wrong;
    const auto message = !isWrong ? localized("Its password is used to read it, and not kept.")
        : left == 1               ? localized("The password is wrong. You can try once more.")
                                  : localizedFormat("The password is wrong. You can try %ld times more.", {left});
    m_pending.push_back({{localizedFormat("%@ is encrypted.", {file.label()}), message}, path, std::move(retry)});
    if (m_pending.size() == 1) m_view.beginPasswordSheet(m_pending.front().question);
}

void OpenQuestions::passwordSheetDidEnd(std::optional<std::string> password)
{
    if (m_pending.empty()) return;
    const auto answered = std::move(m_pending.front());
    m_pending.pop_front();
    if (!m_pending.empty()) m_view.beginPasswordSheet(m_pending.front().question);
    if (password)
        answered.retry(std::move(password));
    else
        m_wrongPasswords.erase(answered.path);
}

} // namespace vellumo

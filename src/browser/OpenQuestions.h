// SPDX-License-Identifier: MIT
#pragma once

#include "browser/DesktopPorts.h"
#include "browser/OpenChoices.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace vellumo {

class MainWindowView;

// What a sheet says that asks for a password; localised.
struct PasswordQuestion {
    std::string title;
    std::string message;

    bool operator==(const PasswordQuestion&) const = default;
};

// Tells the user that a file was not opened and, where an answer helps, asks: whether a newer file is to be opened all
// the same, and for the password of an encrypted one, three times. One password sheet at a time. Main thread only.
class OpenQuestions {
public:
    static constexpr int mostTries = 3;
    // Opens the file again, with the password if there is one.
    using Retry = std::function<void(std::optional<std::string> password)>;

    // All outlive the questions.
    OpenQuestions(MainWindowView& view, const DesktopPorts& desktop, OpenChoices& choices)
        : m_view(view)
        , m_desktop(desktop)
        , m_choices(choices)
    {
    }

    // `retry` is called later or never.
    void openDidFail(const TAdmMDBFile& file, Alert::Style style, Retry retry);
    // The sheet's answer; nullopt: the user does not want to.
    void passwordSheetDidEnd(std::optional<std::string> password);
    // Called when the user has settled something for all files.
    void setChoiceListener(std::function<void()> listener) { m_choiceListener = std::move(listener); }

private:
    struct Pending {
        PasswordQuestion question;
        std::string path;
        Retry retry;
    };

    void askForNewer(const TAdmMDBFile& file, Alert::Style style, Retry retry);
    void askForPassword(const TAdmMDBFile& file, Alert::Style style, Retry retry);

    MainWindowView& m_view;
    DesktopPorts m_desktop;
    OpenChoices& m_choices;
    std::function<void()> m_choiceListener = [] {};
    std::deque<Pending> m_pending;               // the first one is being asked
    std::map<std::string, int> m_wrongPasswords; // by path, how many in a row
};

} // namespace vellumo

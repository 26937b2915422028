// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Defaults.h"

#include <array>
#include <string>

namespace vellumo {

// What of the main window and its tables the user shows or hides.
enum class ViewToggle { FileTree, InformationView, TextView, JumpBar, NumRows, LookupTexts, Captions };

// Which of them are shown; kept in the user's defaults between runs.
class ViewToggles {
public:
    static constexpr std::array all = {ViewToggle::FileTree, ViewToggle::InformationView, ViewToggle::TextView,
        ViewToggle::JumpBar, ViewToggle::NumRows, ViewToggle::LookupTexts, ViewToggle::Captions};

    // Before the first read all have their initial state: file list, information view and row counts shown, the rest
    // hidden.
    ViewToggles();
    // A key that was never stored takes the initial state.
    void readFrom(const Defaults& defaults);
    void writeTo(Defaults& defaults) const;

    [[nodiscard]] bool isShown(ViewToggle toggle) const { return m_isShown[static_cast<std::size_t>(toggle)]; }
    void flip(ViewToggle toggle);
    // The title of the toggle's menu item, which says what choosing it would do.
    [[nodiscard]] std::string menuTitle(ViewToggle toggle) const;

private:
    std::array<bool, all.size()> m_isShown;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Defaults.h"

#include <QByteArray>

#include <vector>

class QWidget;

// What a window looks like, kept between runs as texts of the user's defaults.
namespace vellumo {

// Empty when nothing was stored.
[[nodiscard]] QByteArray storedLayout(const Defaults& defaults, std::string_view key);
void storeLayout(Defaults& defaults, std::string_view key, const QByteArray& state);

// Moves and shrinks a window, before it is shown, so that its screen holds all of it.
void boundToScreen(QWidget& window);

// Gives the keyboard to the pane behind the one that has it (`step` 1) or before it (-1), round and round. Panes that
// are not to be seen, or have nothing for the keyboard, are left out.
void focusNextPane(const std::vector<QWidget*>& panes, int step);

// The Tab key goes through the parts in this order, and within a part as its widgets were made.
void setTabOrderOf(const std::vector<QWidget*>& parts);

} // namespace vellumo

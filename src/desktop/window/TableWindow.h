// SPDX-License-Identifier: MIT
#pragma once

#include "browser/ChildWindow.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class ChildWindow;
}

namespace vellumo {

class ChildWindow;
class DamageBar;
class Defaults;
class FindLine;
struct EditActions;

// The widgets of a table window, laid out by ChildWindow.ui. A new window takes the size and the share of its panes
// that a table window was given last.
class TableWindow : public QWidget, public ChildWindowPort {
public:
    // Both outlive the window. `layoutDidChange` is called when the defaults have got another layout.
    TableWindow(ChildWindow& window, Defaults& defaults, std::function<void()> layoutDidChange);
    ~TableWindow() override;

    // ChildWindowPort
    [[nodiscard]] DataViewPort& dataView() override;
    void setTitle(const std::string& title) override;
    void setLevel(WindowLevel level) override;
    void makeKey() override;
    void jumpBarMenuDidChange() override;
    void jumpBarSelectionDidChange() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void addCommands();
    void attach();
    void restoreLayout();
    void storeLayout();

    ChildWindow& m_window;
    Defaults& m_defaults;
    std::function<void()> m_layoutDidChange;
    std::unique_ptr<Ui::ChildWindow> m_ui;
    DamageBar* m_damageBar;
    FindLine* m_findLine;
    std::unique_ptr<EditActions> m_editActions; // null until the window is attached
};

} // namespace vellumo

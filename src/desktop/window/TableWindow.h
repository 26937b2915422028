#pragma once

#include "browser/ChildWindowPort.h"

#include <QWidget>

#include <memory>

namespace Ui {
class ChildWindow;
}

namespace vellumo {

class ChildWindow;
class Defaults;
struct EditActions;

// The widgets of a table window, laid out by ChildWindow.ui. A new window takes the size of the one closed last.
class TableWindow : public QWidget, public ChildWindowPort {
public:
    // Both outlive the window.
    TableWindow(ChildWindow& window, Defaults& defaults);
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

private:
    void attach();

    ChildWindow& m_window;
    Defaults& m_defaults;
    std::unique_ptr<Ui::ChildWindow> m_ui;
    std::unique_ptr<EditActions> m_editActions; // null until the window is attached
};

} // namespace vellumo

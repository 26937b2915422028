// SPDX-License-Identifier: MIT
#pragma once

#include <QToolBar>

class QLabel;

namespace vellumo {

class SearchField;
class VellumoAppDelegate;
struct ToolbarItem;

// The toolbar as ToolbarDescription has it; the search field stands at its end and is always in sight: where the
// texts of the buttons leave no room for it, they are hidden.
class MainToolBar : public QToolBar {
public:
    // `app` outlives the toolbar's use.
    MainToolBar(VellumoAppDelegate& app, QWidget* parent);

    [[nodiscard]] SearchField& searchField() { return *m_searchField; }
    // In pixels; in a narrower window the search field would be out of sight.
    [[nodiscard]] int leastWidth() const { return m_widthWithoutTexts; }
    [[nodiscard]] const QList<QAction*>& exportActions() const { return m_exports; }
    // The options of the search, or its text, are others.
    void searchDidChange();
    // Whether Back and Next can be used.
    void navigationDidChange();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QAction* addItem(const ToolbarItem& item);
    void run(const ToolbarItem& item);
    void addSearchField(const ToolbarItem& item);

    VellumoAppDelegate& m_app;
    SearchField* m_searchField = nullptr;
    QLabel* m_searchRule = nullptr;
    QList<QAction*> m_exports;
    QAction* m_back = nullptr;
    QAction* m_next = nullptr;
    int m_widthWithTexts = 0; // pixels, as the next
    int m_widthWithoutTexts = 0;
};

} // namespace vellumo

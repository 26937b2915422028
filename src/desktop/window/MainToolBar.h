#pragma once

#include <QToolBar>

namespace vellumo {

class SearchField;
class VellumoAppDelegate;
struct ToolbarItem;

// The toolbar as ToolbarDescription has it; the search field stands at its end.
class MainToolBar : public QToolBar {
public:
    // `app` outlives the toolbar's use.
    MainToolBar(VellumoAppDelegate& app, QWidget* parent);

    [[nodiscard]] SearchField& searchField() { return *m_searchField; }
    // Whether Back and Next can be used.
    void navigationDidChange();

private:
    QAction* addItem(const ToolbarItem& item);
    void run(const ToolbarItem& item);
    void addSearchField(const ToolbarItem& item);

    VellumoAppDelegate& m_app;
    SearchField* m_searchField = nullptr;
    QAction* m_back = nullptr;
    QAction* m_next = nullptr;
};

} // namespace vellumo

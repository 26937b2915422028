#pragma once

#include "browser/InformationPane.h"

#include <QStackedWidget>

class QListWidget;

namespace vellumo {

class PropertyList;
class VellumoAppDelegate;

// One kind of information: its property list, for columns, indexes and relations below the list of their names; or the
// text that says there is none.
class InformationPage : public QStackedWidget {
public:
    // `app` outlives the page's use.
    InformationPage(InformationType type, VellumoAppDelegate& app, QWidget* parent);

    // What changed in the controller: everything, or the entry selected.
    void reload();
    void detailsDidChange();

private:
    [[nodiscard]] bool hasNames() const { return m_type > InformationType::Table; }
    [[nodiscard]] QWidget* makeLists();
    void reloadNames();

    InformationType m_type;
    VellumoAppDelegate& m_app;
    QListWidget* m_names = nullptr; // null for file and table
    PropertyList* m_properties;
};

} // namespace vellumo

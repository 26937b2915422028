// SPDX-License-Identifier: MIT
#pragma once

#include "browser/InformationPane.h"

#include <QStackedWidget>
#include <QTableWidget>

class QListWidget;

namespace vellumo {

// Labels and values beside each other. The label column is as wide as its widest label, the values take the rest.
class PropertyList : public QTableWidget {
public:
    explicit PropertyList(QWidget* parent = nullptr);

    void setProperties(const std::vector<PropertyRow>& properties);
    // The selected rows, label and value parted by a tab.
    [[nodiscard]] std::string selectedText() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void colourLabels();
};

class ContentsText;
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
    ContentsText* m_text = nullptr; // of contents only
};

} // namespace vellumo

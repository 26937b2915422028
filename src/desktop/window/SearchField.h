// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace vellumo {

class VellumoAppDelegate;

// The field that searches the records shown; the magnifying glass and the arrow-down key open the menu of its options.
class SearchField : public QLineEdit {
public:
    // `app` outlives the field's use.
    SearchField(VellumoAppDelegate& app, QWidget* parent);

    // The options in force, or the text, are others.
    void searchDidChange();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void popUpMenu();

    VellumoAppDelegate& m_app;
};

} // namespace vellumo

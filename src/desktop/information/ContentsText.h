// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QPlainTextEdit;

namespace vellumo {

class VellumoAppDelegate;

// The text of the entry that is selected in a file's contents, a query's SQL, to be read and copied. Hidden for what
// has none.
class ContentsText : public QWidget {
public:
    // `app` outlives the widget's use.
    ContentsText(VellumoAppDelegate& app, QWidget* parent);

    void detailsDidChange();

private:
    VellumoAppDelegate& m_app;
    QPlainTextEdit* m_text;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QAbstractButton;
class QPlainTextEdit;
class QStackedLayout;

namespace vellumo {

class DataView;
class IconLabel;
class PictureView;

// The full value of the current cell: a text that can be selected and copied, or a picture. Below the value of an
// object cell are buttons to open it, save it, and see a picture at full size.
class DetailPane : public QWidget {
public:
    explicit DetailPane(QWidget* parent = nullptr);

    // Once; it outlives the pane's use.
    void setDataView(DataView& dataView);
    // Shows DataView::detail().
    void detailDidChange();

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    [[nodiscard]] QWidget* makeObjectBar();
    void showText();
    void adjustTextColour();

    DataView* m_dataView = nullptr;
    QStackedLayout* m_pages;
    QPlainTextEdit* m_text;
    PictureView* m_picture;
    QWidget* m_objectBar; // makes the three below
    IconLabel* m_objectNote;
    QAbstractButton* m_openButton;
    QAbstractButton* m_fullSizeButton;
};

} // namespace vellumo

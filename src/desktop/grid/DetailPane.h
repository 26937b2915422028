// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QAbstractButton;
class QLabel;
class QStackedLayout;

namespace vellumo {

class DataView;
class IconLabel;
class PictureView;
class ValueText;

// The full value of the current cell: a text that can be selected and copied, or a picture. Below the value of an
// object cell are buttons to open it, save it, and see a picture at full size; below a text of which only the beginning
// is shown, one for the rest. While the pane is hidden it lays out nothing.
class DetailPane : public QWidget {
public:
    explicit DetailPane(QWidget* parent = nullptr);

    // Once; it outlives the pane's use.
    void setDataView(DataView& dataView);
    // Shows DataView::detail(), as soon as the pane is seen.
    void detailDidChange();

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QWidget* makeObjectBar();
    [[nodiscard]] QWidget* makeCutBar();
    void showDetail();
    void showText();
    void showHowMuch();
    void adjustTextColour();

    DataView* m_dataView = nullptr;
    QStackedLayout* m_pages;
    ValueText* m_text;
    PictureView* m_picture;
    QLabel* m_cutNote;
    QWidget* m_cutBar;    // makes the one above
    QWidget* m_objectBar; // makes the three below
    IconLabel* m_objectNote;
    QAbstractButton* m_openButton;
    QAbstractButton* m_fullSizeButton;
    bool m_isCurrent = true; // what is shown is DataView::detail()
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

#include <functional>

class QBoxLayout;
class QPushButton;

namespace vellumo {

class IconLabel;

// The bar above a grid that tells that what is below it is not whole. Takes no room while there is nothing to tell. It
// grows in height, so that a long text does not widen the window.
class DamageBar : public QFrame {
    Q_OBJECT

public:
    explicit DamageBar(QWidget* parent = nullptr);

    // Adds a button behind the text. The bar owns it.
    QPushButton* addButton(const char* key, const char* name, std::function<void()> run);
    // "": the bar is hidden.
    void setText(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    IconLabel* m_text;
    QBoxLayout* m_layout;
    QBoxLayout* m_buttons;
};

} // namespace vellumo

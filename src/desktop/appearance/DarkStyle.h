// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>
#include <QProxyStyle>

namespace vellumo {

// Colours for the Fusion style: light text on dark grey.
[[nodiscard]] QPalette darkPalette();

// Fusion with check boxes that can be seen on dark ground: it draws their outline as the window's colour darkened; and
// with plain text where it etches what is disabled.
class DarkStyle : public QProxyStyle {
public:
    DarkStyle();
    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override;
    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override;
};

} // namespace vellumo

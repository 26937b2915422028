#pragma once

#include <QProxyStyle>

namespace vellumo {

// Fusion with check boxes that can be seen on dark ground: it draws their outline as the window's colour darkened.
class DarkStyle : public QProxyStyle {
public:
    DarkStyle();
    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override;
};

} // namespace vellumo

#include "desktop/appearance/DarkStyle.h"

#include <QStyleOptionButton>

namespace vellumo {

namespace {

constexpr QRgb windowOfOutline = 0xFFC8C8D0; // darkened, a middle grey

} // namespace

DarkStyle::DarkStyle()
    : QProxyStyle("fusion")
{
}

void DarkStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element != PE_IndicatorCheckBox || button == nullptr)
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    auto lighter = *button;
    lighter.palette.setColor(QPalette::Window, QColor(windowOfOutline));
    QProxyStyle::drawPrimitive(element, &lighter, painter, widget);
}

} // namespace vellumo

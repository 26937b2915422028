// SPDX-License-Identifier: MIT
#include "desktop/appearance/DarkStyle.h"

#include <QStyleOptionButton>

namespace vellumo {

namespace {

struct RoleColor {
    QPalette::ColorRole role;
    QRgb color;
};

// Fusion draws outlines as the window's colour darkened. They can be seen only where what they enclose, the base, is
// lighter than the window.
constexpr RoleColor normalColors[] = {
    {QPalette::Window, 0xFF2B2B2E},
    {QPalette::WindowText, 0xFFEDEDED},
    {QPalette::Base, 0xFF38383C},
    {QPalette::AlternateBase, 0xFF3F3F44},
    {QPalette::ToolTipBase, 0xFF46464B},
    {QPalette::ToolTipText, 0xFFEDEDED},
    {QPalette::PlaceholderText, 0xFFA6A6AC},
    {QPalette::Text, 0xFFEDEDED},
    {QPalette::Button, 0xFF46464B},
    {QPalette::ButtonText, 0xFFEDEDED},
    {QPalette::BrightText, 0xFFFF8080},
    {QPalette::Light, 0xFF626268},
    {QPalette::Midlight, 0xFF525258},
    {QPalette::Mid, 0xFF26262A},
    {QPalette::Dark, 0xFF17171A},
    {QPalette::Shadow, 0xFF0A0A0C},
    {QPalette::Highlight, 0xFF2F74B5},
    {QPalette::HighlightedText, 0xFFFFFFFF},
    {QPalette::Link, 0xFF7DB7E8},
    {QPalette::LinkVisited, 0xFFC39BE0},
};

constexpr QRgb disabledText = 0xFF8F8F95;
constexpr QPalette::ColorRole textRoles[] = {
    QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText};

} // namespace

QPalette darkPalette()
{
    QPalette palette;
    for (const auto& [role, color] : normalColors)
        palette.setColor(role, QColor(color));
    for (const auto role : textRoles)
        palette.setColor(QPalette::Disabled, role, QColor(disabledText));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xFF55555A));
    return palette;
}

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

// What cannot be chosen had a light shadow, which blurs it on dark ground.
int DarkStyle::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const
{
    return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

} // namespace vellumo

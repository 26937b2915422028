#include "desktop/appearance/DarkPalette.h"

#include <utility>

namespace vellumo {

namespace {

struct RoleColor {
    QPalette::ColorRole role;
    QRgb color;
};

constexpr RoleColor normalColors[] = {
    {QPalette::Window, 0xFF2B2B2E},
    {QPalette::WindowText, 0xFFEDEDED},
    {QPalette::Base, 0xFF1F1F21},
    {QPalette::AlternateBase, 0xFF29292C},
    {QPalette::ToolTipBase, 0xFF3A3A3E},
    {QPalette::ToolTipText, 0xFFEDEDED},
    {QPalette::PlaceholderText, 0xFF9A9AA0},
    {QPalette::Text, 0xFFEDEDED},
    {QPalette::Button, 0xFF3A3A3E},
    {QPalette::ButtonText, 0xFFEDEDED},
    {QPalette::BrightText, 0xFFFF8080},
    {QPalette::Light, 0xFF55555A},
    {QPalette::Midlight, 0xFF46464B},
    {QPalette::Mid, 0xFF26262A},
    {QPalette::Dark, 0xFF17171A},
    {QPalette::Shadow, 0xFF0A0A0C},
    {QPalette::Highlight, 0xFF2F74B5},
    {QPalette::HighlightedText, 0xFFFFFFFF},
    {QPalette::Link, 0xFF7DB7E8},
    {QPalette::LinkVisited, 0xFFC39BE0},
};

constexpr QRgb disabledText = 0xFF85858B;
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
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xFF46464B));
    return palette;
}

} // namespace vellumo

// SPDX-License-Identifier: MIT
#include "desktop/window/WindowLayout.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace vellumo {

QByteArray storedLayout(const Defaults& defaults, std::string_view key)
{
    return QByteArray::fromBase64(QByteArray::fromStdString(defaults.string(key).value_or("")));
}

void storeLayout(Defaults& defaults, std::string_view key, const QByteArray& state)
{
    defaults.setString(key, state.toBase64().toStdString());
}

void boundToScreen(QWidget& window)
{
    if (window.isMaximized() || window.isFullScreen()) return; // the desktop sees to it
    const auto titleBar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const auto room = window.screen()->availableGeometry().adjusted(0, titleBar, 0, 0);
    auto place = window.geometry();
    place.setSize(place.size().boundedTo(room.size()));
    place.moveLeft(std::clamp(place.left(), room.left(), room.left() + room.width() - place.width()));
    place.moveTop(std::clamp(place.top(), room.top(), room.top() + room.height() - place.height()));
    if (place != window.geometry()) window.setGeometry(place);
}

namespace {

bool takesTab(const QWidget& widget) { return (widget.focusPolicy() & Qt::TabFocus) != 0; }

// What takes the keyboard in a pane; null when nothing does at present.
QWidget* focusTarget(QWidget& pane)
{
    auto* proxy = pane.focusProxy();
    if (proxy != nullptr && proxy->isVisible()) return proxy;
    if (takesTab(pane) && pane.isVisible()) return &pane;
    for (auto* widget : pane.findChildren<QWidget*>())
        if (takesTab(*widget) && widget->isVisible() && widget->isEnabled() && !qobject_cast<QAbstractButton*>(widget))
            return widget;
    return nullptr;
}

} // namespace

void focusNextPane(const std::vector<QWidget*>& panes, int step)
{
    const auto* focus = QApplication::focusWidget();
    const auto count = static_cast<int>(panes.size());
    int current = step > 0 ? -1 : count;
    for (int i = 0; i < count; ++i)
        if (focus != nullptr
            && (panes[static_cast<std::size_t>(i)] == focus || panes[static_cast<std::size_t>(i)]->isAncestorOf(focus)))
            current = i;
    for (int i = 1; i <= count; ++i) {
        auto& pane = *panes[static_cast<std::size_t>((current + i * step + 2 * count) % count)];
        if (auto* target = focusTarget(pane)) return target->setFocus(Qt::TabFocusReason);
    }
}

void setTabOrderOf(const std::vector<QWidget*>& parts)
{
    QWidget* last = nullptr;
    for (auto* part : parts) {
        const auto widgets = part->findChildren<QWidget*>();
        for (auto* widget : widgets)
            if (takesTab(*widget)) QWidget::setTabOrder(std::exchange(last, widget), widget);
    }
}

} // namespace vellumo

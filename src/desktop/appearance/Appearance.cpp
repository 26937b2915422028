// SPDX-License-Identifier: MIT
#include "desktop/appearance/Appearance.h"

#include "desktop/appearance/DarkStyle.h"
#include "platform/Defaults.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace vellumo {

namespace {

constexpr std::string_view defaultsKey = "appearance";
constexpr std::string_view choiceNames[] = {"system", "light", "dark"};
constexpr auto ownStyle = "Fusion";

constexpr auto portalService = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto portalInterface = "org.freedesktop.portal.Settings";
constexpr auto appearanceGroup = "org.freedesktop.appearance";
constexpr auto schemeKey = "color-scheme";
constexpr int portalPatienceMs = 300;

Appearance::Choice storedChoice(const Defaults& defaults)
{
    const auto name = defaults.string(defaultsKey);
    for (std::size_t i = 0; i < std::size(choiceNames); ++i)
        if (name == choiceNames[i]) return static_cast<Appearance::Choice>(i);
    return Appearance::Choice::System;
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

QDBusMessage readScheme()
{
    auto call = QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, "Read");
    call << appearanceGroup << schemeKey;
    return call;
}

// The portal wraps the number in a variant, and its older method wraps that once more.
uint unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

Appearance::Appearance(Defaults& defaults)
    : m_defaults(defaults)
    , m_desktopStyle(QApplication::style()->name())
    , m_choice(storedChoice(defaults))
{
    askPortal();
    apply();
}

void Appearance::setChoice(Choice choice)
{
    m_choice = choice;
    m_defaults.setString(defaultsKey, choiceNames[static_cast<std::size_t>(choice)]);
    apply();
}

void Appearance::askPortal()
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    // The slot's type is looked up by its name, and nothing else has made it known yet.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(portalService, portalPath, portalInterface, "SettingChanged", this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    const auto reply = bus.call(readScheme(), QDBus::Block, portalPatienceMs);
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        return portalAnswered(reply.arguments().first());
    // A portal that is only being started answers later.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(readScheme()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const auto arguments = watcher->reply().arguments();
        if (!watcher->isError() && !arguments.isEmpty()) portalAnswered(arguments.first());
        watcher->deleteLater();
    });
}

void Appearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == appearanceGroup && key == schemeKey) portalAnswered(value.variant());
}

void Appearance::portalAnswered(const QVariant& answer)
{
    const auto scheme = unwrapped(answer);
    m_desktopScheme = scheme == 1 ? Scheme::Dark : scheme == 2 ? Scheme::Light : Scheme::Unknown;
    apply();
}

void Appearance::apply()
{
    // Back to the desktop's palette first: only then can be seen what it is.
    if (m_isOwnPalette) {
        QApplication::setStyle(m_desktopStyle);
        QApplication::setPalette(QPalette());
    }
    const bool desktopIsDark = isDark(QApplication::palette());
    const bool wantsDark = m_choice == Choice::Dark || (m_choice == Choice::System && m_desktopScheme == Scheme::Dark);
    const bool wantsLight = m_choice == Choice::Light;
    m_isOwnPalette = (wantsDark && !desktopIsDark) || (wantsLight && desktopIsDark);
    if (!m_isOwnPalette) return;
    if (wantsDark) {
        QApplication::setStyle(new DarkStyle); // the application's from now on
        QApplication::setPalette(darkPalette());
    } else {
        QApplication::setStyle(ownStyle);
        QApplication::setPalette(QApplication::style()->standardPalette());
    }
}

} // namespace vellumo

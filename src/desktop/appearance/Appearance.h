// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace vellumo {

class Defaults;

// Light or dark. Where the desktop's own palette is what the user prefers, it stays untouched; else the program takes a
// palette of its own, in the Fusion style. Main thread; one for a program, made after the QApplication.
class Appearance : public QObject {
    Q_OBJECT

public:
    enum class Choice {
        System, // what the desktop's settings portal says
        Light,
        Dark,
    };

    // Takes the choice from the defaults, which outlive it. Waits for the portal for a moment, so that the first window
    // appears in the right colours.
    explicit Appearance(Defaults& defaults);

    [[nodiscard]] Choice choice() const { return m_choice; }
    // Takes effect at once, and is kept.
    void setChoice(Choice choice);

public slots:
    // The portal's signal. Only the colour scheme is looked at: 1 dark, 2 light, anything else no preference.
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void askPortal();
    void portalAnswered(const QVariant& answer);
    void apply();

    enum class Scheme { Unknown = 0, Dark = 1, Light = 2 };

    Defaults& m_defaults;
    const QString m_desktopStyle; // the name of the style that the program started with
    Choice m_choice = Choice::System;
    Scheme m_desktopScheme = Scheme::Unknown;
    bool m_isOwnPalette = false;
};

} // namespace vellumo

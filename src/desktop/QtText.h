// SPDX-License-Identifier: MIT
#pragma once

#include "text/Messages.h"

#include <QString>
#include <string>
#include <string_view>

// The border between the UTF-8 of the logic and the texts of Qt.
namespace vellumo {

inline QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string fromQString(const QString& text) { return text.toStdString(); }

// A key of the message table, translated.
inline QString localizedText(const char* key) { return toQString(localized(key)); }

// A text as a tool tip: Qt takes one that looks like markup for markup. Long ones wrap.
inline QString plainToolTip(const QString& text)
{
    return text.isEmpty() ? text : "<qt>" + text.toHtmlEscaped().replace('\n', "<br>") + "</qt>";
}

// A text as the title of a window, where Qt takes "[*]" for a mark of its own.
inline QString plainWindowTitle(const std::string& title) { return toQString(title).replace("[*]", "[*][*]"); }

} // namespace vellumo

// What the code made from the layout files calls for each text. The context is not used: keys have none.
inline QString uiText(const char* key, const char* /*context*/) { return vellumo::localizedText(key); }

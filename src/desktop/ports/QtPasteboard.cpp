#include "desktop/ports/QtPasteboard.h"

#include "desktop/QtText.h"

#include <QClipboard>
#include <QGuiApplication>

namespace vellumo {

void QtPasteboard::setText(const std::string& text) { QGuiApplication::clipboard()->setText(toQString(text)); }

} // namespace vellumo

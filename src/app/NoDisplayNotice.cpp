// SPDX-License-Identifier: MIT
#include "NoDisplayNotice.h"

#include "text/Messages.h"

#include <QString>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace vellumo {

namespace {

std::string keptMessages;
QtMessageHandler usualHandler = nullptr;

void keepOrEnd(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type != QtFatalMsg) {
        keptMessages += message.toStdString() + '\n';
        return;
    }
    const auto notice = localized("There is no display to show a window on. vellumo-cli needs none.");
    static_cast<void>(std::fprintf(stderr, "vellumo: %s\n", notice.c_str()));
    std::_Exit(1);
}

} // namespace

NoDisplayNotice::NoDisplayNotice() { usualHandler = qInstallMessageHandler(keepOrEnd); }

void NoDisplayNotice::end()
{
    qInstallMessageHandler(usualHandler);
    static_cast<void>(std::fputs(keptMessages.c_str(), stderr));
    keptMessages.clear();
}

} // namespace vellumo

// SPDX-License-Identifier: MIT
#include "desktop/ports/QtWorkspace.h"

#include "desktop/QtText.h"
#include "desktop/icons/Icons.h"
#include "desktop/ports/QtImageDecoder.h"

#include <QApplication>
#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QUrl>

namespace vellumo {

void QtPasteboard::setText(const std::string& text) { QGuiApplication::clipboard()->setText(toQString(text)); }

namespace {

QDBusMessage showItems(const QUrl& url)
{
    auto call = QDBusMessage::createMethodCall(
        "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", "ShowItems");
    call << QStringList{url.toString(QUrl::FullyEncoded)} << QString(); // the second: no start-up notification
    return call;
}

void openFolderOf(const QUrl& url)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(url.toLocalFile()).absolutePath()));
}

} // namespace

void QtWorkspace::openFile(const std::string& path)
{
    // Its result is of no use: it is true even when the helper program failed.
    QDesktopServices::openUrl(QUrl::fromLocalFile(toQString(path)));
}

void QtWorkspace::revealFile(const std::string& path)
{
    const auto url = QUrl::fromLocalFile(toQString(path));
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return openFolderOf(url);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(showItems(url)), qApp);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, url] {
        if (watcher->isError()) openFolderOf(url);
        watcher->deleteLater();
    });
}

std::shared_ptr<const Image> QtWorkspace::fileTypeIcon(const std::string& extension)
{
    return imageFrom(vellumo::fileTypeIcon(toQString(extension)).pixmap(QSize(16, 16), 1.0).toImage());
}

} // namespace vellumo

// SPDX-License-Identifier: MIT
#include "desktop/ports/QtMainThread.h"

#include <QThread>

namespace vellumo {

void QtMainThread::performAndWait(const std::function<void()>& work)
{
    // A blocking call to the own thread would wait for itself.
    if (QThread::currentThread() == m_receiver.thread())
        work();
    else
        QMetaObject::invokeMethod(&m_receiver, work, Qt::BlockingQueuedConnection);
}

void QtMainThread::post(std::function<void()> work)
{
    QMetaObject::invokeMethod(&m_receiver, std::move(work), Qt::QueuedConnection);
}

} // namespace vellumo

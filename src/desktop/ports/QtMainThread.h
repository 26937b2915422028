// SPDX-License-Identifier: MIT
#pragma once

#include "platform/MainThread.h"

#include <QObject>

namespace vellumo {

// The thread of Qt's event loop. Made on the main thread; outlives every thread that calls it, and the event loop has
// to turn as long as one of them may call.
class QtMainThread : public MainThread {
public:
    void performAndWait(const std::function<void()>& work) override;
    void post(std::function<void()> work) override;

private:
    QObject m_receiver; // lives on the main thread
};

} // namespace vellumo

#pragma once

#include <functional>

namespace vellumo {

// The way from a worker thread to the main thread.
class MainThread {
public:
    virtual ~MainThread() = default;
    // Runs `work` on the main thread and returns when it is done. Called from the main thread itself, it runs it at
    // once.
    virtual void performAndWait(const std::function<void()>& work) = 0;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
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
    // Returns at once; the main thread runs `work` later, after all that was posted before. What is still waiting when
    // the main thread ends is destroyed without having run.
    virtual void post(std::function<void()> work) = 0;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vellumo {

// What is shown when the SQLite library cannot be used.
struct LoadError {
    std::string title;
    std::string label;
    std::string list; // lines in small type, ended by "\n" but for the last
};

// The window that tells it. `show` is called on the thread that loads the library, which is an export's worker; it
// returns when the person has closed the window.
class LoadErrorWindow {
public:
    virtual ~LoadErrorWindow() = default;
    virtual void show(const LoadError& error) = 0;
};

// Writes the three texts to standard error.
class StandardErrorLoadErrorWindow : public LoadErrorWindow {
public:
    void show(const LoadError& error) override;
};

} // namespace vellumo

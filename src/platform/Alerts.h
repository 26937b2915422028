// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vellumo {

struct Alert {
    enum class Style {
        Sheet, // attached to the main window
        Modal, // a panel of its own
    };
    std::string title;
    std::string message;
    Style style = Style::Sheet;
    std::string detail{}; // a further paragraph, such as the reason and what to do; may be empty

    bool operator==(const Alert&) const = default;
};

// Messages with one button. Main thread only.
class Alerts {
public:
    virtual ~Alerts() = default;
    virtual void show(const Alert& alert) = 0;
    virtual void beep() = 0;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vellumo {

struct Alert {
    enum class Style {
        Sheet, // attached to the main window
        Modal, // a panel of its own
    };
    enum class Kind {
        Warning,
        Notice, // all is well
    };
    std::string title;
    std::string message;
    Style style = Style::Sheet;
    std::string detail{}; // a further paragraph, such as the reason and what to do; may be empty
    Kind kind = Kind::Warning;
    std::string folder{}; // which the alert offers to open; "" for none

    bool operator==(const Alert&) const = default;
};

// Messages with one button, and questions. Main thread only.
class Alerts {
public:
    virtual ~Alerts() = default;
    virtual void show(const Alert& alert) = 0;
    // The same with a button for each of these choices beside the one that only closes it. `chosen` gets the place of
    // the choice among them once the message has gone; it is not called for the other button.
    virtual void ask(const Alert& alert, const std::vector<std::string>& choices,
        const std::function<void(std::size_t)>& chosen) = 0;
    virtual void beep() = 0;
};

} // namespace vellumo

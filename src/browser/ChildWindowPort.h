#pragma once

#include "browser/DataViewPort.h"

#include <string>

namespace vellumo {

enum class WindowLevel { Normal, ModalPanel };

// The widgets of a table window. Destroying the port destroys the window. Main thread only.
class ChildWindowPort {
public:
    virtual ~ChildWindowPort() = default;

    // Lives as long as the port.
    [[nodiscard]] virtual DataViewPort& dataView() = 0;
    virtual void setTitle(const std::string& title) = 0;
    virtual void setLevel(WindowLevel level) = 0;
    // Brings the window to the front and gives it the keyboard.
    virtual void makeKey() = 0;
    virtual void jumpBarMenuDidChange() = 0;
    virtual void jumpBarSelectionDidChange() = 0;
};

} // namespace vellumo

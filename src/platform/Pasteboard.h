#pragma once

#include <string>

namespace vellumo {

// The general pasteboard. Main thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    virtual void setText(const std::string& text) = 0;
};

} // namespace vellumo

#pragma once

#include "platform/Pasteboard.h"

namespace vellumo {

// The clipboard.
class QtPasteboard : public Pasteboard {
public:
    void setText(const std::string& text) override;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/LoadErrorWindow.h"

#include <vector>

namespace vellumo::test {

class RecordingLoadErrorWindow : public LoadErrorWindow {
public:
    void show(const LoadError& error) override { shown.push_back(error); }

    std::vector<LoadError> shown;
};

} // namespace vellumo::test

// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/icons/Icons.h"
#include "export/ExportHints.h"

#include <vector>

namespace vellumo {

// The hints that belong beside one control. Takes no room while there are none.
class HintLabel : public IconLabel {
public:
    explicit HintLabel(QWidget* parent = nullptr);

    // Those of `hints` that are for this place, a line each.
    void show(const std::vector<ExportHint>& hints, ExportHint::Place place);
};

} // namespace vellumo

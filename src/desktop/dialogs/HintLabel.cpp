// SPDX-License-Identifier: MIT
#include "desktop/dialogs/HintLabel.h"

#include "desktop/QtText.h"

#include <QStringList>

namespace vellumo {

HintLabel::HintLabel(QWidget* parent)
    : IconLabel(parent)
{
    setVisible(false);
}

void HintLabel::show(const std::vector<ExportHint>& hints, ExportHint::Place place)
{
    QStringList lines;
    bool isWarning = false;
    for (const auto& hint : hints) {
        if (hint.place != place) continue;
        lines << toQString(hint.text);
        isWarning = isWarning || hint.kind == ExportHint::Kind::Warning;
    }
    setContent(isWarning ? "warning" : "information", lines.join('\n'));
    setVisible(!lines.isEmpty());
}

} // namespace vellumo

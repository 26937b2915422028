// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLineEdit;

namespace vellumo {

// Asks for the number of a row, over a window.
class JumpToRowSheet : public QDialog {
public:
    JumpToRowSheet(const QString& title, const QString& prompt, QWidget* window);

    // 0 for what is no whole number.
    [[nodiscard]] long number() const;

private:
    QLineEdit* m_number;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "browser/OpenQuestions.h"

#include <QDialog>

class QLineEdit;

namespace vellumo {

// Asks for the password of an encrypted file. Destroys itself.
class PasswordSheet : public QDialog {
public:
    PasswordSheet(const PasswordQuestion& question, QWidget* window);

    // As it was entered; it is nowhere else.
    [[nodiscard]] std::string password() const;

private:
    QLineEdit* m_password;
};

} // namespace vellumo

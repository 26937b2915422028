// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

namespace vellumo {

// Where a connection goes.
class DBSocketAddress {
public:
    // Full path of the database file.
    [[nodiscard]] const std::string& dbFilePath() const { return m_dbFilePath; }
    void setDbFilePath(std::string path) { m_dbFilePath = std::move(path); }

    // The key of an encrypted database; "" for none.
    [[nodiscard]] const std::string& password() const { return m_password; }
    void setPassword(std::string password) { m_password = std::move(password); }

    // What a socket keeps, so that a later change of the target does not reach an open database.
    [[nodiscard]] DBSocketAddress copyAsSocketAddress() const { return *this; }

private:
    std::string m_dbFilePath;
    std::string m_password;
};

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "SQLite Connection/DBSockets/DBSocket.h"
#include "SQLite Connection/DBSockets/DBSocketAddress.h"

namespace vellumo {

// A socket that knows where it goes.
class DBSocketBase : public DBSocket {
public:
    [[nodiscard]] const DBSocketAddress& address() const { return m_address; }
    void setAddress(const DBSocketAddress& address) { m_address = address.copyAsSocketAddress(); }

private:
    DBSocketAddress m_address;
};

} // namespace vellumo

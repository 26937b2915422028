// SPDX-License-Identifier: MIT
#include "SQLite Connection/Connection/ConnectHandler.h"

#include "SQLite Connection/DBSockets/DBSocket.h"

#include <system_error>
#include <thread>

namespace vellumo {

bool connectOnSecondThread(DBSocket& socket)
{
    bool isConnected = false;
    try {
        std::thread([&] { isConnected = socket.connect(); }).join();
    } catch (const std::system_error&) {
        // No thread to be had: connecting here does as well.
        isConnected = socket.connect();
    }
    return isConnected;
}

} // namespace vellumo

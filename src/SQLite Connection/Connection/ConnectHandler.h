// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

class DBSocket;

// Connects a socket on a thread of its own, since reaching a database may take long, and waits for it. True when the
// socket is connected.
[[nodiscard]] bool connectOnSecondThread(DBSocket& socket);

} // namespace vellumo

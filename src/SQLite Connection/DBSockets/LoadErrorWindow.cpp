// SPDX-License-Identifier: MIT
#include "SQLite Connection/DBSockets/LoadErrorWindow.h"

#include <cstdio>

namespace vellumo {

void StandardErrorLoadErrorWindow::show(const LoadError& error)
{
    static_cast<void>(
        std::fprintf(stderr, "%s\n%s\n%s\n", error.title.c_str(), error.label.c_str(), error.list.c_str()));
}

} // namespace vellumo

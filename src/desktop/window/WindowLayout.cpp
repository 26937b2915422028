// SPDX-License-Identifier: MIT
#include "desktop/window/WindowLayout.h"

namespace vellumo {

QByteArray storedLayout(const Defaults& defaults, std::string_view key)
{
    return QByteArray::fromBase64(QByteArray::fromStdString(defaults.string(key).value_or("")));
}

void storeLayout(Defaults& defaults, std::string_view key, const QByteArray& state)
{
    defaults.setString(key, state.toBase64().toStdString());
}

} // namespace vellumo

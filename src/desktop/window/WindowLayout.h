// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Defaults.h"

#include <QByteArray>

// What a window looks like, kept between runs as texts of the user's defaults.
namespace vellumo {

// Empty when nothing was stored.
[[nodiscard]] QByteArray storedLayout(const Defaults& defaults, std::string_view key);
void storeLayout(Defaults& defaults, std::string_view key, const QByteArray& state);

} // namespace vellumo

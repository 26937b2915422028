// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vellumo::samples {

enum class JetVersion { Jet3, Jet4 }; // Access 97; Access 2000 to 2003

[[nodiscard]] constexpr std::size_t pageSize(JetVersion version) { return version == JetVersion::Jet3 ? 2048 : 4096; }

} // namespace vellumo::samples

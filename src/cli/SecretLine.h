// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo {

// A line that is typed at a terminal, which does not show it, without its end; at most `mostBytes` and one more are
// kept. `prompt` goes to standard error. nullopt: it cannot be read, or interrupted() tells that the user ends the
// program. However this ends, and while the program is stopped, the terminal shows what is typed as it did before.
[[nodiscard]] std::optional<std::string> readSecretLine(int terminal, std::string_view prompt, std::size_t mostBytes);

} // namespace vellumo

// SPDX-License-Identifier: MIT
#pragma once

#include "text/UTF8.h"

#include <string>
#include <string_view>

// Texts from files and names hold characters that some places obey instead of showing them: controls, line and
// paragraph separators, and those that change the direction of the text around them. On a terminal they move the cursor
// or make a name look like another one.
namespace vellumo {

// `text` with each such character as an escape, "\u{1B}". Those of `kept` (ASCII) stay, as do bytes that are no UTF-8.
[[nodiscard]] std::string escapedText(std::string_view text, std::string_view kept = {});

// `text` with `replacement` for each such character, for those of `forbidden` (ASCII), and for bytes that are no UTF-8.
[[nodiscard]] std::string cleanedText(std::string_view text, std::string_view forbidden, char replacement);

// `text` without such characters and without bytes that are no UTF-8.
[[nodiscard]] std::string withoutObeyed(std::string_view text);

} // namespace vellumo

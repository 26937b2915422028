// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vellumo {

// `text` in double quotes, those inside it doubled.
void appendQuoted(std::string_view text, std::string& out);

// `text` with every `what` replaced.
void appendReplaced(std::string_view text, char what, std::string_view replacement, std::string& out);

} // namespace vellumo

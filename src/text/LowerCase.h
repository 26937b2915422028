#pragma once

#include <string>
#include <string_view>

namespace vellumo {

// The text in lower case, by Unicode's rules for no particular language. Malformed UTF-8 bytes become U+FFFD. Any
// thread.
[[nodiscard]] std::string lowerCase(std::string_view text);

} // namespace vellumo

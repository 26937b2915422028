#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vellumo {

// A check for the parser of the command line: digits only, at least `minimum`, and no more than 64 bits hold. The
// function returns what is wrong (localised), "" for nothing.
[[nodiscard]] std::function<std::string(const std::string&)> wholeNumberFrom(std::int64_t minimum);

} // namespace vellumo

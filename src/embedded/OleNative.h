#pragma once

#include "embedded/OleField.h"

#include <string_view>

namespace vellumo {

// The payload that the native data of an object of this class stands for; false when it makes no sense (a package
// only). A class that is not known gives the native data as it is, without an extension. `out` is filled from empty.
[[nodiscard]] bool unwrapNative(std::string_view className, Bytes native, OlePayload& out);

} // namespace vellumo

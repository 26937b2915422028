// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Description.h"

namespace vellumo::samples {

// A small shop: customers, orders, products with pictures, documents, relations, texts in many scripts. Jet 4.
[[nodiscard]] DatabaseDescription demoDatabase();

} // namespace vellumo::samples

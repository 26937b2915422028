// SPDX-License-Identifier: MIT
#pragma once

#include "samples/Canvas.h"

namespace vellumo::samples {

enum class Motif { TeaTin, CoffeeBag, JamJar, Mug, Candle, Notebook, Plant, Cushion };

// A product in its main colour on a light ground, 128 x 96.
[[nodiscard]] Canvas drawProduct(Motif motif, Color color);

struct Looks {
    Color skin;
    Color hair;
    Color shirt;
    bool hasLongHair = false;
};

// Head and shoulders, 96 x 96.
[[nodiscard]] Canvas drawPortrait(const Looks& looks);

} // namespace vellumo::samples

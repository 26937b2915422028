// SPDX-License-Identifier: MIT
#include "samples/Illustrations.h"

namespace vellumo::samples {
namespace {

constexpr Color white{255, 255, 255};
constexpr Color black{0, 0, 0};
constexpr Color paper{252, 248, 238};
constexpr Color ink{66, 58, 52};
constexpr Color leafGreen{74, 140, 82};

Color lighter(Color color, double share = 0.35) { return mixed(color, white, share); }
Color darker(Color color, double share = 0.3) { return mixed(color, black, share); }

// Three lines of print on a label.
void print(Canvas& canvas, Box label)
{
    for (int line = 0; line < 3; ++line) {
        const double width = label.width * (line == 1 ? 0.7 : 0.5);
        canvas.rectangle({label.left + (label.width - width) / 2, label.top + label.height * (0.25 + 0.22 * line),
                             width, label.height * 0.09},
            Paint(ink, ink, 0.75));
    }
}

void drawTeaTin(Canvas& canvas, Color color)
{
    canvas.rectangle({42, 26, 44, 56}, {lighter(color), darker(color)}, 4);
    canvas.rectangle({40, 18, 48, 11}, {lighter(color, 0.5), color}, 4);
    canvas.rectangle({46, 30, 5, 48}, {white, white, 0.25}, 2);
    canvas.ellipse({50, 38, 28, 32}, paper);
    canvas.polygon({{64, 41}, {72, 52}, {64, 66}, {56, 52}}, {leafGreen, darker(leafGreen)});
    canvas.rectangle({63.4, 46, 1.2, 20}, paper);
}

void drawCoffeeBag(Canvas& canvas, Color color)
{
    canvas.polygon({{42, 18}, {86, 18}, {92, 84}, {36, 84}}, {lighter(color, 0.2), darker(color, 0.4)});
    canvas.rectangle({41, 14, 46, 9}, darker(color, 0.5), 2);
    canvas.polygon({{44, 24}, {50, 24}, {46, 82}, {39, 82}}, {white, white, 0.15});
    canvas.rectangle({46, 36, 36, 34}, paper, 3);
    canvas.ellipse({55, 40, 18, 25}, {Color{134, 86, 50}, Color{78, 46, 26}});
    canvas.rectangle({63, 42, 2, 21}, Color{58, 34, 20}, 1);
}

void drawJamJar(Canvas& canvas, Color color)
{
    canvas.rectangle({38, 28, 52, 55}, {Color{236, 243, 246}, Color{196, 210, 216}}, 9);
    canvas.rectangle({41, 36, 46, 44}, {lighter(color, 0.15), darker(color)}, 7);
    canvas.rectangle({42, 17, 44, 13}, {lighter(ink, 0.75), lighter(ink, 0.35)}, 3);
    canvas.rectangle({46, 46, 36, 24}, paper, 2);
    print(canvas, {46, 46, 36, 24});
    canvas.rectangle({42, 34, 4, 42}, {white, white, 0.45}, 2);
}

void drawMug(Canvas& canvas, Color color)
{
    canvas.ring({70, 38, 32, 32}, 6, {80, 30, 40, 50}, {lighter(color, 0.1), darker(color)});
    canvas.rectangle({36, 30, 48, 52}, {lighter(color), darker(color, 0.25)}, 8);
    canvas.ellipse({36, 24, 48, 13}, lighter(color, 0.55));
    canvas.ellipse({39, 26, 42, 9}, {Color{96, 60, 36}, Color{60, 36, 22}});
    canvas.rectangle({41, 40, 4, 34}, {white, white, 0.3}, 2);
    canvas.ellipse({52, 50, 16, 16}, {paper, paper, 0.85});
}

void drawCandle(Canvas& canvas, Color color)
{
    canvas.ellipse({34, -8, 60, 60}, {Color{255, 226, 150}, Color{255, 226, 150}, 0.35});
    canvas.rectangle({48, 40, 32, 43}, {lighter(color, 0.4), darker(color, 0.15)}, 4);
    canvas.ellipse({48, 36, 32, 9}, lighter(color, 0.65));
    canvas.rectangle({63.2, 30, 1.6, 11}, ink);
    canvas.ellipse({58.5, 12, 11, 21}, {Color{255, 214, 92}, Color{244, 138, 40}});
    canvas.ellipse({61.5, 21, 5, 10}, {white, Color{255, 232, 160}});
    canvas.rectangle({52, 46, 4, 32}, {white, white, 0.3}, 2);
}

void drawNotebook(Canvas& canvas, Color color)
{
    canvas.rectangle({43, 17, 52, 67}, {Color{240, 236, 224}, Color{214, 208, 192}}, 3);
    canvas.rectangle({38, 14, 54, 67}, {lighter(color, 0.15), darker(color, 0.2)}, 4);
    canvas.rectangle({38, 14, 9, 67}, {darker(color, 0.2), darker(color, 0.45)}, 3);
    canvas.rectangle({53, 26, 32, 19}, paper, 2);
    print(canvas, {53, 26, 32, 19});
    canvas.rectangle({84, 14, 3, 67}, darker(color, 0.5));
}

void drawPlant(Canvas& canvas, Color color)
{
    const Paint leaf(lighter(leafGreen, 0.25), darker(leafGreen, 0.2));
    canvas.polygon({{64, 56}, {34, 42}, {28, 24}, {50, 34}}, leaf);
    canvas.polygon({{64, 56}, {94, 42}, {100, 24}, {78, 34}}, leaf);
    canvas.polygon({{64, 58}, {46, 30}, {50, 10}, {62, 28}}, {lighter(leafGreen), leafGreen});
    canvas.polygon({{64, 58}, {82, 30}, {78, 10}, {66, 28}}, {lighter(leafGreen), leafGreen});
    canvas.polygon({{64, 58}, {56, 26}, {64, 6}, {72, 26}}, {lighter(leafGreen, 0.5), leafGreen});
    canvas.polygon({{44, 56}, {84, 56}, {78, 84}, {50, 84}}, {lighter(color, 0.2), darker(color)});
    canvas.rectangle({41, 52, 46, 9}, {lighter(color, 0.35), color}, 2);
}

void drawCushion(Canvas& canvas, Color color)
{
    canvas.rectangle({26, 24, 76, 58}, {lighter(color, 0.25), darker(color, 0.25)}, 16);
    for (int stripe = 0; stripe < 4; ++stripe)
        canvas.rectangle({36.0 + 16 * stripe, 27, 6, 52}, {lighter(color, 0.6), lighter(color, 0.25), 0.7}, 3);
    canvas.ellipse({59, 48, 10, 9}, {darker(color, 0.1), darker(color, 0.5)});
}

} // namespace

Canvas drawProduct(Motif motif, Color color)
{
    Canvas canvas(128, 96, {white, lighter(color, 0.82)});
    canvas.ellipse({22, 76, 84, 14}, {black, black, 0.13});
    switch (motif) {
    case Motif::TeaTin: drawTeaTin(canvas, color); break;
    case Motif::CoffeeBag: drawCoffeeBag(canvas, color); break;
    case Motif::JamJar: drawJamJar(canvas, color); break;
    case Motif::Mug: drawMug(canvas, color); break;
    case Motif::Candle: drawCandle(canvas, color); break;
    case Motif::Notebook: drawNotebook(canvas, color); break;
    case Motif::Plant: drawPlant(canvas, color); break;
    case Motif::Cushion: drawCushion(canvas, color); break;
    }
    return canvas;
}

Canvas drawPortrait(const Looks& looks)
{
    Canvas canvas(96, 96, {lighter(looks.shirt, 0.85), lighter(looks.shirt, 0.6)});
    canvas.ellipse({24, 10, 48, looks.hasLongHair ? 66.0 : 44.0}, {lighter(looks.hair, 0.1), darker(looks.hair, 0.2)});
    canvas.ellipse({10, 70, 76, 60}, {lighter(looks.shirt, 0.1), darker(looks.shirt, 0.3)});
    canvas.rectangle({40, 56, 16, 22}, {darker(looks.skin, 0.15), looks.skin}, 7);
    canvas.ellipse({29, 20, 38, 48}, {lighter(looks.skin, 0.12), looks.skin});
    canvas.ring({28, 13, 40, 58}, 9, {26, 10, 44, 20}, {lighter(looks.hair, 0.15), looks.hair});
    canvas.ellipse({38, 41, 4, 5}, ink);
    canvas.ellipse({54, 41, 4, 5}, ink);
    canvas.ring({40, 44, 16, 14}, 1.8, {38, 52, 20, 8}, darker(looks.skin, 0.45));
    return canvas;
}

} // namespace vellumo::samples

// SPDX-License-Identifier: MIT
#include "desktop/icons/Icons.h"
#include "browser/ToolbarDescription.h"
#include "desktop/QtText.h"
#include "desktop/appearance/DarkStyle.h"
#include "support/QtApplication.h"

#include <QPainter>
#include <algorithm>

namespace vellumo {
namespace {

// How far the drawing stands out: the largest distance in brightness between a pixel and the ground.
int contrast(const QIcon& picture, const QColor& ground, QIcon::Mode mode)
{
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    picture.paint(&painter, image.rect(), Qt::AlignCenter, mode);
    painter.end();
    int largest = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            largest = std::max(largest, std::abs(qGray(image.pixel(x, y)) - qGray(ground.rgb())));
    return largest;
}

std::vector<QString> names()
{
    std::vector<QString> result;
    for (const auto& item : toolbarItems())
        if (!item.iconName.empty()) result.push_back(toQString(item.iconName));
    for (const auto* name :
        {"OV_Key", "search", "table", "database", "database_closed", "show_tree", "hide_tree", "show_information",
            "hide_information", "show_text", "hide_text", "drop", "warning", "information", "application"})
        result.emplace_back(name);
    return result;
}

TEST(Icons, StandOutOnLightAndDarkGround)
{
    const auto light = QApplication::palette();
    for (const auto& palette : {light, darkPalette()}) {
        QApplication::setPalette(palette);
        const auto ground = palette.color(QPalette::Window);
        for (const auto& name : names()) {
            const auto picture = icon(name);
            ASSERT_FALSE(picture.isNull()) << name.toStdString();
            const int normal = contrast(picture, ground, QIcon::Normal);
            const int disabled = contrast(picture, ground, QIcon::Disabled);
            EXPECT_GT(normal, 60) << name.toStdString();
            EXPECT_GT(disabled, 15) << name.toStdString();
            EXPECT_LT(disabled, normal) << name.toStdString();
        }
    }
    QApplication::setPalette(light);
}

TEST(Icons, AreDrawnForTheSizeAndScaleAskedFor)
{
    const auto picture = icon("back_32x32");
    EXPECT_EQ(picture.pixmap(QSize(48, 48), 1.0).size(), QSize(48, 48));
    const auto sharp = picture.pixmap(QSize(24, 24), 2.0);
    EXPECT_EQ(sharp.size(), QSize(48, 48));
    EXPECT_EQ(sharp.devicePixelRatio(), 2.0);
    EXPECT_TRUE(icon("no such icon").isNull());
}

TEST(Icons, EveryFileTypeHasOne)
{
    // No icon theme is there; kinds are told apart by their own pictures.
    const auto pixels = [](const char* extension) { return fileTypeIcon(extension).pixmap(32, 32).toImage(); };
    EXPECT_EQ(pixels("png"), pixels("JPG"));
    EXPECT_NE(pixels("png"), pixels("xls"));
    EXPECT_NE(pixels("mp3"), pixels("doc"));
    EXPECT_NE(pixels("zip"), pixels(""));
    EXPECT_EQ(pixels(""), pixels("no-such-type"));
    EXPECT_FALSE(pixels("").isNull());
}

} // namespace
} // namespace vellumo

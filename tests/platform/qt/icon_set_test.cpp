#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPixmap>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Sum of the coverage of all pixels, and whether every coloured pixel has the hue of `colour`.
struct Ink
{
    double coverage = 0;
    bool oneColour = true;
};

Ink inkOf(const QPixmap& pixmap, Colour colour)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    Ink ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            ink.coverage += pixel.alphaF();
            const bool strong = pixel.alpha() > 200;
            ink.oneColour &= !strong || (std::abs(pixel.red() - colour.red) < 8 &&
                                         std::abs(pixel.blue() - colour.blue) < 8);
        }
    }
    return ink;
}

struct IconSetTest : public testing::Test
{
    Skin skin{*qApp};
    IconSet icons{skin};
};

TEST_F(IconSetTest, EveryIconIsSharpAtEveryScaleInTheTextColour)
{
    ASSERT_GE(IconSet::names().size(), 10);
    for (const QString& name : IconSet::names()) {
        double once = 0;
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QPixmap pixmap = icons.icon(name).pixmap(QSize(16, 16), scale);
            EXPECT_EQ(pixmap.size(), QSize(16, 16) * scale) << name.toStdString();
            const Ink ink = inkOf(pixmap, skin.theme().colour(ThemeRole::Text));
            EXPECT_TRUE(ink.oneColour) << name.toStdString();
            once = scale == 1.0 ? ink.coverage : once;
            // Drawn anew, not blown up: the ink grows with the area.
            EXPECT_NEAR(ink.coverage / (scale * scale), once, once * 0.12) << name.toStdString();
        }
        EXPECT_GT(once, 8.0) << name.toStdString();
    }
}

TEST_F(IconSetTest, ADisabledIconIsPale)
{
    const QPixmap pixmap = icons.icon(u"search"_s).pixmap(QSize(32, 32), QIcon::Disabled);
    EXPECT_TRUE(inkOf(pixmap, skin.theme().colour(ThemeRole::TextDisabled)).oneColour);
}

TEST_F(IconSetTest, IconsFollowTheTheme)
{
    const QIcon icon = icons.icon(u"search"_s);
    const QImage before = icon.pixmap(QSize(32, 32)).toImage();
    ASSERT_TRUE(skin.load(u"Text=#ff0000"_s));
    const QPixmap after = icon.pixmap(QSize(32, 32));
    EXPECT_NE(after.toImage(), before);
    EXPECT_TRUE(inkOf(after, Colour{255, 0, 0}).oneColour);
    skin.clear();
    qApp->setStyleSheet({});
}

TEST_F(IconSetTest, AnUnknownNameGivesNoIcon)
{
    EXPECT_TRUE(icons.icon(u"no-such-icon"_s).isNull());
}

TEST_F(IconSetTest, AllPicturesAreDrawnOnOneGridWithOneStroke)
{
    for (const QString& name : IconSet::names()) {
        QFile file(u":/icons/%1.svg"_s.arg(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString svg = QString::fromUtf8(file.readAll());
        EXPECT_TRUE(svg.contains(u"viewBox=\"0 0 16 16\""_s)) << name.toStdString();
        EXPECT_TRUE(svg.contains(u"stroke-width=\"1.35\""_s)) << name.toStdString();
        EXPECT_TRUE(svg.contains(u"currentColor"_s)) << name.toStdString();
    }
}

} // namespace
} // namespace melovane

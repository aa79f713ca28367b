#include "platform/qt/cell_texts.h"
#include "platform/qt/data_grid_painter.h"
#include "platform/qt/grid_fixture.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QScrollBar>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString kTexts[] = {u"Nacht"_s,
                          u"Über den Wolken (Extended Mix)"_s,
                          u"AVATAR To Wa"_s,
                          u"128,5"_s,
                          u"<b>no &amp; mark-up</b>"_s,
                          u"东京の夜"_s,
                          u"שלום"_s,
                          u""_s};

/// A picture of a text at a number of points per unit, by `paint`.
template <typename Paint> QImage picture(qreal scale, const QFont& font, const Paint& paint)
{
    QImage image(QSize(200, 40) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::darkBlue);
    paint(painter, QRect(7, 5, 120, 21));
    return image;
}

/// Where anything stands in a picture.
QRect inked(const QImage& image)
{
    QRect result;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white)) {
                result |= QRect(x, y, 1, 1);
            }
        }
    }
    return result;
}

/// \param side the end of a text may lie within a point, where a part of it has to be rounded
void expectSame(const QImage& found, const QImage& expected, Qt::Alignment side)
{
    if (side == Qt::AlignLeft) {
        EXPECT_EQ(found, expected);
        return;
    }
    const QRect one = inked(found);
    const QRect other = inked(expected);
    EXPECT_LE(std::abs(one.left() - other.left()), 1);
    EXPECT_LE(std::abs(one.right() - other.right()), 1);
    EXPECT_EQ(one.top(), other.top());
    EXPECT_EQ(one.bottom(), other.bottom());
}

class CellTextsLook
    : public testing::TestWithParam<std::tuple<double, const char*, Qt::AlignmentFlag>>
{};

TEST_P(CellTextsLook, IsThatOfThePainterTheFirstTimeAndEveryTimeAfter)
{
    const auto [scale, style, side] = GetParam();
    QFont font;
    font.setBold(std::string_view(style) == "bold");
    font.setStrikeOut(std::string_view(style) == "struckOut");
    CellTexts texts;
    for (const QString& text : kTexts) {
        SCOPED_TRACE(text.toStdString());
        const Qt::Alignment at = side;
        const QImage expected = picture(scale, font, [&](QPainter& painter, const QRect& room) {
            painter.drawText(room, int(at | Qt::AlignVCenter) | Qt::TextSingleLine,
                             painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
        });
        for (int time = 0; time < 2; ++time) {
            const QImage found = picture(scale, font, [&](QPainter& painter, const QRect& room) {
                texts.draw(painter, room, at, text);
            });
            expectSame(found, expected, at);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    CellTexts,
    CellTextsLook,
    testing::Combine(testing::Values(1.0, 1.5, 2.0),
                     testing::Values("plain", "bold", "struckOut"),
                     testing::Values(Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter)));

TEST(CellTexts, OfAPathThatDoesNotFitTheEndIsShownOfAnyOtherTextTheBeginning)
{
    const QFontMetrics metrics{QFont()};
    const QString path = u"/media/music/of many years/Late Summer/"_s;
    const int width = metrics.horizontalAdvance(path) * 2 / 3;
    const QString shown = CellTexts::fitting(metrics, path, width);
    EXPECT_LE(metrics.horizontalAdvance(shown), width);
    EXPECT_TRUE(shown.startsWith(u"/media"_s)) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith(u"Summer/"_s)) << shown.toStdString();
    const QString foreign = u"C:\\Music\\of many years, and of more of them\\Late Summer\\"_s;
    EXPECT_TRUE(CellTexts::fitting(metrics, foreign, width).endsWith(u"Summer\\"_s));
    const QString title = u"Another late summer of many years and nights"_s;
    EXPECT_TRUE(CellTexts::fitting(metrics, title, metrics.horizontalAdvance(title) / 2)
                    .startsWith(u"Another late"_s));
    EXPECT_EQ(CellTexts::fitting(metrics, path, metrics.horizontalAdvance(path) + 1), path);
}

TEST(CellTexts, ATextIsLaidOutOnceForEachRoomAndFont)
{
    CellTexts texts;
    QFont bold;
    bold.setBold(true);
    const auto draw = [&](const QFont& font, int width) {
        picture(1, font, [&](QPainter& painter, const QRect& room) {
            texts.draw(painter, QRect(room.topLeft(), QSize(width, room.height())), Qt::AlignLeft,
                       u"Nacht"_s);
        });
        return texts.laidOut();
    };
    EXPECT_EQ(draw(QFont(), 100), 1);
    EXPECT_EQ(draw(QFont(), 100), 1);
    EXPECT_EQ(draw(QFont(), 20), 2) << "cut elsewhere";
    EXPECT_EQ(draw(bold, 100), 3);
    EXPECT_EQ(draw(QFont(), 100), 3);
}

TEST(CellTexts, HoweverManyTextsArePaintedFewAreKept)
{
    CellTexts texts;
    picture(1, QFont(), [&](QPainter& painter, const QRect& room) {
        for (int i = 0; i < 5000; ++i) {
            texts.draw(painter, room, Qt::AlignLeft, QString::number(i));
        }
        EXPECT_EQ(texts.laidOut(), 5000);
        texts.draw(painter, room, Qt::AlignLeft, u"4999"_s);
        EXPECT_EQ(texts.laidOut(), 5000) << "the last ones are still there";
        texts.draw(painter, room, Qt::AlignLeft, u"0"_s);
        EXPECT_EQ(texts.laidOut(), 5001) << "and the first ones are not";
    });
}

using CellTextsTest = test::GridTest;

TEST_F(CellTextsTest, AGridThatMovesByTenRowsLaysOutTheCellsOfTen)
{
    show(1000);
    grid.grab();
    const auto* painter = qobject_cast<DataGridPainter*>(grid.itemDelegate());
    ASSERT_TRUE(painter);
    const qint64 first = painter->laidOut();
    EXPECT_GT(first, 10);
    grid.grab();
    EXPECT_EQ(painter->laidOut(), first) << "nothing has changed";
    grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->value() + 10);
    grid.grab();
    EXPECT_LE(painter->laidOut() - first, 10 * grid.model()->columnCount());
    EXPECT_GE(painter->laidOut() - first, 10);
}

TEST_F(CellTextsTest, TheFontsOfAGridAreMeasuredOnceHoweverManyCellsArePainted)
{
    show(1000);
    grid.setColumnHidden(1, false); // numbers, whose figures are measured one by one
    const auto* painter = qobject_cast<DataGridPainter*>(grid.itemDelegate());
    ASSERT_TRUE(painter);
    grid.grab();
    grid.verticalScrollBar()->setValue(500);
    grid.grab();
    EXPECT_EQ(painter->fontsMade(), 1);
    look.cellStyle.bold = true;
    grid.grab();
    grid.grab();
    EXPECT_EQ(painter->fontsMade(), 2);
    look.cellStyle.bold = false;
    grid.grab();
    EXPECT_EQ(painter->fontsMade(), 2) << "the plain one is still there";
    grid.setFont(QFont(grid.font().family(), 2 * grid.font().pointSize()));
    grid.grab();
    EXPECT_EQ(painter->fontsMade(), 3);
}

} // namespace
} // namespace melovane

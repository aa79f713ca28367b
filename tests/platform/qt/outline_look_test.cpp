#include "platform/qt/outline_fixture.h"
#include "platform/qt/outline_words.h"

#include <QAccessible>
#include <QFile>
#include <QHelpEvent>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What a tree shows and says.
struct OutlineLookTest : public test::OutlineFixture
{
    OutlineLookTest()
    {
        QFile theme(QStringLiteral(MLV_RESOURCES "/themes/melovane-dark.skn"));
        EXPECT_TRUE(theme.open(QIODevice::ReadOnly));
        EXPECT_TRUE(skin.load(QString::fromUtf8(theme.readAll())));
    }

    ~OutlineLookTest() override { skin.clear(); }

    /// Whether a colour is to be seen in a part of the viewport.
    [[nodiscard]] bool shows(const QRect& part, ThemeRole role)
    {
        const QImage picture = tree.viewport()->grab(part).toImage();
        const QRgb wanted = skin.theme().qcolor(role).rgb();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) == wanted) {
                    return true;
                }
            }
        }
        return false;
    }

    /// What the tool tip says at a place; empty when there is none.
    [[nodiscard]] QString tipAt(const QPoint& place)
    {
        QHelpEvent event(QEvent::ToolTip, place, tree.viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree.viewport(), &event);
        const QString text = QToolTip::isVisible() ? QToolTip::text() : QString();
        QToolTip::hideText();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return text;
    }

    void change(int row, const std::function<void(TreeRow&)>& what)
    {
        TreeRow changed = tree.row(row);
        what(changed);
        tree.setRow(row, changed);
    }
};

TEST_F(OutlineLookTest, ATickIsInTheAccentColour)
{
    change(1, [](TreeRow& row) { row.tick = RowTick::Off; });
    EXPECT_FALSE(shows(tree.tickPlaceOf(1), ThemeRole::Accent));
    EXPECT_TRUE(shows(tree.tickPlaceOf(1), ThemeRole::TextField));
    change(1, [](TreeRow& row) { row.tick = RowTick::On; });
    EXPECT_TRUE(shows(tree.tickPlaceOf(1), ThemeRole::Accent));
}

TEST_F(OutlineLookTest, ACountIsInSecondTextAndOnASelectionInItsOwn)
{
    tree.resize(400, 300);
    change(1, [](TreeRow& row) {
        row.text = u"I [IIIIIIIIII]"_s;
        row.countLetters = 12;
    });
    const QRect place = tree.placeOf(1).adjusted(40, 0, 0, 0);
    EXPECT_TRUE(shows(place, ThemeRole::TextSecond));
    EXPECT_FALSE(shows(place, ThemeRole::Text));
    tree.setCurrentRow(1);
    EXPECT_TRUE(shows(place, ThemeRole::TextSecondSelected));
    EXPECT_FALSE(shows(place, ThemeRole::TextSecond));
}

TEST_F(OutlineLookTest, ARowThatCanBeFilledShowsTheMarkThoughNothingIsBelowIt)
{
    const QRect place = tree.placeOf(6);
    const QRect mark(0, place.top(), place.left(), place.height());
    const QImage before = tree.viewport()->grab(mark).toImage();
    change(6, [](TreeRow& row) { row.fillable = true; });
    EXPECT_NE(tree.viewport()->grab(mark).toImage(), before);
}

TEST_F(OutlineLookTest, AmongSeveralSelectedRowsTheCurrentOneHasAFrame)
{
    tree.setMultiSelection(true);
    tree.activateWindow();
    tree.setFocus();
    if (!QTest::qWaitForWindowActive(&tree)) {
        FAIL() << "the window has no keyboard";
    }
    tree.setCurrentRow(1);
    const auto isFramed = [this](int row) {
        const int y = tree.placeOf(row).top();
        return shows(QRect(0, y, tree.viewport()->width(), 1), ThemeRole::Accent);
    };
    EXPECT_FALSE(isFramed(1));
    QTest::keyClick(&tree, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(isFramed(2));
    EXPECT_FALSE(isFramed(1));
}

TEST_F(OutlineLookTest, ATextWithoutRoomIsSaidWithABlankOnEitherSide)
{
    EXPECT_EQ(tipAt(tree.placeOf(1).center()), QString());
    change(1, [](TreeRow& row) { row.text = u"Ein Name, der für diese Breite zu lang ist"_s; });
    EXPECT_EQ(tipAt(tree.placeOf(1).center()), u" Ein Name, der für diese Breite zu lang ist "_s);
    change(1, [](TreeRow& row) { row.text = u"<b>Ein Name, der <i>zu lang</i> ist</b>"_s; });
    EXPECT_TRUE(tipAt(tree.placeOf(1).center()).contains(u"&lt;b&gt;"_s)) << "no markup";
}

TEST_F(OutlineLookTest, ARowsOwnTipIsSaidWhetherItsTextFitsOrNot)
{
    change(1, [](TreeRow& row) { row.toolTip = u"Fehler"_s; });
    EXPECT_EQ(tipAt(tree.placeOf(1).center()), u"Fehler"_s);
    change(1, [](TreeRow& row) { row.text = u"Ein Name, der für diese Breite zu lang ist"_s; });
    EXPECT_TRUE(tipAt(tree.placeOf(1).center()).endsWith(u"Fehler"_s));
}

TEST_F(OutlineLookTest, OverTheBoxItsOwnTipIsSaid)
{
    change(1, [](TreeRow& row) {
        row.tick = RowTick::On;
        row.toolTip = u"Zeile"_s;
    });
    EXPECT_EQ(tipAt(tree.tickPlaceOf(1).center()), QString());
    tree.setTickTip([](int row) { return u" Kasten %1 "_s.arg(row); });
    EXPECT_EQ(tipAt(tree.tickPlaceOf(1).center()), u" Kasten 1 "_s);
}

TEST_F(OutlineLookTest, AnImageIsScaledDownToTheWidthAndNeverUp)
{
    const QTemporaryDir folder;
    QImage cover(800, 400, QImage::Format_RGB32);
    cover.fill(Qt::red);
    ASSERT_TRUE(cover.save(folder.filePath(u"large.png"_s)));
    ASSERT_TRUE(cover.scaled(40, 60).save(folder.filePath(u"small.png"_s)));
    const int line = tree.placeOf(1).height();
    change(2, [&](TreeRow& row) { row.image = folder.filePath(u"large.png"_s); });
    EXPECT_GT(tree.placeOf(2).height(), 70);
    EXPECT_LT(tree.placeOf(2).height(), tree.width() / 2);
    EXPECT_EQ(tree.viewport()->grab().toImage().pixelColor(tree.viewport()->width() / 2,
                                                           tree.placeOf(2).center().y()),
              QColor(Qt::red));
    change(2, [&](TreeRow& row) { row.image = folder.filePath(u"small.png"_s); });
    EXPECT_GE(tree.placeOf(2).height(), 60);
    EXPECT_LE(tree.placeOf(2).height(), 60 + 16);
    EXPECT_EQ(tree.placeOf(1).height(), line) << "all other rows are as high as they were";
    tree.insertRow(0, test::outlineRow(u"x"_s, 0));
    EXPECT_GE(tree.placeOf(3).height(), 60);
    EXPECT_EQ(tree.placeOf(2).height(), line);
    tree.foldTo(9);
    EXPECT_GE(tree.placeOf(3).height(), 60) << "when all lines are made anew, too";
    change(3, [](TreeRow& row) { row.image.clear(); });
    EXPECT_EQ(tree.placeOf(3).height(), line);
}

TEST_F(OutlineLookTest, ALargeImageIsScaledSmoothlyWhateverItsFormat)
{
    const QTemporaryDir folder;
    QImage lines(2400, 300, QImage::Format_RGB32);
    lines.fill(Qt::black);
    QPainter painter(&lines);
    for (int x = 0; x < lines.width(); x += 3) {
        painter.fillRect(x, 0, 1, lines.height(), Qt::white);
    }
    painter.end();
    for (const QString& name : {u"lines.png"_s, u"lines.jpg"_s, u"lines.bmp"_s}) {
        ASSERT_TRUE(lines.save(folder.filePath(name), nullptr, 100));
        change(2, [&](TreeRow& row) { row.image = folder.filePath(name); });
        const QRect place = tree.placeOf(2);
        const QImage shown = tree.viewport()->grab().toImage();
        int darkest = 255;
        int lightest = 0;
        for (int x = 30; x < tree.viewport()->width() - 30; ++x) {
            const int grey = qGray(shown.pixel(x, place.center().y()));
            darkest = std::min(darkest, grey);
            lightest = std::max(lightest, grey);
        }
        EXPECT_GT(darkest, 60) << name.toStdString();
        EXPECT_LT(lightest, 110) << name.toStdString();
    }
}

TEST_F(OutlineLookTest, AnImageFollowsTheWidthOfTheTree)
{
    const QTemporaryDir folder;
    QImage cover(800, 800, QImage::Format_RGB32);
    cover.fill(Qt::red);
    ASSERT_TRUE(cover.save(folder.filePath(u"cover.png"_s)));
    change(2, [&](TreeRow& row) { row.image = folder.filePath(u"cover.png"_s); });
    const int before = tree.placeOf(2).height();
    tree.resize(300, 300);
    EXPECT_EQ(tree.placeOf(2).height(), before + 100);
}

TEST_F(OutlineLookTest, AFileThatIsNoPictureLeavesARowOfText)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"cover.png"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture");
    file.close();
    const int line = tree.placeOf(2).height();
    change(2, [&](TreeRow& row) { row.image = file.fileName(); });
    EXPECT_EQ(tree.placeOf(2).height(), line);
    EXPECT_TRUE(shows(tree.placeOf(2), ThemeRole::Text));
}

TEST_F(OutlineLookTest, AReaderOfTheScreenHearsTextLevelFoldingAndTick)
{
    tree.setWords({u"Ebene"_s, u"offen"_s, u"zu"_s, u"angehakt"_s, u"ohne Haken"_s});
    change(4, [](TreeRow& row) { row.tick = RowTick::On; });
    tree.setOpen(0, false);
    QAccessibleInterface* const view = QAccessible::queryAccessibleInterface(&tree);
    ASSERT_NE(view, nullptr);
    QAccessibleTableInterface* const table = view->tableInterface();
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->rowCount(), 5);
    const auto said = [&](int line) {
        const QAccessibleInterface* const cell = table->cellAt(line, 0);
        return cell->text(QAccessible::Name) + u": "_s + cell->text(QAccessible::Description);
    };
    EXPECT_EQ(said(0), u"Text a: Ebene 1, zu"_s);
    EXPECT_EQ(said(2), u"Text b1: Ebene 2, offen, angehakt"_s);
    EXPECT_EQ(said(3), u"Text b11: Ebene 3"_s);
    EXPECT_TRUE(table->cellAt(2, 0)->state().checked);
}

} // namespace
} // namespace melovane

#include "platform/linux/id3_cover.h"
#include "platform/linux/linux_files.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "siblings/sleeveviewer/picture_worker.h"
#include "siblings/sleeveviewer/sleeve_pictures.h"
#include "siblings/sleeveviewer/sleeve_viewer.h"
#include "siblings/sleeveviewer/ui/sleeve_stage.h"
#include "siblings/sleeveviewer/ui/sleeve_window.h"
#include "support/accessible_walk.h"
#include "support/temp_folder.h"
#include "support/text_catalogue.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QLabel>
#include <QMap>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct FilledCatalogue : TextCatalogue
{
    FilledCatalogue() { fill(); }
};

/// The window over real pictures and a real worker; this test is library and console.
class SleeveWindowTest : public testing::Test
{
protected:
    SleeveWindowTest()
    {
        QObject::connect(&worker, &PictureWorker::found, &worker,
                         [this](const QStringList& files) { viewer.found(files); });
        QObject::connect(&worker, &PictureWorker::pictureRead, &worker,
                         [this](const ReadPicture& picture) { viewer.pictureRead(picture); });
        changed = [this] { window.refresh(); };
        addTrack(u"1"_s, {u"cover.png"_s, u"back.png"_s, u"disc.png"_s});
        addTrack(u"2"_s, {u"front.png"_s});
        addTrack(u"3"_s, {});
    }

    ~SleeveWindowTest() override
    {
        changed = [] {};
    }

    void addTrack(const QString& fid, const QStringList& names)
    {
        for (const QString& name : names) {
            folder.write(fid + u'/' + name, {});
            QImage image(30 + int(name.size()), 20, QImage::Format_RGB32);
            image.fill(Qt::red);
            ASSERT_TRUE(image.save(folder.file(fid + u'/' + name)));
        }
        library[fid] = {.FID = fid,
                        .title = u"Anna - Lied "_s + fid,
                        .image = fid == u"1"_s ? u"anna"_s : QString(),
                        .audioFile = folder.file(fid + u"/a.mp3"_s)};
    }

    void show()
    {
        window.resize(600, 500);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    [[nodiscard]] QString caption() const
    {
        return window.findChild<QLabel*>(u"lblCaption"_s)->text();
    }

    [[nodiscard]] bool shows(const QString& text)
    {
        return waitFor([&] { return caption() == text; });
    }

    [[nodiscard]] QToolButton* tool(const QString& name) const
    {
        return window.findChild<QToolButton*>(u"tool.viewer."_s + name);
    }

    void press(int key) { QTest::keyClick(&window, Qt::Key(key)); }

    TempFolder folder;
    QMap<QString, SleeveTrack> library;
    QStringList chosen;
    std::function<void()> changed = [] {};
    FilledCatalogue catalogue;
    Skin skin{*qApp};
    IconSet icons{skin};
    PictureWorker worker{[data = folder.path()](const SleeveTrack& track) {
        LinuxFiles files;
        return sleevePictures(files, linux_media::Id3CoverReader(), data, track);
    }};
    SleeveViewer viewer{{.texts = catalogue.texts,
                         .trackByFid = [this](const QString& fid) { return library.value(fid); },
                         .trackByImage =
                             [this](const QString& image) {
                                 return image == u"anna"_s ? library.value(u"1"_s) : SleeveTrack();
                             },
                         .find = [this](const SleeveTrack& track) { worker.find(track); },
                         .read = [this](const QString& file) { worker.read(file); },
                         .choose = [this](const QString& image) { chosen.append(image); },
                         .changed = [this] { changed(); }}};
    SleeveWindow window{viewer, catalogue.texts, skin, icons};
    SleeveStage& stage = *window.findChild<SleeveStage*>(u"Stage"_s);
};

TEST_F(SleeveWindowTest, ItFollowsTheRowOfTheConsole)
{
    show();
    viewer.showFid(u"1"_s);
    EXPECT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s)) << caption().toStdString();
    EXPECT_EQ(window.windowTitle(), u"Anna - Lied 1 - Cover-Ansicht"_s);
    viewer.showFid(u"2"_s);
    EXPECT_TRUE(shows(u"front.png   39 × 20"_s)) << caption().toStdString();
    EXPECT_FALSE(tool(u"next"_s)->isEnabled());
    viewer.showImage(u"anna"_s);
    EXPECT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s)) << caption().toStdString();
}

TEST_F(SleeveWindowTest, WithoutAPictureThereIsNothingToSizeAndWithOneNothingToGoThrough)
{
    show();
    const auto isOn = [this](const QString& command) {
        const bool isTool = tool(command)->isEnabled();
        EXPECT_EQ(window.findChild<QAction*>(u"viewer."_s + command)->isEnabled(), isTool);
        return isTool;
    };
    for (const QString& command : {u"zoomin"_s, u"zoomout"_s, u"fit"_s, u"next"_s, u"previous"_s}) {
        EXPECT_FALSE(isOn(command)) << command.toStdString();
    }
    viewer.showFid(u"2"_s);
    ASSERT_TRUE(shows(u"front.png   39 × 20"_s));
    EXPECT_TRUE(isOn(u"zoomin"_s) && isOn(u"zoomout"_s) && isOn(u"fit"_s));
    EXPECT_FALSE(isOn(u"next"_s) || isOn(u"previous"_s));
    EXPECT_FALSE(window.findChild<QAction*>(u"viewer.last"_s)->isEnabled());
}

TEST_F(SleeveWindowTest, AnotherRunStandsWhereTheLastOneStood)
{
    show();
    window.setGeometry(20, 30, 420, 310);
    const QString place = window.placeText();
    EXPECT_EQ(place, u"20,30,420,310,0"_s);
    SleeveWindow next(viewer, catalogue.texts, skin, icons);
    next.takePlace(place);
    EXPECT_EQ(next.geometry(), QRect(20, 30, 420, 310));
    next.takePlace(u"40,50,420,310,1"_s);
    EXPECT_TRUE(next.isMaximized());
    EXPECT_TRUE(next.placeText().endsWith(u",1"_s));
}

TEST_F(SleeveWindowTest, APlaceThatNoScreenShowsAndADamagedOneAreNotTaken)
{
    window.setGeometry(20, 30, 420, 310);
    for (const QString& text :
         {QString(), u"1,2,3"_s, u"a,b,c,d,e"_s, u"9000,30,420,310,0"_s, u"-400,30,420,310,0"_s,
          u"20,-500,420,310,0"_s, u"20,30,5,310,0"_s, u"20,30,420,0,0"_s, u"20,30,-420,310,0"_s,
          u"2147483647,30,2147483647,310,0"_s, u"20,30,420,310,0,7"_s}) {
        window.takePlace(text);
        EXPECT_EQ(window.geometry(), QRect(20, 30, 420, 310)) << text.toStdString();
    }
}

TEST_F(SleeveWindowTest, ATrackThatGetsACoverShowsItAndCanBeChosen)
{
    show();
    viewer.showFid(u"2"_s);
    ASSERT_TRUE(shows(u"front.png   39 × 20"_s));
    QImage image(50, 50, QImage::Format_RGB32);
    image.fill(Qt::blue);
    folder.write(u"Image/new.jpg"_s, {});
    ASSERT_TRUE(image.save(folder.file(u"Image/new.jpg"_s)));
    library[u"2"_s].image = u"new"_s;
    viewer.showFid(u"2"_s);
    EXPECT_TRUE(shows(u"1 / 2   new.jpg   50 × 50"_s)) << caption().toStdString();
    press(Qt::Key_Right);
    ASSERT_TRUE(shows(u"2 / 2   front.png   39 × 20"_s)) << caption().toStdString();
    viewer.showFid(u"2"_s);
    ASSERT_TRUE(shows(u"2 / 2   front.png   39 × 20"_s)) << "the picture that is looked at stays";
    press(Qt::Key_Return);
    EXPECT_EQ(chosen, QStringList{u"new"_s});
}

TEST_F(SleeveWindowTest, ManyRowsInARowEndAtTheLast)
{
    show();
    for (int i = 0; i < 200; ++i) {
        viewer.showFid(QString::number(1 + i % 2));
    }
    EXPECT_TRUE(shows(u"front.png   39 × 20"_s)) << caption().toStdString();
}

TEST_F(SleeveWindowTest, ArrowsAndButtonsGoThroughThePicturesAndRound)
{
    show();
    viewer.showFid(u"1"_s);
    ASSERT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s));
    press(Qt::Key_Right);
    EXPECT_TRUE(shows(u"2 / 3   back.png   38 × 20"_s)) << caption().toStdString();
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_TRUE(shows(u"3 / 3   disc.png   38 × 20"_s)) << caption().toStdString();
    QTest::mouseClick(tool(u"next"_s), Qt::LeftButton);
    EXPECT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s)) << caption().toStdString();
    press(Qt::Key_End);
    EXPECT_TRUE(shows(u"3 / 3   disc.png   38 × 20"_s)) << caption().toStdString();
    press(Qt::Key_Home);
    EXPECT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s)) << caption().toStdString();
}

TEST_F(SleeveWindowTest, AClickAndEnterChooseTheCoverOfTheTrackWhicheverPictureIsShown)
{
    show();
    viewer.showFid(u"1"_s);
    ASSERT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s));
    QTest::mouseClick(&stage, Qt::LeftButton);
    EXPECT_EQ(chosen, QStringList{u"anna"_s});
    press(Qt::Key_Return);
    EXPECT_EQ(chosen.size(), 2);
    EXPECT_EQ(stage.cursor().shape(), Qt::PointingHandCursor);
    viewer.showFid(u"2"_s);
    ASSERT_TRUE(shows(u"front.png   39 × 20"_s));
    QTest::mouseClick(&stage, Qt::LeftButton);
    QTest::mouseClick(&stage, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_EQ(stage.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(chosen.size(), 2) << "this track has no cover in the library to search for";
}

TEST_F(SleeveWindowTest, PlusMinusAndZeroSizeThePictureAndADraggedOneIsNotChosen)
{
    show();
    viewer.showFid(u"1"_s);
    ASSERT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s));
    press(Qt::Key_Minus);
    EXPECT_DOUBLE_EQ(stage.zoomFactor(), 1);
    for (int i = 0; i < 20; ++i) {
        press(Qt::Key_Plus);
    }
    EXPECT_DOUBLE_EQ(stage.zoomFactor(), 12);
    QTest::mousePress(&stage, Qt::LeftButton, {}, QPoint(300, 200));
    QTest::mouseMove(&stage, QPoint(200, 200));
    QTest::mouseRelease(&stage, Qt::LeftButton, {}, QPoint(200, 200));
    EXPECT_EQ(chosen, QStringList());
    QTest::mouseClick(tool(u"zoomout"_s), Qt::LeftButton);
    EXPECT_LT(stage.zoomFactor(), 12);
    press(Qt::Key_0);
    EXPECT_DOUBLE_EQ(stage.zoomFactor(), 1);
    press(Qt::Key_Plus);
    press(Qt::Key_Right);
    EXPECT_TRUE(shows(u"2 / 3   back.png   38 × 20"_s));
    EXPECT_DOUBLE_EQ(stage.zoomFactor(), 1) << "another picture is shown as a whole";
}

TEST_F(SleeveWindowTest, TheWheelGoesOnAndWithControlItSizes)
{
    show();
    viewer.showFid(u"1"_s);
    ASSERT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s));
    const auto turn = [this](int eighths, Qt::KeyboardModifiers keys) {
        const QPointF middle = QRectF(stage.rect()).center();
        QWheelEvent event(middle, stage.mapToGlobal(middle), {}, {0, eighths}, Qt::NoButton, keys,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&stage, &event);
    };
    turn(-60, {});
    turn(-60, {});
    EXPECT_TRUE(shows(u"2 / 3   back.png   38 × 20"_s)) << caption().toStdString();
    turn(240, Qt::ControlModifier);
    EXPECT_GT(stage.zoomFactor(), 1.5);
}

TEST_F(SleeveWindowTest, F11FillsTheScreenAndEscapeGoesBackThenCloses)
{
    show();
    press(Qt::Key_F11);
    EXPECT_TRUE(window.isFullScreen());
    EXPECT_FALSE(window.findChild<QWidget*>(u"Bar"_s)->isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(window.isFullScreen());
    EXPECT_TRUE(window.findChild<QWidget*>(u"Bar"_s)->isVisible());
    EXPECT_TRUE(window.isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(SleeveWindowTest, AnEmptyStageSaysWhy)
{
    show();
    EXPECT_TRUE(stage.accessibleDescription().startsWith(u"Kein Titel. "_s));
    viewer.showFid(u"3"_s);
    EXPECT_TRUE(
        waitFor([this] { return stage.accessibleDescription().startsWith(u"Kein Bild. "_s); }));
    folder.write(u"3/cover.jpg"_s, "just a text");
    folder.write(u"3/front.jpg"_s, {});
    viewer.showFid(u"3"_s);
    EXPECT_TRUE(waitFor(
        [this] { return stage.accessibleDescription().startsWith(u"Keine Bilddatei. "_s); }));
    EXPECT_EQ(caption(), u"1 / 2   cover.jpg"_s);
    QTest::mouseClick(&stage, Qt::LeftButton);
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(SleeveWindowTest, TheStageHasTheKeyboardAndTabReachesTheTools)
{
    show();
    EXPECT_TRUE(stage.hasFocus());
    viewer.showFid(u"1"_s);
    ASSERT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s));
    press(Qt::Key_Tab);
    EXPECT_TRUE(tool(u"previous"_s)->hasFocus());
}

TEST_F(SleeveWindowTest, ALongNameLeavesTheSizeOnTheScreen)
{
    addTrack(u"4"_s, {QString(150, u'x') + u".png"_s});
    show();
    viewer.showFid(u"4"_s);
    ASSERT_TRUE(waitFor([this] { return caption().endsWith(u" × 20"_s); }));
    const auto* label = window.findChild<QLabel*>(u"lblCaption"_s);
    EXPECT_TRUE(waitFor([&] { return label->width() >= label->sizeHint().width(); }));
    EXPECT_LE(window.minimumSizeHint().width(), 600);
}

TEST_F(SleeveWindowTest, EveryToolHasAWordAndAKey)
{
    const auto tools = window.findChildren<QToolButton*>();
    EXPECT_EQ(tools.size(), 6);
    for (const QToolButton* button : tools) {
        EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
        EXPECT_TRUE(button->toolTip().contains(u'(')) << button->toolTip().toStdString();
        EXPECT_FALSE(button->icon().isNull()) << button->objectName().toStdString();
    }
}

TEST_F(SleeveWindowTest, EveryControlHasANameAndARoleAndIsReachedWithoutAMouse)
{
    show();
    viewer.showFid(u"1"_s);
    EXPECT_TRUE(shows(u"1 / 3   cover.png   39 × 20"_s));
    EXPECT_EQ(walkAccessibly(window).faults().join(u'\n').toStdString(), "");
}

} // namespace
} // namespace melovane::test

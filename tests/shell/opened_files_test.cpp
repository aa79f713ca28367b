#include "bus/message_numbers.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "shell/application_fixture.h"
#include "shell/fakes.h"
#include "shell/opened_files.h"
#include "support/mp3_maker.h"
#include "support/wait_for.h"

#include <QPointer>
#include <QProcess>
#include <QTableView>
#include <QTimer>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class OpenedFilesOfUser : public test::ApplicationTest
{
protected:
    OpenedFilesOfUser()
    {
        suite.library.add({.Titel = u"Brandung"_s});
        suite.library.add({.Titel = u"Mondlicht"_s});
    }

    static QAbstractItemModel* grid(const QMainWindow& window, const QString& name)
    {
        return window.findChild<QTableView*>(name)->model();
    }

    QString song(const QString& title)
    {
        return music.write(title + u".mp3"_s, test::simpleMp3(title, u"Ostwind"_s));
    }

    /// Runs the console until something holds in its window. False when it never did.
    bool runUntil(const std::function<bool(QMainWindow&)>& holds)
    {
        closesWindow = false;
        bool isTrue = false;
        QTimer patience;
        patience.setSingleShot(true);
        QPointer<QMainWindow> shown;
        QObject::connect(&patience, &QTimer::timeout, qApp, [&] { shown->close(); });
        patience.start(test::kLongWaitMs);
        run([&](QMainWindow& window) {
            shown = &window;
            isTrue = isTrue || holds(window);
            if (isTrue) {
                window.close();
            }
        });
        return isTrue;
    }

    test::TempFolder music;
};

TEST_F(OpenedFilesOfUser, ATrackOfTheCallEntersTheLibraryAndIsShownAlone)
{
    calledWith = {song(u"Hafenlicht"_s)};
    EXPECT_TRUE(runUntil(
        [](const QMainWindow& window) { return grid(window, u"TDBGrid1"_s)->rowCount() == 1; }));
    EXPECT_EQ(suite.value(u"select count(*) from db_all"_s).toLong(), 3);
    EXPECT_EQ(suite.value(u"select count(*) from db_all where Titel='Hafenlicht'"_s).toLong(), 1);
}

TEST_F(OpenedFilesOfUser, AListOfTheCallIsImportedAndOpened)
{
    song(u"Hafenlicht"_s);
    song(u"Leuchtturm"_s);
    calledWith = {music.write(u"Abend.M3U"_s, "Hafenlicht.mp3\nLeuchtturm.mp3\n")};
    EXPECT_TRUE(runUntil([](const QMainWindow& window) {
        return grid(window, u"PlaylistGrid1"_s)->rowCount() == 2;
    }));
    EXPECT_EQ(suite.value(u"select count(*) from pl_name where name='Abend'"_s).toLong(), 1);
}

TEST_F(OpenedFilesOfUser, FilesThatAFirstCopyDoesNotTakeAreTold)
{
    const LinuxEnvironment environment(suite.folders.places());
    OnlyCopy first(environment.runtimeFolder(), u"MelovaneDB"_s);
    ASSERT_TRUE(first.claim());
    first.publish(4711); // nobody lives there
    calledWith = {song(u"Hafenlicht"_s)};
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].contains(u"antwortet aber nicht"_s)) << warnings[0].toStdString();
}

/// The program as a second copy; this test is the first one.
class SecondCopy : public test::SuiteFixture
{
protected:
    void SetUp() override { ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_CONSOLE), program())); }

    [[nodiscard]] QString program() const { return suite.file(u"MelovaneDB"_s); }

    /// Both copies meet in a runtime folder of their own.
    [[nodiscard]] QString meetingPlace() const
    {
        EnvironmentPlaces places;
        places.runtimeBase = m_runtime.path();
        return LinuxEnvironment(places).runtimeFolder();
    }

    void start(QProcess& copy, const QStringList& files) const
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, m_runtime.path());
        copy.setProcessEnvironment(environment);
        copy.start(program(), files);
    }

    test::TempFolder m_runtime;
};

TEST_F(SecondCopy, HandsItsFilesToTheFirstAlsoWhileThatIsAtItsStartAndEnds)
{
    const test::TempFolder music;
    LinuxMessages messages{MessagePlace(meetingPlace())};
    const auto control = messages.makeControl();
    QStringList opened;
    control->setMessageText([&opened](qint32 id, qint32, const QString& text) {
        opened += id == message::kOpenFiles ? OpenedFiles::fromText(text) : QStringList();
        return message::kFilesTaken;
    });
    OnlyCopy first(meetingPlace(), u"MelovaneDB"_s);
    ASSERT_TRUE(first.claim());
    QProcess second;
    second.setWorkingDirectory(music.path());
    start(second, {u"it's \"far\" out.mp3"_s, u"/other/b.mp3"_s});
    ASSERT_TRUE(second.waitForStarted(test::kLongWaitMs));
    first.publish(control->handle());
    ASSERT_TRUE(test::waitFor([&] { return second.state() == QProcess::NotRunning; }));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(opened, (QStringList{music.file(u"it's \"far\" out.mp3"_s), u"/other/b.mp3"_s}));
}

TEST_F(SecondCopy, AnOptionThatIsNoneIsAWrongCallAndOpensNothing)
{
    QProcess wrong;
    start(wrong, {u"song.mp3"_s, u"--loud"_s});
    ASSERT_TRUE(wrong.waitForFinished(test::kLongWaitMs));
    EXPECT_EQ(wrong.exitCode(), 2);
}

TEST(OpenedFilesTexts, AnyNumberOfNamesFitsIntoMessagesAndComesBack)
{
    QStringList places;
    for (int i = 0; i < 5000; ++i) {
        places.append(u"/music/\"%1\"\n\\ä\uEFE4/%2.mp3"_s.arg(i).arg(QString(i % 200, u'x')));
    }
    QStringList back;
    const QStringList texts = OpenedFiles::texts(places);
    EXPECT_GT(texts.size(), 1);
    for (const QString& text : texts) {
        EXPECT_LE(text.toUtf8().size(), 65'536);
        back += OpenedFiles::fromText(text);
    }
    EXPECT_EQ(back, places);
    EXPECT_EQ(OpenedFiles::texts({}), QStringList());
}

TEST(OpenedFilesTexts, ATextOfAnythingElseNamesNoFile)
{
    for (const QString& text : {QString(), u"{}"_s, u"[["_s, u"/etc/passwd"_s, u"\0"_s}) {
        EXPECT_EQ(OpenedFiles::fromText(text), QStringList()) << text.toStdString();
    }
}

TEST(OpenedFilesTexts, NothingIsOpenedInTheMiddleOfAnotherWorkNorAPlaceThatIsNone)
{
    test::SteppedLoop loop;
    QStringList opened;
    OpenedFiles files({.loop = loop,
                       .isList = [](const QString&) { return true; },
                       .importLists = [&](const QStringList& lists) { opened += lists; },
                       .tracksOf = [](const QStringList&) { return QStringList(); },
                       .show = [](const QString&) {}});
    loop.nested = true;
    files.open({u"/a.m3u"_s, u"b.m3u"_s, QString()});
    EXPECT_TRUE(loop.fire(50));
    EXPECT_EQ(opened, QStringList());
    loop.nested = false;
    EXPECT_TRUE(loop.fire(50));
    EXPECT_EQ(opened, QStringList{u"/a.m3u"_s});
    EXPECT_FALSE(loop.fire(50)) << "once";
}

} // namespace
} // namespace melovane

#include "shell/console_words.h"

#include "shell/ui/mlvdb_window.h"
#include "support/sounding_mp3.h"
#include "support/wait_for.h"

#include <QComboBox>
#include <QFile>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Programs of the suite that a message starts.
const QStringList kPrograms = {u"beatgauge"_s,       u"SleeveViewer"_s,   u"tagbench"_s,
                               u"LevelPanel"_s,      u"Melovanekiv"_s,    u"mlvconfig"_s,
                               u"mediaintake"_s,     u"Task.WriteTags"_s, u"Task.StorePlaylists"_s,
                               u"Task.RebuildTree"_s};

} // namespace

ConsoleWords::ConsoleWords()
{
    suite.write(u"lied.mp3"_s, soundingMp3({44100, 2, 60, {u"-b"_s, u"128"_s}}));
    tracks = {
        suite.library.add({.Titel = u"Hafen"_s,
                           .Interpret = u"Kaja"_s,
                           .Album = u"Nord"_s,
                           .Path = suite.dataFolder() + u'/',
                           .DName = u"lied.mp3"_s,
                           .DTimeMsec = 60'000}),
        suite.library.add({.Titel = u"Brandung"_s, .Interpret = u"Kaja"_s, .Path = u"/music/"_s}),
        suite.library.add(
            {.Titel = u"Segel"_s, .Interpret = u"Kaja"_s, .Path = u"/music/tief/"_s})};
    group = suite.library.addGroup(u"Freitag"_s);
    main = suite.library.addPlaylist({.Name = u"Hauptset"_s, .GRID = group, .IsPlay = true});
    dance = suite.library.addPlaylist(
        {.Name = u"Tanz"_s, .GRID = group, .tracks = {tracks[2]}, .SID = 1});
    jingles = suite.library.addPlaylist({.Name = u"Kennung"_s, .GRID = -1, .tracks = {tracks[1]}});
    hidden = suite.library.addPlaylist({.Name = u"Alt"_s, .GRID = group, .Activ = false});
    suite.execute(u"insert into tree_dir (Path,Name,rLevel,anzahl,BAnzahl,imgkey,Drive) values "
                  "('/music/tief/','tief',0,1,1,'DIR',2)"_s);
    for (const QString& program : kPrograms) {
        const QString file =
            suite.write(program, "#!/bin/sh\necho \"${0##*/} $*\" >>\"${0%/*}/started.txt\"\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QString runtime = suite.folders.environment().runtimeFolder();
    m_player = std::make_unique<Sibling>(runtime);
    m_messages = std::make_unique<LinuxMessages>(MessagePlace(runtime));
    m_asker = m_messages->makeControl();
    m_asker->setTarget(m_player->handle());
    suite.write(u"melovane.ini"_s,
                "[Message]\nHandle.DJ=" + QByteArray::number(m_player->handle()) +
                    "\n[Global]\nLiveSuche=1\n");
}

void ConsoleWords::inConsole(const std::function<void()>& act)
{
    EXPECT_EQ(run([&](QMainWindow& shown) {
                  window = &shown;
                  ASSERT_TRUE(QTest::qWaitForWindowActive(window, kLongWaitMs));
                  m_sender = std::make_unique<BusSender>(running->bus(), u"Test"_s);
                  const auto listening =
                      running->bus().subscribe([this](const MLVMessage& message) {
                          heard.append(message.Command.toLower());
                          if (heard.last() == "show.statustext"_L1) {
                              said = message.Value1.toText();
                          }
                      });
                  act();
                  m_sender.reset();
              }),
              0);
}

void ConsoleWords::reset()
{
    // What a window manager does when a dialog has gone: nothing loses the keyboard without it.
    window->activateWindow();
    ASSERT_TRUE(waitFor([this] { return window->isActiveWindow(); }));
    suite.execute(u"delete from pl_all where pnid=%1"_s.arg(main));
    for (int sid = 1; sid <= 2; ++sid) {
        suite.execute(
            u"insert into pl_all (PNID,SID,FID) values (%1,%2,'%3')"_s.arg(main).arg(sid).arg(
                tracks[size_t(sid) - 1]));
    }
    suite.execute(
        u"update pl_name set name='Hauptset', lock=false, SID=0 where nid=%1"_s.arg(main));
    suite.execute(u"delete from pl_name where nid not in (%1,%2,%3,%4)"_s.arg(main)
                      .arg(dance)
                      .arg(jingles)
                      .arg(hidden));
    suite.execute(u"delete from pl_group where grid>0 and grid<>%1"_s.arg(group));
    suite.execute(u"update pl_group set name='Freitag' where grid=%1"_s.arg(group));
    suite.execute(u"update db_all set Titel='Hafen', favorit=null, BPM=null, image='/c.jpg' "
                  "where fid='%1'"_s.arg(tracks[0]));
    suite.execute(u"update pl_name set activ=true where nid<>%1"_s.arg(hidden));
    suite.execute(u"update pl_name set activ=false where nid=%1"_s.arg(hidden));
    suite.execute(u"update db_all set DEL=0, PlayCountDay=2"_s);
    suite.execute(u"delete from todo"_s);
    suite.execute(u"delete from tree_album"_s);
    suite.write(u"started.txt"_s, {});
    send(u"refresh.all"_s);
    send(u"playlist.aktivieren"_s, {main, false});
    send(u"db.change"_s);
    send(u"player.monitor.play.stop"_s);
    showKind(u"tree.dir"_s);
    search(u"Kaja"_s);
    ASSERT_EQ(titles(library()).split(u' ').size(), 3);
    library().goToRow(0, 0);
    list().goToRow(0, 0);
    lists().setCurrentRow(lists().find(keyOf(u"Hauptset"_s)));
    static_cast<MlvdbWindow*>(window)->status().setPanel(StatusPanel::Message, {});
    static_cast<void>(dialogs.take());
    heard.clear();
    m_seenBefore = numbersOfPlayer();
}

void ConsoleWords::send(const QString& name, const Values& values)
{
    m_sender->SendMessage(name, values[0], values[1], values[2], values[3]);
}

DataGrid& ConsoleWords::library() const
{
    return *window->findChild<DataGrid*>(u"TDBGrid1"_s);
}

DataGrid& ConsoleWords::list() const
{
    return *window->findChild<DataGrid*>(u"PlaylistGrid1"_s);
}

OutlineTree& ConsoleWords::lists() const
{
    return *window->findChild<OutlineTree*>(u"PlaylistTree"_s);
}

TreeWidget& ConsoleWords::tree() const
{
    return *window->findChild<TreeWidget*>(u"Tree1"_s);
}

QWidget& ConsoleWords::view(const QString& name) const
{
    return *window->findChild<QWidget*>(name);
}

QString ConsoleWords::status(StatusPanel panel) const
{
    return static_cast<MlvdbWindow*>(window)->status().panel(panel);
}

QString ConsoleWords::titles(const DataGrid& grid)
{
    QStringList result;
    for (int row = 0; row < grid.model()->rowCount(); ++row) {
        result.append(grid.model()->index(row, grid.columnOf(u"Titel"_s)).data().toString());
    }
    return result.join(u' ');
}

QString ConsoleWords::texts(const OutlineTree& tree)
{
    QStringList result;
    for (int row = 0; row < tree.rowCount(); ++row) {
        result.append(tree.row(row).text.trimmed());
    }
    return result.join(u'|');
}

TreeRow ConsoleWords::rowOf(const OutlineTree& tree, const QString& text)
{
    for (int row = 0; row < tree.rowCount(); ++row) {
        if (tree.row(row).text.startsWith(text)) {
            return tree.row(row);
        }
    }
    return {};
}

QString ConsoleWords::keyOf(const QString& text) const
{
    return rowOf(lists(), text).key;
}

QToolButton& ConsoleWords::tool(const QString& name, const QString& key) const
{
    const QList<QToolButton*> found = view(name).findChildren<QToolButton*>(key);
    EXPECT_EQ(found.size(), 1) << name.toStdString() << ' ' << key.toStdString();
    return *found.value(0);
}

qint64 ConsoleWords::count(const QString& fromWhere)
{
    return suite.value(u"select count(*) from "_s + fromWhere).toLong();
}

QString ConsoleWords::entry(int sid)
{
    return suite.value(u"select PLID from pl_all where pnid=%1 and sid=%2"_s.arg(main).arg(sid))
        .toText();
}

bool ConsoleWords::wasStarted(const QString& line) const
{
    return waitFor([&] {
        return QString::fromUtf8(suite.read(u"started.txt"_s)).split(u'\n').contains(line);
    });
}

qint32 ConsoleWords::numbersOfPlayer()
{
    return ask(sibling::kSeen);
}

qint32 ConsoleWords::ask(qint32 number, qint32 wParam)
{
    return m_asker->Send(number, wParam, 0);
}

bool ConsoleWords::playerGot(qint32 number)
{
    return waitFor([&] {
        const qint32 seen = ask(sibling::kSeen);
        for (qint32 index = m_seenBefore; index < seen; ++index) {
            if (ask(sibling::kSeenId, index) == number) {
                return true;
            }
        }
        return false;
    });
}

void ConsoleWords::search(const QString& text) const
{
    auto* line = window->findChild<QComboBox*>(u"Text1"_s)->lineEdit();
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
}

void ConsoleWords::showKind(const QString& key) const
{
    tool(u"Tree1"_s, key).click();
}

} // namespace melovane::test

// The list of all message names with the views that act on each, row by row.
#include "bus/bus_table.h"
#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

enum Handler : unsigned
{
    kLibrary = 1,
    kPlaylist = 2,
    kTree = 4,
    kLists = 8,
    kTags = 16,
    kWindow = 32
};

struct VocabularyRow
{
    QStringView name;
    unsigned handlers;
};

/// As the programs of the suite share it: keep, names in the letter case of their senders.
constexpr std::array kVocabulary = std::to_array<VocabularyRow>({
    {u"all.db.append", kLibrary},
    {u"all.db.append.aktuell", kLibrary},
    {u"all.db.insert", kLibrary},
    {u"all.db.insert.aktuell", kLibrary},
    {u"all.volume", kPlaylist | kLibrary},
    {u"autosize.mp3db", kLibrary},
    {u"autosize.playlist", kPlaylist},
    {u"bpm.find.fid", kLibrary},
    {u"beatgauge.bpm", kPlaylist},
    {u"beatgauge.playlist.fid.auto", kWindow},
    {u"beatgauge.playlist.fid.manuell", kWindow},
    {u"change.config", kLibrary},
    {u"context.click.row", kLibrary},
    {u"context.show.dir", kTree | kLibrary},
    {u"sleeveviewer.click.image", kLibrary},
    {u"create.toolbars", kPlaylist | kLists | kTree | kLibrary},
    {u"db.beatgauge.menu.click", kLibrary},
    {u"db.beatgauge.menu.manuell.click", kLibrary},
    {u"db.change", kPlaylist | kLibrary},
    {u"db.disconnect", kPlaylist | kLibrary},
    {u"db.reconnect", kPlaylist | kLibrary},
    {u"db.refresh.by.fid", kPlaylist | kTree | kLibrary},
    {u"db.set.favorit", kLibrary},
    {u"dj.player.play.next", kWindow},
    {u"dj.player.play.sofort", kWindow},
    {u"editbox.add.new.genre", kTags},
    {u"edittag.show.editbox.new.genre", kWindow},
    {u"favorit.refresh", kLists | kWindow},
    {u"fill.temp.edit.table", kPlaylist | kLibrary},
    {u"info.from.fid", kTree | kLibrary | kTags},
    {u"Info.From.FID", kLibrary},
    {u"Jingle.Player.Set.Volume", kPlaylist},
    {u"jinglelist.aktivieren", kPlaylist},
    {u"load.layout.change.mp3db", kLibrary},
    {u"load.layout.change.playlist", kPlaylist},
    {u"load.layout.mp3db", kLibrary},
    {u"load.layout.playlist", kPlaylist},
    {u"mixstyle.all.copy", kPlaylist},
    {u"mixstyle.all.del", kPlaylist},
    {u"player.monitor.play.center", kWindow},
    {u"player.monitor.play.start", kWindow},
    {u"player.monitor.play.stop", kWindow},
    {u"player.monitor.seek", kWindow},
    {u"player.monitor.seek.set", kWindow},
    {u"playlist.aktivieren", kPlaylist},
    {u"playlist.all.db.append.aktuell.data", kPlaylist},
    {u"playlist.all.db.append.data", kPlaylist},
    {u"playlist.all.db.insert.data", kPlaylist},
    {u"playlist.append.data", kPlaylist},
    {u"playlist.beatgauge.menu.click", kPlaylist},
    {u"playlist.beatgauge.menu.manuell.click", kPlaylist},
    {u"playlist.change", kPlaylist | kLists | kWindow},
    {u"playlist.eigenschaften", kLists},
    {u"playlist.insert.data", kPlaylist},
    {u"playlist.insert.data.end", kPlaylist | kLists | kWindow},
    {u"playlist.jingle.loop", kPlaylist},
    {u"playlist.jingle.play", kPlaylist},
    {u"playlist.reset", kPlaylist},
    {u"playlist.save.file", kLists},
    {u"playlist.save.file.show", kLists | kWindow},
    {u"playlist.set.lock", kPlaylist | kTree},
    {u"playlist.set.play.loop", kPlaylist},
    {u"playlist.set.play.normal", kPlaylist},
    {u"playlist.set.play.stop", kPlaylist},
    {u"print.send.commands", kPlaylist | kLibrary},
    {u"refresh.all", kLists | kTree},
    {u"refresh.playlist", kPlaylist | kLists | kTree},
    {u"refresh.playlist.plid", kPlaylist},
    {u"refresh.playlist.tree", kLists | kTree | kWindow},
    {u"refresh.tree", kTree | kWindow},
    {u"refresh.tree.album", kWindow},
    {u"refresh.tree.dir", kWindow},
    {u"refresh.tree.genre", kWindow},
    {u"refresh.tree.interpret", kWindow},
    {u"run.proc", kWindow},
    {u"save.layout.mp3db", kLibrary},
    {u"save.layout.playlist", kPlaylist},
    {u"show.melovane.kiv", kPlaylist | kLibrary},
    {u"show.context.menu.mp3db", kWindow},
    {u"show.context.menu.playlist", kWindow},
    {u"show.gridlayout", kWindow},
    {u"show.statustext", kWindow},
    {u"show.tagedit.mp3db", kWindow},
    {u"show.tagedit.playlist", kWindow},
    {u"show.tageditor", kWindow},
    {u"tree.click.row", kLibrary | kWindow},
    {u"update.color", kPlaylist | kLists | kTree | kLibrary},
    {u"update.group.name", kLists | kTree},
    {u"update.playlist.name", kLists},
    {u"update.sort.playlist", kTree},
    {u"update.tolltip.text", kPlaylist | kTree | kLibrary},
    {u"update.tree.row", kLists | kTree | kWindow},
    {u"volume.monitor.change.icon", kPlaylist | kLibrary},
    {u"volume.monitor.show", kWindow},
});

/// What a view that the list names has nothing to do for, and why.
struct Exception
{
    QStringView name;
    unsigned handlers;
    QStringView reason;
};

constexpr std::array kNothingToDo = std::to_array<Exception>({
    {u"all.volume", kPlaylist | kLibrary,
     u"the tool button of that key, which each view answers itself"},
    {u"Jingle.Player.Set.Volume", kPlaylist, u"the player and its level panel"},
    {u"playlist.change", kPlaylist, u"its sender, whose rows are changed already"},
    {u"playlist.insert.data.end", kPlaylist, u"its sender, whose insert has returned"},
    {u"playlist.insert.data.end", kWindow,
     u"an insert is over when its message returns: nothing waits"},
    {u"playlist.jingle.loop", kPlaylist, u"the player; here the tool button of that key"},
    {u"playlist.jingle.play", kPlaylist, u"the player"},
    {u"playlist.save.file.show", kLists, u"its sender"},
    {u"print.send.commands", kPlaylist | kLibrary,
     u"who looks for a fault; the views here print nothing"},
    {u"refresh.tree", kWindow, u"its sender"},
});

struct HandlerFile
{
    Handler handler;
    QString file; ///< below src/, with the table of the view
};

const std::array<HandlerFile, 6> kFiles = {{
    {kLibrary, u"library/mp3db_messages.cpp"_s},
    {kPlaylist, u"playlistview/playlist_messages.cpp"_s},
    {kTree, u"trees/tree_messages.cpp"_s},
    {kLists, u"trees/playlist_favorit.cpp"_s},
    {kTags, u"trackedit/edit_tag.cpp"_s},
    {kWindow, u"shell/window_messages.cpp"_s},
}};

QString sourceOf(const QString& file)
{
    QFile source(QString::fromUtf8(MLV_SOURCE_ROOT) + u'/' + file);
    EXPECT_TRUE(source.open(QIODevice::ReadOnly)) << file.toStdString();
    return QString::fromUtf8(source.readAll());
}

/// The constant of a name; empty for one that the program does not know.
QString constantOf(const QString& names, QStringView name)
{
    const QRegularExpression form(
        u"QStringView (k\\w+) =\\s*u\"%1\""_s.arg(QRegularExpression::escape(name.toString())),
        QRegularExpression::CaseInsensitiveOption);
    return form.match(names).captured(1);
}

bool isException(QStringView name, Handler handler)
{
    return std::any_of(kNothingToDo.begin(), kNothingToDo.end(), [&](const Exception& each) {
        return each.name.compare(name, Qt::CaseInsensitive) == 0 && (each.handlers & handler) != 0;
    });
}

/// "playlist.change" as "pLaYlIsT.cHaNgE".
QString mixedCase(QStringView name)
{
    QString result = name.toString();
    for (qsizetype i = 0; i < result.size(); ++i) {
        result[i] = i % 2 == 0 ? result[i].toLower() : result[i].toUpper();
    }
    return result;
}

TEST(Vocabulary, EachNameIsActedOnByTheViewsOfItsRowOrSaysWhyNot)
{
    EXPECT_EQ(kVocabulary.size(), 94U);
    const QString names = sourceOf(u"bus/message_names.h"_s);
    int handled = 0;
    for (const HandlerFile& view : kFiles) {
        const QString table = sourceOf(view.file);
        for (const VocabularyRow& row : kVocabulary) {
            if ((row.handlers & view.handler) == 0) {
                continue;
            }
            const QString constant = constantOf(names, row.name);
            EXPECT_FALSE(constant.isEmpty()) << row.name.toString().toStdString();
            const bool acts = table.contains(u"{bus::"_s + constant + u',');
            EXPECT_NE(acts, isException(row.name, view.handler))
                << row.name.toString().toStdString() << " in " << view.file.toStdString();
            handled += acts ? 1 : 0;
        }
    }
    EXPECT_GT(handled, 100);
}

TEST(Vocabulary, NoExceptionIsOfANameThatTheListDoesNotHold)
{
    for (const Exception& each : kNothingToDo) {
        const bool isKnown =
            std::any_of(kVocabulary.begin(), kVocabulary.end(), [&](const VocabularyRow& row) {
                return row.name.compare(each.name, Qt::CaseInsensitive) == 0 &&
                       (row.handlers & each.handlers) == each.handlers;
            });
        EXPECT_TRUE(isKnown) << each.name.toString().toStdString();
        EXPECT_FALSE(each.reason.isEmpty());
    }
}

/// Counts what reaches it.
struct Counter
{
    void count(const MLVMessage& message) { heard.append(message.Command); }

    QStringList heard;
};

TEST(Vocabulary, EachNameReachesItsRowInAnyLetterCase)
{
    test::SuiteFolders folders;
    const test::FakeClock clock;
    const ConfigObjects texts(folders.paths(), folders.profile(), folders.files());
    const std::unique_ptr<GlobalSettings> settings = folders.makeSettings();
    MLVMessageBus messages(folders.paths(), folders.files(), clock);
    BusSender sender(messages, u"Test"_s);
    const EventGuard guard = guardOverBus(sender, texts, *settings, {});
    for (const VocabularyRow& row : kVocabulary) {
        const BusRow<Counter> table[] = {{row.name, &Counter::count}};
        Counter counter;
        const auto listening = subscribe<Counter>(messages, guard, counter, table);
        for (const VocabularyRow& sent : kVocabulary) {
            sender.SendMessage(mixedCase(sent.name));
        }
        // A name of the list stands in it twice, in two letter cases.
        for (const QString& heard : counter.heard) {
            EXPECT_EQ(heard.compare(row.name, Qt::CaseInsensitive), 0);
        }
        EXPECT_GE(counter.heard.size(), 1) << row.name.toString().toStdString();
        EXPECT_LE(counter.heard.size(), 2) << row.name.toString().toStdString();
    }
}

} // namespace
} // namespace melovane

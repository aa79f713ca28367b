// list_exchange write FOLDER   makes music and a library, writes two lists of it
// list_exchange read LIST...    reads lists into an empty library
//
// The suite's side of tools/prove_list_exchange.sh. Ends with 0 when each list gave all tracks.

#include "intake/dropped_tracks.h"
#include "platform/linux/tag_reader.h"
#include "playlistfiles/mlv_m3u.h"
#include "playlists/list_fixture.h"
#include "support/mp3_maker.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdio>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

/// Signs that lists stumble over.
const QStringList kNames{u"Müller - Grüße.mp3"_s, u"It's \"live\".mp3"_s, u"100% [x] #1.mp3"_s,
                         u"日本.mp3"_s,           u"a & b (c).mp3"_s,     u"plain.mp3"_s};

struct Machine
{
    Machine() { lists.settings->WriteKeyValue(u"Global"_s, kHistorySetting.toString(), u"0"_s); }

    Lists lists;
    std::unique_ptr<TagReader> reader = linux_media::makeTagReader();
    MlvM3U m3u{{*lists.engine,
                *lists.settings,
                lists.files,
                lists.locator,
                *reader,
                lists.clock,
                lists.history,
                lists.snapshots,
                {lists.dataFolder()}}};
};

int write(const QString& folder)
{
    const QString music = folder + u"/Musik"_s;
    QDir().mkpath(music);
    for (const QString& name : kNames) {
        QFile file(music + u'/' + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(simpleMp3(name, u"Artist"_s)) <= 0) {
            return 1;
        }
    }
    Machine machine;
    Lists& lists = machine.lists;
    const QStringList fids =
        DroppedTracks(*lists.engine, *lists.settings, lists.files, *machine.reader, lists.clock)
            .take({music})
            .fids;
    const auto list = Pnid(lists.library.addPlaylist({.Name = u"ours"_s, .tracks = fids}));
    QString full = folder + u"/ours.m3u"_s;
    QString relative = music + u"/ours-relative.m3u"_s;
    return machine.m3u.SavePlaylist(list, full, false, {}) &&
                   machine.m3u.SavePlaylist(list, relative, true, {})
               ? 0
               : 1;
}

bool read(const QString& list)
{
    Machine machine;
    machine.m3u.events.Message = [](int code, const QString& file, const QString&) {
        std::printf("  %d %s\n", code, qUtf8Printable(file));
    };
    const int failures = machine.m3u.LoadPlaylist(list);
    const QStringList found =
        machine.lists.column(u"select distinct DName from TEMP_PLImportM3U"_s);
    std::printf("%s: %d entries, %d failures\n", qUtf8Printable(list), machine.m3u.loaded(),
                failures);
    return failures == 0 && machine.m3u.loaded() == kNames.size() && found.size() == kNames.size();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == "write"_L1) {
        return write(arguments[2]);
    }
    bool all = arguments.size() > 2 && arguments[1] == "read"_L1;
    for (qsizetype i = 2; i < arguments.size(); ++i) {
        all = read(arguments[i]) && all;
    }
    return all ? 0 : 1;
}

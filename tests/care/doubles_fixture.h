#pragma once

#include "care/doubles.h"
#include "config/global_settings.h"
#include "platform/linux/audio_identity.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "playlists/list_history.h"
#include "support/held_worker.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"

#include <QFile>

namespace melovane::test {

/// A library with real files of which some are the same.
class DoubleMusic : public SuiteFixture
{
protected:
    static constexpr int kFrames = 200;

    DoubleMusic() { settings->SetDbName(suite.dbName()); }

    /// A row with a real file of that sound.
    QString add(const QString& name, quint32 sound, const QString& title = QStringLiteral("Titel"))
    {
        const QByteArray bytes = demomusic::Id3v2Writer().text("TIT2", title + name).tag() +
                                 demomusic::variableStream({}, kFrames, sound);
        music.write(name, bytes);
        return addRow(name, title, millisecondsOf(kFrames), int(bytes.size()));
    }

    QString addRow(const QString& name, const QString& title, int milliseconds, int size = 1000)
    {
        return suite.library.add({.Titel = title,
                                  .Interpret = QStringLiteral("Wer"),
                                  .Path = music.path() + u'/',
                                  .DName = name,
                                  .DLen = size,
                                  .DTimeMsec = milliseconds});
    }

    void search(unsigned kinds)
    {
        doubles.search(kinds);
        worker.finish();
        ASSERT_EQ(doubles.failure(), QString());
    }

    void keep(const QString& fid)
    {
        for (size_t group = 0; group < doubles.groups().size(); ++group) {
            const auto& tracks = doubles.groups()[group].tracks;
            for (size_t track = 0; track < tracks.size(); ++track) {
                if (tracks[track].fid == fid) {
                    doubles.keep(int(group), int(track));
                }
            }
        }
    }

    [[nodiscard]] QStringList fids()
    {
        return suite.column(QStringLiteral("select FID from db_all order by FID"));
    }

    [[nodiscard]] Value cell(const QString& fid, const QString& column)
    {
        return suite.value(QStringLiteral("select %1 from db_all where FID='%2'").arg(column, fid));
    }

    TempFolder music;
    TempFolder home;
    HeldWorker worker;
    linux_media::LinuxAudioIdentity audio;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    ListHistory history{*suite.engine, suite.files, suite.clock, *settings, {}};
    Doubles doubles{
        {.engine = *suite.engine,
         .history = history,
         .settings = *settings,
         .files = suite.files,
         .audio = audio,
         .worker = worker,
         .makeEngine = [this] { return sqlite::makeEngine(suite.clock); },
         .recycler = {.makeFiles = [] { return std::make_unique<LinuxFiles>(); },
                      .clock = suite.clock,
                      .dataFolder = suite.dataFolder(),
                      .homeFolder = home.path(),
                      .systemName = [](const QString& file) { return QFile::encodeName(file); }}}};
};

} // namespace melovane::test

#pragma once

#include "care/find_again.h"
#include "config/global_settings.h"
#include "platform/linux/audio_identity.h"
#include "platform/linux/tag_reader.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "playlists/list_history.h"
#include "siblings/demomusic/mp3_frames.h"
#include "support/held_worker.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"

namespace melovane::test {

/// A library whose music has moved: the rows stand at places below `old`, which is not there, real
/// files lie below `music`.
class MovedMusic : public SuiteFixture
{
protected:
    static constexpr int kFrames = 200;

    MovedMusic() { settings->SetDbName(suite.dbName()); }

    /// A file of a sound of its own.
    [[nodiscard]] static QByteArray
    mp3(quint32 sound, const QString& fid = {}, int frames = kFrames)
    {
        demomusic::Id3v2Writer tag;
        tag.text("TIT2", QStringLiteral("Titel"));
        if (!fid.isEmpty()) {
            tag.userText(QStringLiteral("FID"), fid);
        }
        return tag.tag() + demomusic::variableStream({}, frames, sound);
    }

    /// A missing row of a file of that many bytes.
    QString addRow(const QString& place, qint64 bytes, int del = 2, int frames = kFrames)
    {
        const qsizetype name = place.lastIndexOf(QChar(u'/')) + 1;
        return suite.library.add({.Titel = place.mid(name),
                                  .Path = old + place.left(name),
                                  .DName = place.mid(name),
                                  .DLen = int(bytes),
                                  .DTimeMsec = millisecondsOf(frames),
                                  .DEL = del});
    }

    /// A missing row whose file lies below `music` now.
    QString addMoved(const QString& place, const QString& now, quint32 sound)
    {
        const QByteArray bytes = mp3(sound);
        music.write(now, bytes);
        return addRow(place, bytes.size());
    }

    void load()
    {
        find.load();
        worker.finish();
    }

    void search(const QString& folder)
    {
        find.search(folder);
        worker.finish();
    }

    [[nodiscard]] QString cell(const QString& fid, const QString& column)
    {
        return suite.value(QStringLiteral("select %1 from db_all where FID='%2'").arg(column, fid))
            .toText();
    }

    [[nodiscard]] QString placeOf(const QString& fid)
    {
        return cell(fid, QStringLiteral("Path")) + cell(fid, QStringLiteral("DName"));
    }

    TempFolder music;
    QString old = QStringLiteral("/media/alt/Musik/");
    HeldWorker worker;
    linux_media::LinuxTagReader reader;
    linux_media::LinuxAudioIdentity audio;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    ListHistory history{*suite.engine, suite.files, suite.clock, *settings, {}};
    LinuxFiles searchFiles;
    QHash<QString, AudioPrint> kept; ///< by identifier
    FindAgain find{{.engine = *suite.engine,
                    .history = history,
                    .settings = *settings,
                    .files = suite.files,
                    .searchFiles = searchFiles,
                    .reader = reader,
                    .audio = audio,
                    .worker = worker,
                    .makeEngine = [this] { return sqlite::makeEngine(suite.clock); },
                    .dataFolder = suite.dataFolder(),
                    .kept = [this](const QString& fid) -> std::optional<AudioPrint> {
                        const auto found = kept.constFind(fid);
                        return found == kept.cend() ? std::nullopt : std::optional(*found);
                    }}};
};

} // namespace melovane::test

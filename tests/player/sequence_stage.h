#pragma once

#include "player/air_sequence.h"
#include "player/jingle_decks.h"
#include "player/playing_list.h"
#include "player/silent_engine.h"
#include "playlists/list_fixture.h"

namespace melovane::test {

/// A playing list of tracks of ten seconds that mix within two, and the sequence that plays it.
class SequenceStage : public Lists
{
public:
    explicit SequenceStage(
        std::unique_ptr<StageEngine> engineToUse = std::make_unique<SilentEngine>())
        : ownEngine(std::move(engineToUse))
    {}

    /// A track whose file is there; number counts from 1.
    void addTrack(int number)
    {
        const QString name = QStringLiteral("t%1.mp3").arg(number);
        engineOfStage.lengths[write(name, "x")] = kTrackMs;
        NewTrack track;
        track.FID = fid(number);
        track.Path = dataFolder() + u'/';
        track.DName = name;
        track.DTimeMsec = kTrackMs;
        library.add(track);
    }

    /// The playing list, of so many tracks of its own.
    void addPlaying(int tracks)
    {
        QList<int> positions;
        for (int number = 1; number <= tracks; ++number) {
            addTrack(number);
            positions.append(number);
        }
        list = addList(positions);
        execute(QStringLiteral("update pl_name set isplay=true where nid=%1").arg(numberOf(list)));
        execute(QStringLiteral("update pl_all set mixtime=2000, framestart=0, framestop=0"));
        noteEntries();
        sequence.listChanged();
    }

    /// Has told() know the tracks of all entries.
    void noteEntries()
    {
        const QStringList entries = column(QStringLiteral("select plid from pl_all order by plid"));
        const QStringList tracks = column(QStringLiteral("select fid from pl_all order by plid"));
        for (qsizetype row = 0; row < entries.size(); ++row) {
            m_tracks[entries[row].toInt()] = tracks[row].right(4).toInt();
        }
    }

    /// "update pl_all set ..." of the entry of a track, seen by the sequence at once.
    void edit(int track, const QString& change)
    {
        execute(QStringLiteral("update pl_all set %1 where fid='%2'").arg(change, fid(track)));
        sequence.listChanged();
    }

    void run(int ms)
    {
        for (int passed = 0; passed < ms; ++passed) {
            engineOfStage.tick();
            if (engineOfStage.now % 50 == 0) {
                sequence.advance();
            }
        }
    }

    /// Tracks that have begun, "1 2 3"; those of jingle decks with a "j".
    [[nodiscard]] QString heard() const
    {
        QStringList tracks;
        for (const auto& one : engineOfStage.heard) {
            QString name = one.sound.file.section(u'/', -1).section(u'.', 0, 0).mid(1);
            tracks.append(one.deck > AirDeck::B ? u'j' + name : name);
        }
        return tracks.join(u' ');
    }

    /// Milliseconds at which the deck of each began.
    [[nodiscard]] QList<qint64> begun() const
    {
        QList<qint64> times;
        for (const auto& one : engineOfStage.heard) {
            times.append(one.atMs);
        }
        return times;
    }

    /// Number of an entry's track; 0 for none.
    [[nodiscard]] int trackOf(Plid entry) const { return m_tracks.value(int(numberOf(entry))); }

    static constexpr int kTrackMs = 10'000;

    Pnid list{};
    AirSettings options;
    QStringList told;    ///< "playing>next", as tracks
    QStringList played;  ///< FIDs
    QStringList leftOut; ///< FIDs
    std::unique_ptr<StageEngine> ownEngine;
    StageEngine& engineOfStage = *ownEngine;
    /// Called for each play, behind the note of it.
    std::function<void(const MlvPlaylistDetail&)> onPlayed = [](const MlvPlaylistDetail&) {};
    PlayingList playing{parts};
    JingleDecks jingleDecks{engineOfStage, [this] { return options; }};
    AirSequence sequence{{.list = playing,
                          .engine = engineOfStage,
                          .jingles = jingleDecks,
                          .settings = [this] { return options; },
                          .told =
                              [this](Plid now, Plid next) {
                                  told.append(
                                      QStringLiteral("%1>%2").arg(trackOf(now)).arg(trackOf(next)));
                              },
                          .played =
                              [this](const MlvPlaylistDetail& entry) {
                                  played.append(entry.FID);
                                  onPlayed(entry);
                              },
                          .leftOut = [this](const MlvPlaylistDetail& entry,
                                            AirFault) { leftOut.append(entry.FID); }}};

private:
    QHash<int, int> m_tracks; ///< by PLID
};

} // namespace melovane::test

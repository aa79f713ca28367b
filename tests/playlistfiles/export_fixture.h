#pragma once

#include "platform/system/timers.h"
#include "playlistfiles/export_run.h"
#include "store/file_locator.h"
#include "support/suite_fixture.h"

namespace melovane::test {

/// A message loop in which something may happen at every turn.
class EventfulLoop : public MessageLoop
{
public:
    [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds,
                                                   std::function<void()>) override
    {
        return nullptr;
    }

    void turn() override
    {
        ++turns;
        if (onTurn) {
            onTurn();
        }
    }

    int turns = 0;
    std::function<void()> onTurn;
};

/// Files on a volume that can be small or break.
class LimitedFiles : public LinuxFiles
{
public:
    [[nodiscard]] std::optional<VolumeSpace> space(const QString& path) const override
    {
        return free ? VolumeSpace{*free, 4096} : LinuxFiles::space(path);
    }

    [[nodiscard]] bool
    copyInSteps(const QString& source, const QString& target, const CopyStep& step) override
    {
        if (!broken.isEmpty() && target.contains(broken)) {
            throw IoError(target, QStringLiteral("No space left on device"));
        }
        return LinuxFiles::copyInSteps(source, target, step);
    }

    [[nodiscard]] std::optional<FileFacts> facts(const QString& path) const override
    {
        const bool folds = !foldsCaseBelow.isEmpty() && path.startsWith(foldsCaseBelow);
        auto found = LinuxFiles::facts(folds ? resolve(path.toLower()) : path);
        if (found && identify) {
            identify(path, *found);
        }
        return found;
    }

    std::optional<qint64> free;
    QString foldsCaseBelow; ///< names in this folder that differ in case alone are one file
    std::function<void(const QString& path, FileFacts&)>
        identify;   ///< gives a file another identity
    QString broken; ///< targets with this in their path cannot be written
};

/// A suite with real files under the tracks, and a folder to export to.
class ExportFixture : public testing::Test
{
protected:
    ExportFixture()
    {
        files.makeFolders(music);
        files.makeFolders(target);
    }

    /// A track whose file holds `bytes`; named values as in NewTrack.
    QString addTrack(NewTrack track, const QByteArray& bytes = "sound")
    {
        track.Path = music + QChar(u'/');
        if (track.DName.isEmpty()) {
            track.DName = track.Titel + QStringLiteral(".mp3");
        }
        files.writeWhole(music + QChar(u'/') + track.DName, bytes);
        return suite.library.add(track);
    }

    void setTrackNumber(const QString& fid, const QString& number) const
    {
        suite.execute(
            QStringLiteral("update db_all set Track='%1' where fid='%2'").arg(number, fid));
    }

    int addList(const QStringList& tracks, const QString& name = QStringLiteral("Hauptset"))
    {
        list = Pnid(suite.library.addPlaylist({.Name = name, .tracks = tracks}));
        return int(numberOf(list));
    }

    ExportResult run(const QString& pathTemplate)
    {
        progress.clear();
        return exporter.run({list, target, pathTemplate, withData});
    }

    /// All files below the target folder, sorted, lists left out.
    [[nodiscard]] QStringList copies(const QString& folder = {}) const
    {
        QStringList result;
        for (const QString& name : files.names(target + QChar(u'/') + folder)) {
            const QString place = folder.isEmpty() ? name : folder + QChar(u'/') + name;
            if (files.folderExists(target + QChar(u'/') + place)) {
                result += copies(place);
            } else if (!name.endsWith(QStringLiteral(".m3u"))) {
                result += place;
            }
        }
        return result;
    }

    [[nodiscard]] QByteArray readCopy(const QString& relative) const
    {
        return files.read(target + QChar(u'/') + relative, 1 << 26);
    }

    [[nodiscard]] QByteArray readTrack(const QString& name) const
    {
        return files.read(music + QChar(u'/') + name, 1 << 26);
    }

    /// The path lines of the list file.
    [[nodiscard]] QStringList listed(const QString& name = QStringLiteral("Hauptset.m3u")) const
    {
        QStringList paths;
        for (const QByteArray& line : readCopy(name).split('\n')) {
            if (!line.startsWith('#') && !line.trimmed().isEmpty()) {
                paths.append(QString::fromUtf8(line).remove(QChar(u'\r')));
            }
        }
        return paths;
    }

    Suite suite;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    LimitedFiles files;
    FileLocator locator{files, suite.dataFolder()};
    EventfulLoop loop;
    QString music = suite.dataFolder() + QStringLiteral("/Musik");
    QString target = suite.dataFolder() + QStringLiteral("/Stick");
    Pnid list{};
    bool withData = true;
    QStringList progress; ///< "name position/count"
    ExportParts parts{*suite.engine, *settings, files, locator, loop};
    SavePlaylistFiles exporter{parts, [this](const QString& name, qint64 at, qint64 count) {
                                   progress.append(
                                       QStringLiteral("%1 %2/%3").arg(name).arg(at).arg(count));
                               }};
};

} // namespace melovane::test

#pragma once

#include "platform/linux/tag_reader.h"
#include "playlistfiles/mlv_m3u.h"
#include "playlists/list_fixture.h"
#include "support/mp3_maker.h"

namespace melovane::test {

/// A suite with lists, music in a folder of its own, and what reads and writes list files.
class M3uTest : public testing::Test
{
protected:
    M3uTest()
    {
        m3u.events.Message = [this](int code, const QString& file, const QString& source) {
            told.append(QStringLiteral("%1 %2 %3").arg(code).arg(source, file));
        };
        m3u.events.RtError = [this](int code, const QString& text, const QString& source) {
            told.append(QStringLiteral("%1 %2 ! %3").arg(code).arg(source, text));
        };
    }

    /// Writes a file of half a second into the music folder and returns its path.
    QString addFile(const QString& name, const QString& fid = {})
    {
        return music.write(name, fid.isEmpty() ? simpleMp3(name, QStringLiteral("Artist"))
                                               : mp3WithFid(name, QStringLiteral("Artist"), fid));
    }

    /// The same, with a track of the library for it.
    QString addTrack(const QString& name)
    {
        const QString file = addFile(name);
        const QString folder = file.left(file.lastIndexOf(u'/') + 1);
        return lists.library.add({.Titel = name, .Path = folder, .DName = file.mid(folder.size())});
    }

    QString writeList(const QByteArray& bytes, const QString& name = QStringLiteral("list.m3u"))
    {
        return music.write(name, bytes);
    }

    int load(const QByteArray& bytes) { return m3u.LoadPlaylist(writeList(bytes)); }

    /// Rows of a statement, columns joined by "|".
    [[nodiscard]] QStringList rows(const QString& statement) const
    {
        QStringList result;
        const auto database = lists.open();
        const auto set = database->OpenRecordset(statement);
        for (; !set->Eof(); set->MoveNext()) {
            QStringList cells;
            for (int column = 0; column < set->fieldCount(); ++column) {
                cells.append(set->value(column).isNull() ? QStringLiteral("Null")
                                                         : set->value(column).toText());
            }
            result.append(cells.join(u'|'));
        }
        return result;
    }

    /// File names of the loaded rows.
    [[nodiscard]] QStringList loaded() const
    {
        return lists.column(QStringLiteral("select DName from TEMP_PLImportM3U order by sid"));
    }

    [[nodiscard]] QByteArray log() const
    {
        return lists.read(QStringLiteral("M3UImportError.log"));
    }

    Lists lists;
    TempFolder music;
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
    QStringList told; ///< events, as "code source file"
};

} // namespace melovane::test

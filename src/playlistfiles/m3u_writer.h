#pragma once

#include "platform/db/value.h"
#include "playlists/playlist_ids.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace melovane {

class Database;
class Files;
class Recordset;

/// Lines and names of the suite's list files. Readers on other machines depend on each sign: keep.
namespace m3uline {

/// A value as lists hold it: a text as it stands, a number with one blank behind it and one, or its
/// minus, in front, null as "Null". Line ends become blanks: a line is all that a value has.
[[nodiscard]] QString printed(const Value& value);

/// The value with each of the signs replaced; null gives an empty text.
[[nodiscard]] QString replaced(const Value& value, QStringView signs, QChar replacement);

/// The name of a list as a file name without extension: what no file name may hold is "_". Never
/// empty, and never longer than a folder can keep with ".m3u" behind it.
/// \param room bytes that must stay free for what is appended
[[nodiscard]] QString fileName(const Value& listName, qsizetype room = 0);

/// The target with ".m3u" behind it unless that is its extension, in whatever case.
[[nodiscard]] QString withExtension(const QString& target);

/// The lines that every list of the suite begins with.
[[nodiscard]] QString head();

/// The line of a file, absolute or relative to the list, with its end.
[[nodiscard]] QString place(const QString& file);

} // namespace m3uline

/// What stands about an entry above the line of its file; for the rows of `vpl_save`.
class M3uEntryLines
{
public:
    /// \param rows tells the places of the columns
    explicit M3uEntryLines(const Recordset& rows);

    /// The lines of the current row, each with its end.
    [[nodiscard]] QString of(const Recordset& row) const;

private:
    QList<int> m_fid;
    QList<int> m_title;
    QList<int> m_volume;
    QList<int> m_mix;
};

/// Writes lists as M3U files with the suite's lines: CR LF, UTF-8 without a mark.
class M3uWriter
{
public:
    M3uWriter(Database& database, Files& files);

    /// How the file of an entry is named.
    enum class Names
    {
        Full,
        Relative ///< by its name alone: list and files lie in one folder
    };

    /// The whole file. \throws DbError
    [[nodiscard]] QByteArray contents(Pnid list, Names names) const;

    /// The entries that no file can hold, since the library has lost their track: "3:
    /// 800000000007" is the third entry and its track's number. \throws DbError
    [[nodiscard]] QStringList withoutTrack(Pnid list) const;

    /// Writes a list; an old file is replaced when the new one is complete.
    /// \param target a file, ".m3u" is put behind it when missing; empty: the name of the list in
    ///        `folder`
    /// \return the file that was written \throws DbError, IoError: the old file is as it was
    [[nodiscard]] QString
    write(Pnid list, const QString& target, Names names, const QString& folder);

    /// m3uline::fileName() of the name that a list has.
    [[nodiscard]] QString nameOf(Pnid list) const;

private:
    Database& m_database;
    Files& m_files;
};

} // namespace melovane

#include "playlistfiles/m3u_writer.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"
#include "store/track_fields.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <span>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Only the word up to the blank is fixed.
const QString kHead = u"#Melovane-M3U www.melovane.example\r\n#MLV:VER=1.0\r\n"_s;

const QString kLineEnd = u"\r\n"_s;

constexpr QStringView kForbidden = u"\"/\\:*?<>|";

/// Bytes of a name on every file system that we know, less those of ".m3u".
constexpr qsizetype kLongestName = 255 - 4;

using F = TrackField;

/// Fields of the lines that have several, in their order: keep.
constexpr std::array kTitle{F::Titel, F::Interpret, F::Genre};
constexpr std::array kVolume{F::Volume, F::Pitch, F::BPM, F::DTimeMsec};
constexpr std::array kMix{F::FrameStart, F::FrameStop, F::MixTime, F::MixIn, F::MixOut, F::eq};

QString oneLine(QString text)
{
    return text.replace(u'\r', u' ').replace(u'\n', u' ');
}

/// The columns of a line, found once for all rows.
QList<int> columnsOf(const Recordset& rows, std::span<const TrackField> fields)
{
    QList<int> columns;
    for (const TrackField field : fields) {
        columns.append(rows.fieldIndex(columnOf(field)));
    }
    return columns;
}

QString lineOf(const Recordset& row, QStringView prefix, const QList<int>& columns)
{
    QStringList values;
    for (const int column : columns) {
        values.append(m3uline::printed(row.value(column)));
    }
    return prefix.toString() + values.join(u'|') + kLineEnd;
}

QString fullName(const QString& folder, const QString& name)
{
    const bool isWhole = folder.isEmpty() || path::isSeparator(folder.back());
    return isWhole ? folder + name : path::join(folder, name);
}

} // namespace

namespace m3uline {

QString printed(const Value& value)
{
    if (value.isNull()) {
        return u"Null"_s;
    }
    if (!value.isLong() && !value.isDouble()) {
        return oneLine(value.toText());
    }
    const QString number = value.toText();
    return (number.startsWith(u'-') ? QString() : u" "_s) + number + u' ';
}

QString replaced(const Value& value, QStringView signs, QChar replacement)
{
    QString text = value.toText();
    for (const QChar sign : signs) {
        text.replace(sign, replacement);
    }
    return text;
}

QString fileName(const Value& listName, qsizetype room)
{
    QString name = replaced(listName, kForbidden, u'_');
    std::replace_if(
        name.begin(), name.end(), [](QChar sign) { return sign.unicode() < u' '; }, u'_');
    name = trimBlanks(name);
    while (name.toUtf8().size() > kLongestName - room) {
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    }
    // "." and ".." are folders.
    if (name.count(u'.') == name.size()) {
        name.replace(u'.', u'_');
    }
    if (name.startsWith(u'.')) {
        name[0] = u'_'; // a hidden file, which no player shows
    }
    return name.isEmpty() ? u"_"_s : name;
}

QString withExtension(const QString& target)
{
    const bool isList = lowerCase(path::extension(target)) == "m3u"_L1;
    return isList ? target : target + u".m3u"_s;
}

QString head()
{
    return kHead;
}

QString place(const QString& file)
{
    // A name at the beginning of a line must not be taken for a comment.
    return (file.startsWith(u'#') ? u"./"_s : QString()) + oneLine(file) + kLineEnd;
}

} // namespace m3uline

M3uEntryLines::M3uEntryLines(const Recordset& rows)
    : m_fid(columnsOf(rows, std::array{F::FID}))
    , m_title(columnsOf(rows, kTitle))
    , m_volume(columnsOf(rows, kVolume))
    , m_mix(columnsOf(rows, kMix))
{}

QString M3uEntryLines::of(const Recordset& row) const
{
    return lineOf(row, u"#MLV:FID=", m_fid) + lineOf(row, u"#MLV:TIT=", m_title) +
           lineOf(row, u"#MLV:VOL=", m_volume) + lineOf(row, u"#MLV:MIX=", m_mix);
}

M3uWriter::M3uWriter(Database& database, Files& files)
    : m_database(database)
    , m_files(files)
{}

QByteArray M3uWriter::contents(Pnid list, Names names) const
{
    const auto rows = m_database.OpenRecordset(u"select * from vpl_save where nid="_s +
                                               sql::number(numberOf(list)));
    const M3uEntryLines lines(*rows);
    const int folder = rows->fieldIndex(u"Path");
    const int name = rows->fieldIndex(u"DName");
    QByteArray bytes = m3uline::head().toUtf8();
    for (; !rows->Eof(); rows->MoveNext()) {
        const QString file = rows->value(name).toText();
        bytes += (lines.of(*rows) +
                  m3uline::place(names == Names::Full ? fullName(rows->value(folder).toText(), file)
                                                      : file))
                     .toUtf8();
    }
    return bytes;
}

QStringList M3uWriter::withoutTrack(Pnid list) const
{
    QStringList entries;
    const auto rows = m_database.OpenRecordset(
        u"select pl_all.FID, db_all.FID as track from pl_all left join db_all on pl_all.FID="
        "db_all.FID where pl_all.PNID="_s +
        sql::number(numberOf(list)) + u" order by pl_all.SID, pl_all.PLID desc"_s);
    for (int place = 1; !rows->Eof(); rows->MoveNext(), ++place) {
        if (rows->value(1).isNull()) {
            entries.append(u"%1: %2"_s.arg(place).arg(rows->value(0).toText()));
        }
    }
    return entries;
}

QString M3uWriter::nameOf(Pnid list) const
{
    const auto row = m_database.OpenRecordset(u"select name from pl_name where nid="_s +
                                              sql::number(numberOf(list)));
    return m3uline::fileName(row->Eof() ? Value() : row->value(0));
}

QString M3uWriter::write(Pnid list, const QString& target, Names names, const QString& folder)
{
    const QString file = target.isEmpty() ? path::join(folder, nameOf(list) + u".m3u"_s)
                                          : m3uline::withExtension(target);
    m_files.writeNamed(file, contents(list, names));
    return file;
}

} // namespace melovane

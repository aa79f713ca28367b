#include "trees/tree_tracks.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "trees/tree_key.h"

namespace melovane::treetracks {

using namespace Qt::Literals::StringLiterals;

namespace {

/// How a field of a key is compared: as the library does with a single row.
QString compared(const QString& field, const QString& value)
{
    const QStringList parts = field.split(u':');
    const QString column = u'[' + parts[0] + u']';
    const QString kind = parts.size() > 1 ? lowerCase(parts[1]) : QString();
    if (kind == "long"_L1) {
        return column + " = "_L1 + sql::number(qint64{leadingLong(value)});
    }
    if (kind == "date"_L1) {
        return "format("_L1 + column + ",'DD.MM.YYYY') = "_L1 +
               sql::text(QString(value).replace(u'/', u'.'));
    }
    if (kind == "where"_L1) {
        return u'(' + value + u')';
    }
    const bool isPattern = value.contains(u'*');
    return column + (isPattern ? " like "_L1 : " = "_L1) + sql::text(value);
}

} // namespace

std::optional<QString> condition(const QString& key)
{
    const auto parts = treekey::split(key);
    if (!parts || parts->type == "RunProc"_L1) {
        return std::nullopt;
    }
    const QString field = lowerCase(parts->field);
    if (field == "rootinterpret"_L1) {
        return "[Interpret] "_L1 + parts->value;
    }
    if (field == "cddir"_L1) {
        return "([Path] like "_L1 + sql::text(parts->value) + " and [DriveName] = "_L1 +
               sql::text(parts->aux) + u')';
    }
    if (field == "playlist"_L1) {
        return "[FID] in (select FID from pl_all where PNID="_L1 +
               sql::number(qint64{leadingLong(parts->value)}) + u')';
    }
    if (field == "statistik"_L1) {
        return "[FID] in (select FID from pl_stat where tday="_L1 +
               sql::number(qint64{leadingLong(parts->value)}) + u')';
    }
    // Headings of other trees: groups, years, rows of the extended tree.
    if (field.contains("gruppe"_L1) || field.startsWith("dir"_L1) || field == "info"_L1) {
        return std::nullopt;
    }
    return compared(parts->field, parts->value);
}

std::optional<QString> condition(const QStringList& keys)
{
    QStringList conditions;
    for (const QString& key : keys) {
        if (const auto one = condition(key); one && !conditions.contains(*one)) {
            conditions.append(*one);
        }
    }
    if (conditions.isEmpty()) {
        return std::nullopt;
    }
    return conditions.join(" or "_L1);
}

Tracks read(Database& database, const QStringList& keys)
{
    const auto wanted = condition(keys);
    if (!wanted) {
        return {};
    }
    const QString list = keys.size() == 1 ? treekey::playlistId(keys[0]) : QString();
    const QString statement =
        list.isEmpty()
            ? "select FID, Path, DName from db_all where ("_L1 + *wanted +
                  ") and del = False order by Path, Track, DName"_L1
            : "select db_all.FID, db_all.Path, db_all.DName from pl_all inner join db_all on "
              "pl_all.FID = db_all.FID where pl_all.PNID="_L1 +
                  sql::number(qint64{leadingLong(list)}) +
                  " and db_all.DEL = False order by pl_all.SID"_L1;
    const auto rows = database.OpenRecordset(statement);
    Tracks tracks;
    tracks.fids.reserve(rows->rowCount());
    for (; !rows->Eof(); rows->MoveNext()) {
        tracks.fids.append(rows->value(0).toText());
        tracks.files.append(rows->value(1).toText() + rows->value(2).toText());
    }
    return tracks;
}

} // namespace melovane::treetracks

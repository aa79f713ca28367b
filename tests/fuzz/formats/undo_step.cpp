#include "fuzz/formats/formats.h"
#include "playlists/list_delta.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString check(const QByteArray& bytes)
{
    const auto delta = readDelta(QString::fromUtf8(bytes));
    if (!delta) {
        return {};
    }
    for (const TableDelta& table : *delta) {
        for (const RowChange& row : table.rows) {
            const auto width = size_t(table.columns.size());
            const bool isAltered = row.kind == RowChange::Kind::Altered;
            const bool isWhole =
                isAltered ? row.before.size() == row.columns.size() &&
                                row.after.size() == row.columns.size()
                          : row.before.size() + row.after.size() == width && row.columns.empty();
            if (!isWhole) {
                return u"a row that is not whole"_s;
            }
        }
    }
    const QString text = deltaText(*delta);
    const auto again = readDelta(text);
    if (!again || deltaText(*again) != text) {
        return u"reads back otherwise: "_s + text;
    }
    return deltaText(inverse(inverse(*delta))) == text ? QString()
                                                       : u"back and forth is another step"_s;
}

std::vector<QByteArray> seeds()
{
    DeltaMaker entries(u"pl_all"_s, {u"PLID"_s, u"FID"_s, u"SID"_s, u"Volume"_s});
    entries.before({1, u"800000000001"_s, 2, Value()});
    entries.after({1, u"800000000001"_s, 4, 0.1});
    entries.after({2, u"a\tb\nc\\"_s, 6, true});
    entries.before({3, u""_s, 8, Value::Day{46000.5}});
    DeltaMaker cells(u"pl_name"_s, {u"NID"_s, u"anzahl"_s});
    cells.cell(7, 1, 3, 4);
    return {deltaText({}).toUtf8(), deltaText({entries.finish()}).toUtf8(),
            deltaText({entries.finish(), cells.finish()}).toUtf8()};
}

} // namespace

Format undoStep()
{
    return {"undo_step", check, seeds};
}

} // namespace melovane::fuzz

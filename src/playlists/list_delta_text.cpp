#include "playlists/list_delta.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters in front of a line and of a value. They stand in the side file: keep.
constexpr QChar kTable = u'T';
constexpr QChar kAdded = u'+';
constexpr QChar kRemoved = u'-';
constexpr QChar kAltered = u'~';
constexpr QChar kNull = u'n';
constexpr QChar kWhole = u'i';
constexpr QChar kReal = u'd';
constexpr QChar kTruth = u'b';
constexpr QChar kDay = u't';
constexpr QChar kText = u's';

/// Digits that bring every real number back as it was.
constexpr int kRealDigits = 17;

void appendEscaped(QString& out, const QString& text)
{
    for (const QChar sign : text) {
        switch (sign.unicode()) {
        case u'\\':
            out += u"\\\\"_s;
            break;
        case u'\t':
            out += u"\\t"_s;
            break;
        case u'\n':
            out += u"\\n"_s;
            break;
        case u'\0':
            out += u"\\0"_s;
            break;
        default:
            out += sign;
        }
    }
}

std::optional<QString> unescaped(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\') {
            result += text[i];
            continue;
        }
        static constexpr QStringView kLetters = u"\\tn0";
        static constexpr char16_t kSigns[] = {u'\\', u'\t', u'\n', u'\0'};
        const qsizetype which = ++i < text.size() ? kLetters.indexOf(text[i]) : -1;
        if (which < 0) {
            return std::nullopt;
        }
        result += QChar(kSigns[which]);
    }
    return result;
}

void appendValue(QString& out, const Value& value)
{
    out += u'\t';
    if (value.isNull()) {
        out += kNull;
    } else if (value.isText()) {
        out += kText;
        appendEscaped(out, value.toText());
    } else if (value.isLong()) {
        out += kWhole;
        out += QString::number(value.toInt64());
    } else if (value.isBool()) {
        out += kTruth;
        out += value.toBool() ? u'1' : u'0';
    } else {
        out += value.isDate() ? kDay : kReal;
        out += QString::number(value.toDouble(), 'g', kRealDigits);
    }
}

std::optional<Value> readValue(QStringView field)
{
    if (field.isEmpty()) {
        return std::nullopt;
    }
    const QStringView rest = field.sliced(1);
    bool sound = true;
    Value value;
    switch (field.front().unicode()) {
    case kNull.unicode():
        sound = rest.isEmpty();
        break;
    case kWhole.unicode():
        value = rest.toLongLong(&sound);
        break;
    case kReal.unicode():
        value = rest.toDouble(&sound);
        break;
    case kDay.unicode():
        value = Value::Day{rest.toDouble(&sound)};
        break;
    case kTruth.unicode():
        sound = rest == u"0" || rest == u"1";
        value = rest == u"1";
        break;
    case kText.unicode(): {
        std::optional<QString> text = unescaped(rest);
        sound = text.has_value();
        value = std::move(text).value_or(QString());
        break;
    }
    default:
        sound = false;
    }
    return sound ? std::optional(value) : std::nullopt;
}

void appendRow(QString& out, const RowChange& row)
{
    const bool isAltered = row.kind == RowChange::Kind::Altered;
    const bool isAdded = row.kind == RowChange::Kind::Added;
    out += isAltered ? kAltered : isAdded ? kAdded : kRemoved;
    if (!isAltered) {
        for (const Value& value : isAdded ? row.after : row.before) {
            appendValue(out, value);
        }
    } else {
        out += u'\t' + QString::number(row.key);
        for (size_t i = 0; i < row.columns.size(); ++i) {
            out += u'\t' + QString::number(row.columns[i]);
            appendValue(out, row.before[i]);
            appendValue(out, row.after[i]);
        }
    }
    out += u'\n';
}

bool readAltered(const QList<QStringView>& fields, qsizetype width, RowChange& row)
{
    bool sound = fields.size() > 2 && fields.size() % 3 == 2;
    row.key = sound ? fields[1].toLongLong(&sound) : 0;
    for (qsizetype i = 2; sound && i + 2 < fields.size(); i += 3) {
        const int column = fields[i].toInt(&sound);
        const std::optional<Value> before = readValue(fields[i + 1]);
        const std::optional<Value> after = readValue(fields[i + 2]);
        sound = sound && column > 0 && column < width && before && after;
        if (sound) {
            row.columns.push_back(column);
            row.before.push_back(*before);
            row.after.push_back(*after);
        }
    }
    return sound;
}

std::optional<RowChange> readRow(QStringView line, qsizetype width)
{
    const QList<QStringView> fields = line.split(u'\t');
    RowChange row;
    if (fields[0] == kAltered) {
        return readAltered(fields, width, row) ? std::optional(row) : std::nullopt;
    }
    const bool isAdded = fields[0] == kAdded;
    if ((!isAdded && fields[0] != kRemoved) || fields.size() != width + 1) {
        return std::nullopt;
    }
    row.kind = isAdded ? RowChange::Kind::Added : RowChange::Kind::Removed;
    std::vector<Value>& values = isAdded ? row.after : row.before;
    for (qsizetype i = 1; i < fields.size(); ++i) {
        const std::optional<Value> value = readValue(fields[i]);
        if (!value) {
            return std::nullopt;
        }
        values.push_back(*value);
    }
    const Value& key = values.front();
    row.key = key.isText() ? key.toText().toLongLong() : key.toInt64();
    const bool isKey = key.isLong() || (key.isText() && key.toText() == QString::number(row.key));
    return isKey ? std::optional(row) : std::nullopt;
}

} // namespace

QString deltaText(const ListDelta& delta)
{
    QString out;
    for (const TableDelta& table : delta) {
        out += kTable + u'\t' + table.table + u'\t' + table.columns.join(u'\t') + u'\n';
        for (const RowChange& row : table.rows) {
            appendRow(out, row);
        }
    }
    return out;
}

std::optional<ListDelta> readDelta(QStringView text)
{
    if (!text.isEmpty() && !text.endsWith(u'\n')) {
        return std::nullopt;
    }
    ListDelta delta;
    for (const QStringView line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(kTable)) {
            const QStringList fields = line.toString().split(u'\t');
            if (fields.size() < 3) {
                return std::nullopt;
            }
            delta.push_back({fields[1], fields.sliced(2), {}});
            continue;
        }
        std::optional<RowChange> row =
            delta.empty() ? std::nullopt : readRow(line, delta.back().columns.size());
        if (!row) {
            return std::nullopt;
        }
        delta.back().rows.push_back(std::move(*row));
    }
    return delta;
}

} // namespace melovane

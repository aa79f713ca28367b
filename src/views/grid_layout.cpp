#include "views/grid_layout.h"

#include "platform/system/text_file.h"

#include <QSet>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kFirstLine = u"Melovane grid layout 1"_s;

/// Widths that a screen can show, in figures.
constexpr double kLeastWidth = 1;
constexpr double kMaxWidth = 500;

/// More lines than any view has columns are no layout.
constexpr int kMaxColumns = 500;

QString oneLine(QString text)
{
    text.replace(u'\n', u' ').replace(u'\r', u' ');
    return text;
}

bool readColumn(const QString& line, GridColumn& column)
{
    const QStringList parts = line.split(u'|');
    if (parts.size() < 5 || parts[0].isEmpty()) {
        return false;
    }
    bool isNumber = false;
    const double width = parts[2].toDouble(&isNumber);
    const auto isFlag = [](const QString& text) { return text == "0"_L1 || text == "1"_L1; };
    if (!isNumber || !(width >= 0) || !isFlag(parts[1]) || !isFlag(parts[3])) {
        return false;
    }
    column.field = parts[0];
    column.shown = parts[1] == "1"_L1;
    column.width = std::clamp(width, kLeastWidth, kMaxWidth);
    column.stretched = parts[3] == "1"_L1;
    column.heading = parts.mid(4).join(u'|');
    column.renamed = !column.heading.isEmpty();
    return true;
}

} // namespace

QByteArray layoutText(const std::vector<GridColumn>& columns)
{
    QString text = kFirstLine + u'\n';
    for (const GridColumn& column : columns) {
        text += u"%1|%2|%3|%4|%5\n"_s.arg(column.field, column.shown ? u"1"_s : u"0"_s,
                                          QString::number(column.width, 'f', 1),
                                          column.stretched ? u"1"_s : u"0"_s,
                                          column.renamed ? oneLine(column.heading) : QString());
    }
    return text.toUtf8();
}

std::vector<GridColumn> readLayout(const QByteArray& bytes)
{
    std::vector<GridColumn> result;
    QSet<QString> seen;
    const QStringList lines = textfile::lines(textfile::decode(bytes));
    for (const QString& line : lines) {
        GridColumn column;
        const bool isNew = readColumn(line, column) && !seen.contains(column.field.toLower());
        if (isNew && result.size() < kMaxColumns) {
            seen.insert(column.field.toLower());
            result.push_back(column);
        }
    }
    return result;
}

} // namespace melovane

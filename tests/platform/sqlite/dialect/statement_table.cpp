#include "platform/sqlite/dialect/statement_table.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kFolder = QString::fromUtf8(MLV_STATEMENT_FOLDER);

QStringList linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return QString::fromUtf8(file.readAll()).split(u'\n');
}

void takeError(StatementCase& test, const QString& text)
{
    const qsizetype blank = text.indexOf(u' ');
    test.error = text.left(blank).toInt();
    test.errorWord = text.mid(blank + 1);
}

void takeLine(std::vector<StatementCase>& cases, const QString& file, int number, QStringView line)
{
    const QString text = line.mid(2).toString();
    if (line.front() == u'?') {
        StatementCase& made = cases.emplace_back();
        made.file = file;
        made.line = number;
        // A line feed inside a statement is written as one letter, so that a case stays one line.
        made.statement = QString(text).replace(u'\u21B5', u'\n');
        return;
    }
    if (cases.empty()) {
        throw std::runtime_error("no statement before line " + std::to_string(number));
    }
    StatementCase& test = cases.back();
    switch (line.front().unicode()) {
    case u'@':
        test.columns = text;
        return;
    case u'|':
        test.rows.append(text);
        return;
    case u'=':
        test.affected = text.toInt();
        return;
    case u':':
        test.look = text;
        return;
    case u'!':
        takeError(test, text);
        return;
    }
    throw std::runtime_error(file.toStdString() + ": line " + std::to_string(number));
}

} // namespace

void PrintTo(const StatementCase& value, std::ostream* stream)
{
    *stream << value.file.toStdString() << ".txt:" << value.line << " "
            << value.statement.toStdString();
}

std::vector<StatementCase> readStatementTable()
{
    std::vector<StatementCase> cases;
    const QDir folder(kFolder);
    for (const QString& name : folder.entryList({u"*.txt"_s}, QDir::Files, QDir::Name)) {
        int number = 0;
        for (const QString& line : linesOf(folder.filePath(name))) {
            ++number;
            if (!line.isEmpty() && line.front() != u'#') {
                takeLine(cases, QFileInfo(name).baseName(), number, line);
            }
        }
    }
    return cases;
}

QStringList describedFunctions()
{
    QStringList names;
    bool inside = false;
    for (const QString& line : linesOf(QString::fromUtf8(MLV_DIALECT_PAGE))) {
        inside = line.startsWith(u"## ") ? line == u"## Functions" : inside;
        if (inside && line.startsWith(u'|')) {
            names += line.section(u'`', 1, 1).split(u' ', Qt::SkipEmptyParts);
        }
    }
    return names;
}

QStringList smallLibrary()
{
    QStringList statements;
    for (const QString& line : linesOf(QDir(kFolder).filePath(u"library.sql"_s))) {
        if (!line.isEmpty() && line.front() != u'#') {
            statements.append(line);
        }
    }
    return statements;
}

} // namespace melovane::test

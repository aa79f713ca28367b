// Reads the sources and docs/contract-without-caller.md: names without a caller, keys of warnings.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace Qt::Literals::StringLiterals;

const QString kRoot = QString::fromUtf8(MLV_SOURCE_ROOT) + u'/';

QString textOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// The sources below src/ by their names there, without comments.
std::map<QString, QString> readSources()
{
    static const QRegularExpression comment(u"//[^\n]*"_s);
    std::map<QString, QString> sources;
    QDirIterator walk(kRoot, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        sources.emplace(path.mid(kRoot.size()), textOf(path).remove(comment));
    }
    return sources;
}

const std::map<QString, QString>& sources()
{
    static const std::map<QString, QString> all = readSources();
    return all;
}

bool namesIt(const QString& text, const QString& name)
{
    return text.contains(QRegularExpression(u"\\b%1\\b"_s.arg(QRegularExpression::escape(name))));
}

struct Row
{
    QString name;
    bool isAbsent = false;
    QString place; ///< file, or the folder that lacks the name
    QString reason;
};

/// The rows of the table of operations.
std::vector<Row> rowsOf(const QString& page)
{
    static const QRegularExpression form(
        u"^\\| `([^`]+)` \\| (absent: )?`([^`]+)` \\| ([^|]+) \\|$"_s,
        QRegularExpression::MultilineOption);
    std::vector<Row> rows;
    for (auto it = form.globalMatch(page); it.hasNext();) {
        const auto match = it.next();
        rows.push_back({match.captured(1), !match.captured(2).isEmpty(), match.captured(3),
                        match.captured(4).trimmed()});
    }
    return rows;
}

/// Whether a row tells what the sources hold.
bool holds(const Row& row, const std::map<QString, QString>& all)
{
    if (!row.isAbsent) {
        const auto file = all.find(row.place);
        return file != all.end() && namesIt(file->second, row.name);
    }
    const QString folder = row.place == "."_L1 ? QString() : row.place;
    bool isFolder = false;
    bool isThere = false;
    for (const auto& [file, text] : all) {
        isFolder = isFolder || file.startsWith(folder);
        isThere = isThere || (file.startsWith(folder) && namesIt(text, row.name));
    }
    return isFolder && !isThere;
}

/// The arguments of each call of ShowWarning with a receiver, as they are written.
QList<QStringList> warningsIn(const QString& text)
{
    static const QRegularExpression call(u"\\.\\s*ShowWarning\\("_s);
    QList<QStringList> calls;
    for (auto it = call.globalMatch(text); it.hasNext();) {
        qsizetype at = it.next().capturedEnd();
        QStringList arguments{QString()};
        bool inText = false;
        for (int depth = 1; at < text.size(); ++at) {
            const QChar sign = text[at];
            inText = inText != (sign == u'"' && text[at - 1] != u'\\');
            if (!inText) {
                depth += sign == u'(' || sign == u'{' ? 1 : 0;
                depth -= sign == u')' || sign == u'}' ? 1 : 0;
            }
            if (depth == 0) {
                break;
            }
            if (depth == 1 && !inText && sign == u',') {
                arguments.append(QString());
            } else {
                arguments.last() += sign;
            }
        }
        for (QString& argument : arguments) {
            argument = argument.trimmed();
        }
        calls.append(arguments);
    }
    return calls;
}

bool hasKey(const QStringList& arguments)
{
    return arguments.size() >= 4 && arguments[3] != "{}"_L1 && !arguments[3].isEmpty();
}

TEST(ContractWithoutCaller, EachNameStandsWhereThePageSaysOrIsAbsentThere)
{
    const std::vector<Row> rows = rowsOf(textOf(kRoot + u"../docs/contract-without-caller.md"_s));
    ASSERT_GT(rows.size(), 30U);
    for (const Row& row : rows) {
        EXPECT_TRUE(holds(row, sources())) << row.name.toStdString();
        EXPECT_GT(row.reason.size(), 8) << row.name.toStdString();
    }
}

TEST(ContractWithoutCaller, TheReaderFindsARowThatIsWrong)
{
    const std::map<QString, QString> all = {{u"a/b.h"_s, u"int SendToPlayer();"_s}};
    const std::vector<Row> rows = rowsOf(u"| `SendToPlayer` | `a/b.h` | the player |\n"
                                         "| `ToPlayer` | `a/b.h` | the player |\n"
                                         "| `ToPlayer` | absent: `a/` | the player |\n"
                                         "| `SendToPlayer` | absent: `.` | the player |\n"
                                         "| `ToPlayer` | absent: `c/` | the player |\n"
                                         "| `SendToPlayer` | `a/c.h` | the player |\n"_s);
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_TRUE(holds(rows[0], all));
    EXPECT_FALSE(holds(rows[1], all));
    EXPECT_TRUE(holds(rows[2], all));
    EXPECT_FALSE(holds(rows[3], all));
    EXPECT_FALSE(holds(rows[4], all));
    EXPECT_FALSE(holds(rows[5], all));
}

TEST(Warnings, EachIsShownUnderAKeySoThatTheSettingsCanRewordIt)
{
    int calls = 0;
    for (const auto& [file, text] : sources()) {
        for (const QStringList& arguments : warningsIn(text)) {
            ++calls;
            EXPECT_TRUE(hasKey(arguments))
                << file.toStdString() << ": " << arguments.first().toStdString();
        }
    }
    EXPECT_GT(calls, 15);
}

TEST(Warnings, TheReaderFindsACallWithoutAKey)
{
    const auto calls = warningsIn(u"w.ShowWarning(text(u\"a, (\"_s, 1), Type::Note, u\"t\"_s);"
                                  "w.ShowWarning(a, b, f(c, d), {}, u\"name\"_s);"
                                  "w.ShowWarning(a, b, c, u\"key\"_s);"_s);
    ASSERT_EQ(calls.size(), 3);
    EXPECT_EQ(calls[0].size(), 3);
    EXPECT_FALSE(hasKey(calls[0]));
    EXPECT_FALSE(hasKey(calls[1]));
    EXPECT_TRUE(hasKey(calls[2]));
}

} // namespace

// Reads the sources: who sends which message, and who acts on it.
#include "bus/message_names.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <map>
#include <span>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString kVocabulary = u"bus/message_names.h"_s;

struct Source
{
    QString name; ///< below src/
    QString text;
};

QString withoutComments(QString text)
{
    static const QRegularExpression comment(u"//[^\n]*"_s);
    return text.remove(comment);
}

std::vector<Source> readSources()
{
    const QString root = QString::fromUtf8(MLV_SOURCE_ROOT) + u'/';
    std::vector<Source> result;
    QDirIterator walk(root, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        result.push_back(
            {file.fileName().mid(root.size()), withoutComments(QString::fromUtf8(file.readAll()))});
    }
    return result;
}

/// Read once for all tests.
const std::vector<Source>& allSources()
{
    static const std::vector<Source> sources = readSources();
    return sources;
}

const Source& vocabularyIn(const std::vector<Source>& sources)
{
    return *std::ranges::find(sources, kVocabulary, &Source::name);
}

/// The names of the vocabulary in lower case, by their constants.
std::map<QString, QString> vocabulary(const QString& text)
{
    static const QRegularExpression form(u"QStringView (k\\w+) =\\s*u\"([^\"]+)\""_s);
    std::map<QString, QString> names;
    for (auto it = form.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        names.emplace(match.captured(1), match.captured(2).toLower());
    }
    return names;
}

/// Rows of the tables that views act by.
QString tablesIn(const QString& text)
{
    static const QRegularExpression form(u"BusRow<\\w+> \\w+\\[\\] = \\{(.*?)\\n    \\};"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    QString result;
    for (auto it = form.globalMatch(text); it.hasNext();) {
        result += it.next().captured(1);
    }
    return result;
}

QString outsideTables(QString text)
{
    static const QRegularExpression form(u"BusRow<\\w+> \\w+\\[\\] = \\{.*?\\n    \\};"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    return text.remove(form);
}

/// The constants of the vocabulary that a text names.
QSet<QString> constantsIn(const QString& text, const std::map<QString, QString>& names)
{
    static const QRegularExpression word(u"\\bk[A-Z]\\w*"_s);
    QSet<QString> result;
    for (auto it = word.globalMatch(text); it.hasNext();) {
        const QString constant = it.next().captured();
        if (names.contains(constant)) {
            result.insert(constant);
        }
    }
    return result;
}

/// What stands as the name in each call of SendMessage.
QStringList sentIn(const QString& text)
{
    static const QRegularExpression call(u"SendMessage\\(\\s*([^,;]*)"_s);
    QStringList result;
    for (auto it = call.globalMatch(text); it.hasNext();) {
        result.append(it.next().captured(1));
    }
    return result;
}

/// A Latin-1 literal is what a condition compares with; it cannot be a name.
bool isWrittenOut(const QString& sent)
{
    return sent.contains("u\""_L1) || sent.contains(u'+');
}

/// Literals of a text that are names of the vocabulary.
QStringList literalsIn(const QString& text, const std::map<QString, QString>& names)
{
    static const QRegularExpression literal(u"\"([A-Za-z0-9.]+)\""_s);
    QSet<QString> known;
    for (const auto& [constant, name] : names) {
        known.insert(name);
    }
    // A word of every day; only in a table or in a call it is a message.
    known.remove(bus::kStart.toString());
    QStringList result;
    for (auto it = literal.globalMatch(text); it.hasNext();) {
        const QString found = it.next().captured(1);
        if (known.contains(found.toLower())) {
            result.append(found);
        }
    }
    return result;
}

/// The keys of the built-in texts, some of which read like messages.
QStringList textKeys(const std::vector<Source>& sources)
{
    static const QRegularExpression row(u"\\{u\"([^\"]+)\","_s);
    QStringList result;
    for (const Source& source : sources) {
        if (source.name.startsWith("config/"_L1) && source.name.contains("_texts"_L1)) {
            for (auto it = row.globalMatch(source.text); it.hasNext();) {
                result.append(it.next().captured(1));
            }
        }
    }
    return result;
}

QSet<QString> namesOf(std::span<const QStringView> list)
{
    QSet<QString> result;
    for (const QStringView name : list) {
        result.insert(name.toString().toLower());
    }
    return result;
}

/// What names lack here, by the table of messages; a row without an owner is none.
std::map<QString, QString> missingOn(const QString& page)
{
    static const QRegularExpression form(
        u"^\\| `([^`]+)` \\| ((?:sender|receiver)[a-z, ]*) \\| [^|]{4,} \\|$"_s,
        QRegularExpression::MultilineOption);
    std::map<QString, QString> result;
    for (auto it = form.globalMatch(page); it.hasNext();) {
        const auto match = it.next();
        result.emplace(match.captured(1).toLower(), match.captured(2));
    }
    return result;
}

class MessageNamesTest : public testing::Test
{
protected:
    MessageNamesTest()
    {
        for (const Source& source : sources) {
            if (source.name != kVocabulary) {
                handled.unite(constantsIn(tablesIn(source.text), names));
                used.unite(constantsIn(outsideTables(source.text), names));
            }
        }
    }

    const std::vector<Source>& sources = allSources();
    const std::map<QString, QString> names = vocabulary(vocabularyIn(sources).text);
    QSet<QString> handled; ///< constants in the tables of views
    QSet<QString> used;    ///< constants elsewhere: sent, or the key of a button
};

TEST_F(MessageNamesTest, NoTwoConstantsAreOneMessage)
{
    ASSERT_GT(names.size(), 90U);
    std::map<QString, QString> seen;
    for (const auto& [constant, name] : names) {
        EXPECT_TRUE(seen.emplace(name, constant).second) << constant.toStdString();
    }
}

TEST_F(MessageNamesTest, EachSaysWhoSendsItAndWhoActsOnIt)
{
    QFile file(QString::fromUtf8(MLV_SOURCE_ROOT) + u'/' + kVocabulary);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    static const QRegularExpression form(
        u"((?:/// [^\n]*\n)*)inline constexpr QStringView (k\\w+) "_s);
    int seen = 0;
    for (auto it = form.globalMatch(QString::fromUtf8(file.readAll())); it.hasNext(); ++seen) {
        const auto match = it.next();
        const QString comment = match.captured(1);
        EXPECT_TRUE(comment.contains("From "_L1) || comment.contains("tool button"_L1))
            << match.captured(2).toStdString();
        EXPECT_TRUE(comment.contains("To "_L1) || comment.contains("tool button"_L1))
            << match.captured(2).toStdString();
    }
    EXPECT_EQ(size_t(seen), names.size());
}

TEST_F(MessageNamesTest, ANameIsWrittenOutInTheVocabularyAlone)
{
    const QStringList texts = textKeys(sources);
    ASSERT_GT(texts.size(), 500);
    for (const Source& source : sources) {
        if (source.name.startsWith("bus/"_L1)) {
            continue;
        }
        for (const QString& sent : sentIn(source.text)) {
            EXPECT_FALSE(isWrittenOut(sent))
                << source.name.toStdString() << " sends " << sent.toStdString();
        }
        for (const QString& literal : literalsIn(source.text, names)) {
            EXPECT_TRUE(texts.contains(literal))
                << source.name.toStdString() << " writes out " << literal.toStdString();
        }
    }
}

TEST_F(MessageNamesTest, EachSentNameHasAReceiverHereOrIsListedAsAnotherProgramsOne)
{
    ASSERT_GT(handled.size(), 60);
    ASSERT_GT(used.size(), 40);
    const QSet<QString> elsewhere = namesOf(bus::kForOthers) | namesOf(bus::kButtonKeys);
    for (const QString& constant : used) {
        EXPECT_NE(handled.contains(constant), elsewhere.contains(names.at(constant)))
            << constant.toStdString()
            << " is sent; a table acts on it: " << handled.contains(constant);
    }
}

TEST_F(MessageNamesTest, EachNameIsUsedOrListedAsUnused)
{
    const QSet<QString> unused = namesOf(bus::kUnused);
    for (const auto& [constant, name] : names) {
        EXPECT_NE(handled.contains(constant) || used.contains(constant), unused.contains(name))
            << constant.toStdString();
    }
}

TEST_F(MessageNamesTest, ANameWithoutSenderOrReceiverStandsOnItsPageWithTheOneItBelongsTo)
{
    QFile page(QString::fromUtf8(MLV_SOURCE_ROOT) + u"/../docs/contract-without-caller.md"_s);
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const std::map<QString, QString> missing = missingOn(QString::fromUtf8(page.readAll()));
    ASSERT_GT(missing.size(), 20U);
    for (const auto& [constant, name] : names) {
        QStringList lacks;
        if (!used.contains(constant)) {
            lacks.append(u"sender"_s);
        }
        if (!handled.contains(constant)) {
            lacks.append(u"receiver"_s);
        }
        const auto row = missing.find(name);
        EXPECT_EQ(lacks.join(u", "_s), row == missing.end() ? QString() : row->second)
            << constant.toStdString();
    }
    for (const auto& [name, what] : missing) {
        EXPECT_TRUE(std::ranges::any_of(names, [&](const auto& known) {
            return known.second == name;
        })) << name.toStdString();
    }
}

TEST_F(MessageNamesTest, TheReaderFindsWhatItForbids)
{
    EXPECT_TRUE(isWrittenOut(sentIn(u"m_bus.SendMessage(u\"playlist.\"_s + key, fid);"_s).first()));
    EXPECT_TRUE(isWrittenOut(sentIn(u"SendMessage(on ? bus::kA : u\"b\"_s);"_s).first()));
    EXPECT_FALSE(
        isWrittenOut(sentIn(u"m_bus.SendMessage(bus::kRefreshAll, u\"start\"_s);"_s).first()));
    EXPECT_FALSE(
        isWrittenOut(sentIn(u"SendMessage(key == \"a\"_L1 ? bus::kA : bus::kB);"_s).first()));
    EXPECT_EQ(literalsIn(u"send(u\"Refresh.All\"_s, u\"start\"_s);"_s, names),
              QStringList{u"Refresh.All"_s});
    EXPECT_EQ(missingOn(u"| `A.b` | sender, receiver | the player |\n| `c` | sender |  |\n"_s),
              (std::map<QString, QString>{{u"a.b"_s, u"sender, receiver"_s}}));
    const QString table = u"BusRow<View> kRows[] = {\n        {bus::kRefreshAll, &View::a},\n    };"
                          "x(bus::kStart)"_s;
    EXPECT_EQ(constantsIn(tablesIn(table), names), QSet<QString>{u"kRefreshAll"_s});
    EXPECT_EQ(constantsIn(outsideTables(table), names), QSet<QString>{u"kStart"_s});
}

} // namespace
} // namespace melovane

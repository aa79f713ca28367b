#include "config/tasten.h"
#include "help/help_pages.h"
#include "help/help_places.h"
#include "help/help_text.h"
#include "help/menu_keys.h"
#include "shell/context_menu.h"
#include "shell/menu_commands.h"
#include "support/text_catalogue.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <algorithm>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString kResources = QStringLiteral(MLV_RESOURCE_FOLDER);
const QString kHelp = kResources + u"/help"_s;

/// Bytes of a picture, and pictures of a language: who installs the program gets them all.
constexpr qint64 kMaxPicture = 60 * 1024;
constexpr int kMaxPictures = 7;

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// What the first bracket of the pattern takes, everywhere.
QStringList allOf(const QString& text, const QString& pattern)
{
    QStringList result;
    const QRegularExpression expression(pattern);
    for (auto at = expression.globalMatch(text); at.hasNext();) {
        result.append(at.next().captured(1));
    }
    return result;
}

/// The pages of one language over a catalogue that speaks it.
struct Help
{
    explicit Help(bool isEnglish)
    {
        if (isEnglish) {
            catalogue.folders.install(u"lang_English.ini"_s,
                                      bytesOf(kResources + u"/languages/lang_English.ini"_s));
            catalogue.folders.install(u"melovane.ini"_s,
                                      "[Value]\nSprach.Datei=lang_English.ini\n");
        }
        catalogue.fill();
    }

    /// The page as it was written.
    [[nodiscard]] QString raw(QStringView page) const
    {
        return QString::fromUtf8(bytesOf(pages.folder() + u'/' + page.toString() + u".html"_s));
    }

    test::TextCatalogue catalogue;
    std::vector<Tasten> bindings = defaultTasten();
    HelpPages pages{{.files = catalogue.folders.files(),
                     .folder = kHelp,
                     .texts = catalogue.texts,
                     .bindings = [this] { return bindings; },
                     .nativeKeys = [](const QString& keys) { return keys; }}};
};

class EveryLanguage : public testing::TestWithParam<bool>
{
protected:
    Help help{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Help, EveryLanguage, testing::Bool(), [](const auto& language) {
    return std::string(language.param ? "English" : "German");
});

TEST_P(EveryLanguage, HasEveryPageWithATitleAndNoOther)
{
    EXPECT_TRUE(help.pages.areThere());
    QStringList files;
    for (const QStringView page : kHelpPages) {
        EXPECT_FALSE(help.pages.title(page).isEmpty()) << page.toString().toStdString();
        files.append(page.toString() + u".html"_s);
    }
    files.sort();
    EXPECT_EQ(QDir(help.pages.folder()).entryList({u"*.html"_s}), files);
}

TEST_P(EveryLanguage, LeadsFromEveryPartOfAWindowToAPageAndSectionThatAreThere)
{
    EXPECT_GE(helpPlaces().size(), 20u);
    for (const HelpPlace& place : helpPlaces()) {
        const QString page = place.place.toString().section(u'#', 0, 0);
        const QString section = place.place.toString().section(u'#', 1);
        const QString html = help.pages.html(page);
        EXPECT_FALSE(html.isEmpty()) << place.place.toString().toStdString();
        if (!section.isEmpty()) {
            EXPECT_TRUE(html.contains(u"<a name=\""_s + section + u"\">"_s))
                << place.place.toString().toStdString();
        }
    }
}

TEST_P(EveryLanguage, HasALinkedPageAndSectionForEachLink)
{
    int links = 0;
    for (const QStringView page : kHelpPages) {
        for (const QString& link : allOf(help.raw(page), u"href=\"([^\"]*)\""_s)) {
            const QString target = link.section(u'#', 0, 0);
            const QString section = link.section(u'#', 1);
            EXPECT_TRUE(target.isEmpty() || target.endsWith(".html"_L1)) << link.toStdString();
            const QString html =
                target.isEmpty() ? help.raw(page) : help.pages.html(QString(target).chopped(5));
            EXPECT_FALSE(html.isEmpty()) << link.toStdString();
            EXPECT_TRUE(section.isEmpty() || html.contains(u"<a name=\""_s + section + u"\">"_s))
                << page.toString().toStdString() << " " << link.toStdString();
            ++links;
        }
    }
    EXPECT_GE(links, 10);
}

TEST_P(EveryLanguage, HasEachPictureAndNoneThatNobodyShows)
{
    QSet<QString> shown;
    for (const QStringView page : kHelpPages) {
        for (const QString& picture : allOf(help.raw(page), u"src=\"([^\"]*)\""_s)) {
            EXPECT_FALSE(picture.contains(u'/')) << picture.toStdString();
            const QString path = help.pages.folder() + u'/' + picture;
            EXPECT_FALSE(QImage(path).isNull()) << path.toStdString();
            EXPECT_LE(QFileInfo(path).size(), kMaxPicture) << path.toStdString();
            shown.insert(picture);
        }
    }
    const QStringList files = QDir(help.pages.folder()).entryList({u"*.png"_s});
    EXPECT_EQ(QSet<QString>(files.begin(), files.end()), shown);
    EXPECT_LE(shown.size(), kMaxPictures);
}

TEST_P(EveryLanguage, FillsEachPlaceWithATextOfTheProgram)
{
    QSet<QString> ids;
    for (const Tasten& binding : help.bindings) {
        ids.insert(binding.Id);
    }
    int filled = 0;
    for (const QStringView page : kHelpPages) {
        for (const QString& name : allOf(help.raw(page), u"\\{\\{([^}]*)\\}\\}"_s)) {
            ++filled;
            if (name.startsWith("keys:"_L1)) {
                EXPECT_TRUE(ids.contains(name.mid(5))) << name.toStdString();
            } else if (!name.startsWith("kbd:"_L1) && !name.startsWith("table:"_L1)) {
                EXPECT_FALSE(help.catalogue.texts.text(name).isEmpty()) << name.toStdString();
            }
        }
        EXPECT_FALSE(help.pages.html(page).contains("{{"_L1)) << page.toString().toStdString();
    }
    EXPECT_GE(filled, 60);
}

/// A page may name a menu only by its caption, and an entry behind it only where it stands.
TEST_P(EveryLanguage, NamesMenusAndEntriesAsTheProgramHasThem)
{
    QHash<QString, QString> menuOf;
    QStringList path;
    for (const MenuRow& row : MenuCommands::rows()) {
        path = path.mid(0, row.level);
        menuOf.insert(row.textKey(), path.isEmpty() ? QString() : path.last());
        path.append(row.textKey());
    }
    for (const ContextRow& row : contextRows()) {
        menuOf.insert(row.key.toString(), QString());
    }
    int steps = 0;
    for (const QStringView page : kHelpPages) {
        const QString raw = help.raw(page);
        for (const QString& name : allOf(raw, u"\\{\\{(mnu[^}]*)\\}\\}"_s)) {
            EXPECT_TRUE(menuOf.contains(name)) << name.toStdString();
        }
        const QRegularExpression step(u"\\{\\{([^}]*)\\}\\} › (?=\\{\\{([^}]*)\\}\\})"_s);
        for (auto at = step.globalMatch(raw); at.hasNext();) {
            const QRegularExpressionMatch match = at.next();
            EXPECT_EQ(menuOf.value(match.captured(2)), match.captured(1))
                << page.toString().toStdString() << ": " << match.captured(2).toStdString();
            ++steps;
        }
        // The sign between two entries is for filled captions only.
        EXPECT_EQ(raw.count(u'›'), raw.count(step)) << page.toString().toStdString();
    }
    EXPECT_GE(steps, 15);
}

TEST_P(EveryLanguage, FindsAPageByItsWords)
{
    const QString title = help.pages.title(u"player");
    const auto hits = help.pages.find(title.toUpper());
    ASSERT_FALSE(hits.empty());
    EXPECT_EQ(hits.front().page, u"player"_s) << "a page with the word in its title comes first";
    EXPECT_TRUE(help.pages.find(u"Xylophonquartett"_s).empty());
    EXPECT_TRUE(help.pages.find(u"   "_s).empty());
    EXPECT_TRUE(help.pages.hitsPage(title).contains(u"href=\"player.html\""_s));
    EXPECT_TRUE(help.pages.hitsPage(u"<b>"_s).contains(u"&lt;b&gt;"_s));
}

/// Both languages explain the same: sections, pictures, keys and controls.
TEST(HelpLanguages, HaveTheSameSectionsPicturesAndPlaces)
{
    const Help german(false);
    const Help english(true);
    for (const QStringView page : kHelpPages) {
        for (const QString& pattern :
             {u"<a name=\"([^\"]*)\">"_s, u"src=\"([^\"]*)\""_s, u"\\{\\{([^}]*)\\}\\}"_s,
              u"href=\"([^\"]*)\""_s, u"<(h[123])>"_s}) {
            QStringList one = allOf(german.raw(page), pattern);
            QStringList other = allOf(english.raw(page), pattern);
            one.sort();
            other.sort();
            EXPECT_EQ(one, other) << page.toString().toStdString();
        }
    }
}

TEST(HelpKeys, AreTheOnesThatTheMenusHave)
{
    QStringList shown;
    for (const MenuKey& key : menuKeys()) {
        shown.append(u"%1=%2"_s.arg(key.textKey, key.keys));
    }
    QStringList real;
    for (const MenuRow& row : MenuCommands::rows()) {
        if (!row.shortcut.isEmpty()) {
            real.append(u"%1=%2"_s.arg(row.name, row.shortcut));
        }
    }
    shown.sort();
    real.sort();
    EXPECT_EQ(shown, real);
}

TEST(HelpKeys, AreThoseThatTheUserHasBound)
{
    Help help(false);
    const QString before = help.pages.html(u"keys");
    EXPECT_TRUE(before.contains("Ctrl+N"_L1));
    for (Tasten& binding : help.bindings) {
        if (binding.Id == "DBALLNEXTPLAY"_L1) {
            binding.KeyName = u"UMSCHALTTASTE + STRG-TASTE + J-TASTE"_s;
        }
    }
    const QString after = help.pages.html(u"keys");
    EXPECT_TRUE(after.contains("Ctrl+Shift+J"_L1));
    EXPECT_FALSE(after.contains("<code>Ctrl+N</code>"_L1));
    for (const Tasten& binding : help.bindings) {
        const QString label = help.catalogue.texts.text(binding.TextKey);
        EXPECT_TRUE(after.contains((label.isEmpty() ? binding.Id : label).toHtmlEscaped()))
            << binding.Id.toStdString();
    }
}

TEST(HelpPlaces, AreThoseOfTheNextPartThatHasOne)
{
    EXPECT_EQ(helpPlaceOf({u"TDBGrid1"_s, u"ctl_Playlist1"_s, u"MLVDB"_s}), u"lists"_s);
    EXPECT_EQ(helpPlaceOf({u"qt_something"_s}), u"start"_s);
    EXPECT_EQ(helpPlaceOf({}), u"start"_s);
}

TEST(HelpPages, AreNotThereWithoutTheirFolderAndNeverReadBeside)
{
    test::TextCatalogue catalogue;
    catalogue.fill();
    const HelpPages none({.files = catalogue.folders.files(),
                          .folder = u"/proc/no/help"_s,
                          .texts = catalogue.texts,
                          .bindings = [] { return std::vector<Tasten>(); },
                          .nativeKeys = [](const QString& keys) { return keys; }});
    EXPECT_FALSE(none.areThere());
    const Help help(false);
    EXPECT_TRUE(help.pages.html(u"../en/start").isEmpty());
    EXPECT_TRUE(help.pages.html(u"nothing").isEmpty());
}

} // namespace
} // namespace melovane

#include "config/counted_text.h"
#include "config/moment_text.h"
#include "platform/system/ini_text.h"
#include "platform/system/text_file.h"
#include "support/text_catalogue.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Letters of a value that readers of the suite take: what is longer would be cut in the middle.
constexpr qsizetype kLongestText = 259;

/// Texts that are the same in both languages, and rightly so.
const QSet<QString> kSameInBoth{
    u"ok"_s,
    u"air.title"_s,
    u"air.pause"_s,
    u"air.loop"_s,
    u"air.mixmode"_s,
    u"air.bpm"_s,
    u"air.talkover"_s,
    u"air.pitch"_s,
    u"air.pitch.value"_s,
    u"air.jingles"_s,
    u"bench.cover.size"_s,
    u"quick.album"_s,
    u"quick.genre"_s,
    u"confSSTab_1"_s,
    u"confFrame4"_s,
    u"confFrame2"_s,
    u"Mixer.Jingle.1"_s,
    u"Mixer.Jingle.2"_s,
    u"Mixer.Jingle.3"_s,
    u"Mixer.Jingle.4"_s,
    u"Mixer.Jingle.5"_s,
    u"Mixer.Jingle.6"_s,
    u"Mixer.Jingle.7"_s,
    u"mnuHelp"_s,
    u"buttons.loop"_s,
    u"CheckBox.TalkOver"_s,
    u"player.mnuHelp"_s,
    u"ToolTip.Tree.Genre"_s,
    u"detail.name"_s,
    u"column.Album"_s,
    u"find.name"_s,
    u"find.fid"_s,
    u"edittag.size"_s,
    u"edittag.image.name"_s,
    u"edittag.Path"_s,
    u"edittag.DKhz"_s,
    u"column.Genre"_s,
    u"column.BPM"_s,
    u"column.Track"_s,
    u"column.Situation"_s,
    u"column.Tempo"_s,
    u"column.User1"_s,
    u"column.User2"_s,
    u"column.User3"_s,
    u"column.User4"_s,
    u"column.User5"_s,
    u"column.FrameStart"_s,
    u"column.FrameStop"_s,
    u"column.Pitch"_s,
    u"column.Image"_s,
    u"column.FID"_s,
    u"column.Start"_s,
    u"column.Stop"_s,
    u"tree.title"_s,
    u"tree.root.genre"_s,
    u"tree.root.album"_s,
    u"info.bpm"_s,
    u"intake.start"_s,
    u"export.sample.album"_s,
    u"export.sample.genre"_s,
    u"settings.group.tags"_s,
    u"level.percent"_s,
    u"keys.group.Player"_s,
    u"keys.group.Melovane"_s,
};

QByteArray shippedFile()
{
    QFile file(QString::fromUtf8(MLV_RESOURCE_FOLDER) + u"/languages/lang_English.ini"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

/// What a text is made of besides its words: placeholders and line ends.
QStringList marksOf(const QString& text)
{
    static const QRegularExpression mark(u"\\$[1-4]|\\\\n"_s);
    QStringList marks;
    for (auto it = mark.globalMatch(text); it.hasNext();) {
        marks.append(it.next().captured());
    }
    marks.sort();
    return marks;
}

struct English : testing::Test
{
    static void SetUpTestSuite()
    {
        german = std::make_unique<test::TextCatalogue>();
        english = std::make_unique<test::TextCatalogue>();
        german->fill();
        english->folders.install(u"lang_English.ini"_s, shippedFile());
        english->folders.install(u"melovane.ini"_s, "[Value]\nSprach.Datei=lang_English.ini\n");
        english->fill();
    }

    static void TearDownTestSuite()
    {
        german.reset();
        english.reset();
    }

    /// Calls `check(name, German, English)` for each text that is not empty.
    template <typename Check> void forEachText(const Check& check)
    {
        for (const ConfigObject* item : german->texts.AllObjects()) {
            const ConfigObject* other = english->texts.FindObject(item->Name);
            check(item->Name, item->Description, other->Description);
            check(item->Name, item->DescriptionEx, other->DescriptionEx);
        }
    }

    const IniText file{textfile::decode(shippedFile())};
    static inline std::unique_ptr<test::TextCatalogue> german;
    static inline std::unique_ptr<test::TextCatalogue> english;
};

TEST_F(English, NoTextIsMissingAndNoneIsThereForNothing)
{
    QSet<QString> names;
    for (const ConfigObject* item : german->texts.AllObjects()) {
        names.insert(item->Name);
        EXPECT_EQ(item->Description.isEmpty(),
                  !file.value(u"Description"_s, item->Name).has_value())
            << item->Name.toStdString();
        EXPECT_EQ(item->DescriptionEx.isEmpty(),
                  !file.value(u"DescriptionEx"_s, item->Name).has_value())
            << item->Name.toStdString();
    }
    for (const QString& section : {u"Description"_s, u"DescriptionEx"_s, u"ToolTip"_s}) {
        for (const QString& line : file.section(section)) {
            EXPECT_TRUE(names.contains(line.section(u'=', 0, 0))) << line.toStdString();
        }
    }
}

TEST_F(English, PlaceholdersAndLineEndsAgree)
{
    forEachText([](const QString& name, const QString& one, const QString& other) {
        EXPECT_EQ(marksOf(one), marksOf(other)) << name.toStdString();
    });
}

TEST_F(English, WhatIsCountedHasAFormForOne)
{
    for (const QString& key :
         {u"playlist.summary"_s, u"playlist.skipped"_s, u"store.written"_s, u"store.failed"_s,
          u"store.more"_s, u"m3u.leftout"_s, u"m3u.inserted"_s, u"drop.beyond"_s}) {
        for (const auto* catalogue : {german.get(), english.get()}) {
            EXPECT_FALSE(countedText(catalogue->texts, key, 1).isEmpty()) << key.toStdString();
        }
        EXPECT_NE(countedText(english->texts, key, 2), countedText(english->texts, key, 1));
    }
    EXPECT_EQ(countedText(english->texts, u"playlist.summary"_s, 1), u"1 track"_s);
    EXPECT_EQ(countedText(english->texts, u"playlist.summary"_s, 2), u"2 tracks"_s);
}

TEST_F(English, NoTextStaysGerman)
{
    forEachText([](const QString& name, const QString& one, const QString& other) {
        if (!one.isEmpty()) {
            EXPECT_EQ(one == other, kSameInBoth.contains(name)) << name.toStdString();
        }
    });
}

TEST_F(English, NoTextIsCut)
{
    for (const QString& section : {u"Description"_s, u"DescriptionEx"_s}) {
        for (const QString& line : file.section(section)) {
            EXPECT_LE(line.section(u'=', 1).size(), kLongestText) << line.toStdString();
        }
    }
}

TEST_F(English, ADayIsWrittenInTheFormOfTheLanguage)
{
    const QDateTime moment(QDate(2026, 3, 4), QTime(15, 9));
    EXPECT_EQ(momentText(german->texts, moment), u"04.03.2026 15:09"_s);
    EXPECT_EQ(momentText(english->texts, moment), u"2026-03-04 15:09"_s);
    EXPECT_EQ(dayText(english->texts, moment), u"2026-03-04"_s);
}

TEST_F(English, ChoicesKeepTheirValues)
{
    forEachText([](const QString& name, const QString& one, const QString& other) {
        const QStringList choices = one.split(u'|');
        const QStringList others = other.split(u'|');
        if (!one.contains("#;"_L1)) {
            return;
        }
        ASSERT_EQ(choices.size(), others.size()) << name.toStdString();
        for (qsizetype i = 0; i < choices.size(); ++i) {
            EXPECT_EQ(choices[i].section(u"#;"_s, 0, 0), others[i].section(u"#;"_s, 0, 0));
        }
    });
}

} // namespace
} // namespace melovane

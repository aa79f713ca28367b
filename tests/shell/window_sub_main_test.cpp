#include "platform/controls/warning_dialog.h"
#include "shell/sub_main.h"
#include "support/suite_folders.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class RecordingDialog : public WarningDialog
{
public:
    void show(const QString& title, const QString& text) override
    {
        titles.append(title);
        texts.append(text);
    }

    QStringList titles;
    QStringList texts;
};

struct SubMainTest : public testing::Test
{
    StartResult run()
    {
        const StartSteps steps{[this] {
                                   calls.append(u"open"_s);
                                   return fault;
                               },
                               [this] { calls.append(u"config"_s); },
                               [this] {
                                   calls.append(u"copy"_s);
                                   return secondCopy;
                               },
                               [this] {
                                   calls.append(u"exists"_s);
                                   return exists;
                               },
                               [this] {
                                   calls.append(u"version"_s);
                                   return versionFits;
                               }};
        return SubMain(steps, *settings, dialog).run();
    }

    test::SuiteFolders folders;
    std::unique_ptr<GlobalSettings> settings = folders.makeSettings();
    RecordingDialog dialog;
    QStringList calls;
    QString fault;
    bool secondCopy = false;
    bool exists = true;
    bool versionFits = true;
};

TEST_F(SubMainTest, TakesItsStepsInTheirOrder)
{
    EXPECT_EQ(run(), StartResult::Run);
    EXPECT_EQ(calls, (QStringList{u"open"_s, u"config"_s, u"copy"_s, u"exists"_s, u"version"_s}));
    EXPECT_TRUE(dialog.texts.isEmpty());
}

TEST_F(SubMainTest, ASecondCopyEndsWithoutAWordEvenWhenTheDatabaseIsBroken)
{
    secondCopy = true;
    fault = u"kaputt"_s;
    EXPECT_EQ(run(), StartResult::SecondCopy);
    EXPECT_EQ(calls, (QStringList{u"open"_s, u"config"_s, u"copy"_s}));
    EXPECT_TRUE(dialog.texts.isEmpty());
}

TEST_F(SubMainTest, AFailedOpenTestIsToldBeforeAMissingFile)
{
    fault = u"Tabelle %1 fehlt"_s;
    exists = false;
    EXPECT_EQ(run(), StartResult::Refused);
    EXPECT_EQ(dialog.titles, QStringList{u"Achtung !"_s});
    EXPECT_EQ(dialog.texts.first(), u"Melovane kann nicht gestartet werden, da folgender Fehler "
                                    "aufgetreten ist.\n\nTabelle %1 fehlt"_s);
    EXPECT_EQ(calls.last(), u"copy"_s);
}

TEST_F(SubMainTest, AMissingDatabaseIsNamed)
{
    exists = false;
    EXPECT_EQ(run(), StartResult::Refused);
    EXPECT_EQ(dialog.texts,
              QStringList{u"Melovane Datenbank nicht gefunden "_s + settings->DbName()});
    EXPECT_EQ(calls.last(), u"exists"_s);
}

TEST_F(SubMainTest, AWrongVersionIsToldWithBothVersions)
{
    versionFits = false;
    settings->SetDBVersion(u"2.9"_s);
    EXPECT_EQ(run(), StartResult::Refused);
    EXPECT_EQ(dialog.titles, QStringList{u"ooop's"_s});
    EXPECT_TRUE(dialog.texts.first().startsWith(
        u"Falsche Melovane Datenbankversion\n%1\nIhre Datenbank hat die Versionsnummer: 2.9 "
        "benötigt wird aber die Version: 3.4"_s.arg(settings->DbName())));
}

} // namespace
} // namespace melovane

#include "playlistfiles/export_fixture.h"
#include "playlistfiles/kopie_file.h"
#include "support/answer_queue.h"
#include "support/text_catalogue.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// ---- the log on the screen

TEST(ExportLog, KeepsItsLastHundredLinesOnceItHas30001Letters)
{
    ExportLog log;
    const QString line(98, u'x'); // 100 letters with the line end
    for (int number = 0; number < 299; ++number) {
        EXPECT_FALSE(log.append(line));
    }
    EXPECT_FALSE(log.append(QString(98, u'y')));
    EXPECT_EQ(log.text().size(), 30'000);
    EXPECT_TRUE(log.append(u"last"_s));
    EXPECT_EQ(log.text().count(u"\r\n"_s), 100);
    EXPECT_TRUE(log.text().endsWith(QString(98, u'y') + u"\r\nlast\r\n"_s));
    EXPECT_TRUE(log.text().startsWith(line + u"\r\n"_s));
}

TEST(ExportLog, KeepsOneLineThatIsTooLongAsItIs)
{
    ExportLog log;
    EXPECT_TRUE(log.append(QString(40'000, u'x')));
    EXPECT_EQ(log.text().size(), 40'002);
}

TEST(ExportLog, ASectionBeginsWithSixtyStars)
{
    ExportLog log;
    log.appendSection(u"Export beendet"_s);
    EXPECT_EQ(log.text(), QString(60, u'*') + u"\r\nExport beendet\r\n"_s);
}

// ---- the window's logic

/// A window of which everything is written down, and in which the user acts at once.
class PlainForm : public KopieForm
{
public:
    void open(frmKopieFile& opened) override { logic = &opened; }

    void run() override
    {
        isOpen = true;
        if (user) {
            user();
        }
        isOpen = false;
    }

    void close() override { closed = logic->mayClose(); }

    void setSubject(const QString& sentence) override { subject = sentence; }

    void setTemplates(const QStringList& all) override { offered = all; }

    void setFolder(const QString& text) override { folder = text; }

    void setFolderNote(const QString& text, bool isGood) override
    {
        folderNote = text;
        folderIsGood = isGood;
    }

    void setTemplate(const QString& text) override { pathTemplate = text; }

    void setPreview(const QString& text) override { preview = text; }

    void setOptions(std::optional<int> file, std::optional<int> folders) override
    {
        options = {file.value_or(-1), folders.value_or(-1)};
    }

    void setRunning(bool on) override { running.append(on); }

    void setProgress(qint64 position, qint64 count) override
    {
        progress.append(u"%1/%2"_s.arg(position).arg(count));
    }

    void setLog(const QString& text) override { log = text; }

    void appendLog(const QString& line) override { log += line + u"\r\n"_s; }

    void setOutcome(const QString& text, bool isGood) override
    {
        outcome = text;
        outcomeIsGood = isGood;
    }

    [[nodiscard]] std::optional<QString> chooseFolder(const QString&) override
    {
        ++choices;
        return chosen;
    }

    frmKopieFile* logic = nullptr;
    std::function<void()> user;
    bool isOpen = false;
    bool closed = false;
    QString subject, folder, folderNote, pathTemplate, preview, log, outcome;
    bool folderIsGood = true;
    bool outcomeIsGood = true;
    QStringList offered, progress;
    std::pair<int, int> options{-2, -2};
    QList<bool> running;
    std::optional<QString> chosen;
    int choices = 0;
};

class KopieFile : public test::ExportFixture
{
protected:
    KopieFile()
    {
        catalogue.fill();
        addList({addTrack({.Titel = u"a"_s, .Genre = u"House"_s}),
                 addTrack({.Titel = u"b"_s, .Genre = u"Pop"_s})});
    }

    /// Opens the window; the user does this in it.
    void show(std::function<void()> user = {})
    {
        form.user = std::move(user);
        window.SetPNID(list);
        window.Show();
    }

    [[nodiscard]] QString setting(const QString& section, const QString& key) const
    {
        return settings->GetKeyValue(section, key, u"-"_s);
    }

    void set(const QString& section, const QString& key, const QString& value)
    {
        settings->WriteKeyValue(section, key, value);
    }

    test::TextCatalogue catalogue;
    test::AnswerQueue answers;
    PlainForm form;
    QStringList failures, told;
    frmKopieFile window{{parts, *settings, catalogue.texts, answers, form,
                         [this](const std::vector<ExportFault>& faults) {
                             for (const ExportFault& fault : faults) {
                                 failures.append(u"%1 %2"_s.arg(fault.code).arg(fault.what));
                             }
                             return u"/logs/M3UImportError.log"_s;
                         },
                         [this](const QString& name, qint64 position, qint64 count) {
                             told.append(u"%1 %2/%3"_s.arg(name).arg(position).arg(count));
                         }}};
};

TEST_F(KopieFile, OpensWithFolderTemplateAndPreviewOfTheLastTime)
{
    set(u"Global"_s, u"SavePlaylistFilesPath"_s, target);
    set(u"SavePlaylist"_s, u"Template"_s, u"%GN/%TP_%N"_s);
    show();
    EXPECT_EQ(form.folder, target);
    EXPECT_EQ(form.offered, Template2Path::offered());
    EXPECT_EQ(form.pathTemplate, u"%GN/%TP_%N"_s);
    EXPECT_EQ(form.preview, u"Gruppenname/01_Titel.mp3"_s);
    EXPECT_TRUE(form.subject.contains(u"2 Titel"_s)) << form.subject.toStdString();
    EXPECT_TRUE(form.subject.contains(u"Hauptset"_s));
    EXPECT_TRUE(form.folderNote.endsWith(u" frei"_s)) << form.folderNote.toStdString();
}

TEST_F(KopieFile, TheFirstTimeItTakesTheFileNameAndNoFolder)
{
    show();
    EXPECT_EQ(form.folder, QString());
    EXPECT_EQ(form.pathTemplate, u"%O"_s);
    EXPECT_EQ(form.preview, u"Original-Dateiname.mp3"_s);
    EXPECT_EQ(form.options, (std::pair{0, 3}));
}

TEST_F(KopieFile, EveryChangeOfTheTemplateRenewsThePreview)
{
    show([this] {
        form.logic->templateTyped(u"%I"_s);
        EXPECT_EQ(form.preview, u"Interpret.mp3"_s);
        form.logic->templateTyped(u"%I/%P"_s);
        EXPECT_EQ(form.preview, u"Interpret/Playlistname.mp3"_s);
    });
}

TEST_F(KopieFile, SignsThatNoNameHasAreDroppedWhileTyping)
{
    show([this] { form.logic->templateTyped(u"%G:/*%A?<>|\\%O"_s); });
    EXPECT_EQ(form.pathTemplate, u"%G/%A\\%O"_s);
}

TEST_F(KopieFile, AClickInTheListTakesThatTemplate)
{
    show([this] { form.logic->templateChosen(4); });
    EXPECT_EQ(form.pathTemplate, u"%G/%A/%O"_s);
    EXPECT_EQ(form.preview, u"Genre/Album/Original-Dateiname.mp3"_s);
    show([this] { form.logic->templateChosen(-1); });
    EXPECT_EQ(form.pathTemplate, u"%O"_s) << "a click beside the rows changes nothing";
}

TEST_F(KopieFile, TheOptionsMakeATemplateAndAreRememberedAsTheUserSetsThem)
{
    show([this] {
        form.logic->fileOptionChosen(2);
        EXPECT_EQ(form.pathTemplate, u"%I - %N"_s);
        form.logic->folderOptionChosen(2);
        EXPECT_EQ(form.pathTemplate, u"%G/%A/%I - %N"_s);
    });
    EXPECT_EQ(setting(u"Global"_s, u"opExpFile"_s), u"2"_s);
    EXPECT_EQ(setting(u"Global"_s, u"opExpDir"_s), u"2"_s);
    show();
    EXPECT_EQ(form.options, (std::pair{2, 2}));
    EXPECT_EQ(form.pathTemplate, u"%G/%A/%I - %N"_s);
}

TEST_F(KopieFile, ATemplateThatNoOptionMakesHasNoneChosen)
{
    show([this] { form.logic->templateTyped(u"%TP"_s); });
    EXPECT_EQ(form.options, (std::pair{-1, -1}));
}

TEST_F(KopieFile, OptionsOutsideTheirNumbersInTheSettingsDoNoHarm)
{
    set(u"Global"_s, u"opExpFile"_s, u"77"_s);
    set(u"Global"_s, u"opExpDir"_s, u"-5"_s);
    set(u"SavePlaylist"_s, u"Template"_s, u"%TP"_s);
    show([this] { form.logic->folderOptionChosen(1); });
    EXPECT_EQ(form.pathTemplate, u"%A/%I - %N"_s);
}

TEST_F(KopieFile, StartRunsTheExportAndTellsEachFile)
{
    show([this] {
        form.logic->folderTyped(target);
        form.logic->templateTyped(u"%G/%N"_s);
        form.logic->cmdStart();
    });
    EXPECT_EQ(copies(), (QStringList{u"House/a.mp3"_s, u"Pop/b.mp3"_s}));
    EXPECT_EQ(form.log, u"Copy: ( 1 / 2 ) --> a\r\nCopy: ( 2 / 2 ) --> b\r\n"_s +
                            QString(60, u'*') +
                            u"\r\nExport beendet\r\n2 von 2 Titeln kopiert.\r\n"_s);
    EXPECT_EQ(form.progress, (QStringList{u"1/2"_s, u"2/2"_s}));
    EXPECT_EQ(told, (QStringList{u"a 1/2"_s, u"b 2/2"_s, u" 0/0"_s}));
    EXPECT_EQ(form.running, (QList{true, false}));
    EXPECT_TRUE(form.outcomeIsGood);
    EXPECT_EQ(setting(u"Global"_s, u"SavePlaylistFilesPath"_s), target);
    EXPECT_EQ(setting(u"SavePlaylist"_s, u"Template"_s), u"%G/%N"_s);
}

TEST_F(KopieFile, StartWithoutAFolderOpensTheChoiceOfOne)
{
    show([this] {
        form.logic->cmdStart();
        form.chosen = target + u"/nowhere"_s;
        form.logic->cmdDir();
        EXPECT_FALSE(form.folderIsGood);
        EXPECT_EQ(form.folderNote, u"Diesen Ordner gibt es nicht."_s);
        form.chosen = target;
        form.logic->cmdStart();
    });
    EXPECT_EQ(form.choices, 3);
    EXPECT_EQ(form.folder, target);
    EXPECT_TRUE(form.folderIsGood);
    EXPECT_TRUE(form.running.isEmpty()) << "the user starts once more when he has seen the folder";
    EXPECT_EQ(setting(u"Global"_s, u"SavePlaylistFilesPath"_s), u"-"_s);
}

TEST_F(KopieFile, CancelStopsARunningExportAndClosesTheWindowOtherwise)
{
    loop.onTurn = [this] {
        if (form.progress.size() == 1) {
            window.cmdAbbruch();
            window.cmdAbbruch();
        }
    };
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
        EXPECT_FALSE(form.closed);
        form.logic->cmdAbbruch();
    });
    EXPECT_EQ(copies(), QStringList{u"a.mp3"_s});
    EXPECT_EQ(form.log, u"Copy: ( 1 / 2 ) --> a\r\n"_s + QString(60, u'*') +
                            u"\r\nVorgang abgebrochen\r\n"_s + QString(60, u'*') +
                            u"\r\nExport beendet\r\nAbgebrochen, 1 von 2 Titeln kopiert.\r\n"_s);
    EXPECT_TRUE(form.closed);
}

TEST_F(KopieFile, ClosingTheWindowStopsTheExportFirst)
{
    loop.onTurn = [this] {
        if (form.progress.size() == 1) {
            EXPECT_FALSE(window.mayClose());
        }
    };
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    EXPECT_EQ(copies(), QStringList{u"a.mp3"_s});
    EXPECT_TRUE(form.closed);
}

TEST_F(KopieFile, ASecondStartOrASecondWindowMeanwhileDoNothing)
{
    loop.onTurn = [this] {
        window.cmdStart();
        window.SetPNID(Pnid{99});
        window.Show();
        window.SetPNID(list);
    };
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    EXPECT_EQ(form.running, (QList{true, false}));
    EXPECT_EQ(copies().size(), 2);
}

TEST_F(KopieFile, AFailedCopyIsToldAtTheEndWithItsName)
{
    files.remove(music + u"/a.mp3"_s);
    answers.expectMessage(u"a.mp3: Datei nicht gefunden"_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    EXPECT_EQ(copies(), QStringList{u"b.mp3"_s});
    EXPECT_FALSE(form.outcomeIsGood);
    EXPECT_EQ(form.outcome, u"1 von 2 Titeln kopiert."_s);
    EXPECT_TRUE(form.log.endsWith(u"a.mp3: Datei nicht gefunden\r\n"_s));
}

TEST_F(KopieFile, AnEntryWhoseTrackIsGoneIsToldAndNoGoodEnd)
{
    suite.execute(u"delete from db_all where DName='a.mp3'"_s);
    answers.expectMessage(u"1: "_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    EXPECT_EQ(copies(), QStringList{u"b.mp3"_s});
    EXPECT_FALSE(form.outcomeIsGood);
    EXPECT_TRUE(form.log.contains(u"weil sein Titel nicht mehr in der Bibliothek ist"_s));
}

TEST_F(KopieFile, OfManyFailuresTheMessageNamesTheFirstAndTheLogAll)
{
    QStringList tracks;
    for (int number = 0; number < 20; ++number) {
        tracks.append(addTrack({.Titel = u"x%1"_s.arg(number)}));
    }
    addList(tracks, u"Viele"_s);
    files.broken = u"/x"_s;
    answers.expectMessage(u"... und 12 weitere"_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    EXPECT_EQ(form.log.count(u"auf dem Datenträger ist kein Platz mehr"_s), 20);
    EXPECT_EQ(answers.messages.last().count(u"auf dem Datenträger ist kein Platz mehr"_s), 8);
}

TEST_F(KopieFile, EveryCopyThatFailedStandsInTheLogFileAndTheMessageSaysWhere)
{
    QStringList tracks;
    for (int number = 0; number < 300; ++number) {
        tracks.append(addTrack({.Titel = u"x%1"_s.arg(number, 3, 10, QChar(u'0'))}));
    }
    addList(tracks, u"Viele"_s);
    files.broken = u"/x"_s;
    files.remove(music + u"/x007.mp3"_s);
    answers.expectMessage(u"stehen in /logs/M3UImportError.log"_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    ASSERT_EQ(failures.size(), 300);
    EXPECT_EQ(
        failures[0],
        u"20002 x000.mp3 -> %1/x000.mp3: auf dem Datenträger ist kein Platz mehr"_s.arg(target));
    EXPECT_TRUE(failures[7].endsWith(u"Datei nicht gefunden"_s)) << failures[7].toStdString();
}

TEST_F(KopieFile, TooLittleSpaceIsToldBeforeAnythingIsWritten)
{
    files.free = 100;
    answers.expectMessage(u"Der Platz im Zielordner reicht nicht"_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    EXPECT_TRUE(files.names(target).isEmpty());
    EXPECT_FALSE(form.outcomeIsGood);
}

TEST_F(KopieFile, CopiesThatReplacedEachOtherAreTold)
{
    answers.expectMessage(u"immer.mp3: mehrere Titel ergeben diesen Namen"_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->templateTyped(u"immer"_s);
        form.logic->cmdStart();
    });
    EXPECT_EQ(copies(), QStringList{u"immer.mp3"_s});
}

TEST_F(KopieFile, AListFileThatCannotBeWrittenIsToldAndLogged)
{
    files.makeFolder(target + u"/Hauptset.m3u"_s);
    answers.expectMessage(u"Die Playliste Hauptset.m3u ließ sich nicht schreiben"_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].startsWith(u"20002 "_s));
}

TEST_F(KopieFile, ADatabaseThatFailsEndsTheExportAndIsToldAndLogged)
{
    show([this] {
        form.logic->folderTyped(target);
        files.remove(suite.dbName());
        form.logic->cmdStart();
    });
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].startsWith(u"20001 "_s));
    EXPECT_TRUE(form.log.contains(u"SavePlaylist: "_s));
    EXPECT_FALSE(form.outcomeIsGood);
    EXPECT_EQ(form.running, (QList{true, false}));
    EXPECT_TRUE(files.names(target).isEmpty());
}

TEST_F(KopieFile, AnEmptyListSaysSo)
{
    addList({}, u"Leer"_s);
    show([this] {
        form.logic->folderTyped(target);
        form.logic->cmdStart();
    });
    EXPECT_EQ(form.outcome, u"Die Playliste hat keine Titel."_s);
}

} // namespace

} // namespace melovane

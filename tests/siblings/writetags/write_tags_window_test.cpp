#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/linux_tag_writer.h"
#include "platform/linux/tag_reader.h"
#include "siblings/writetags/ui/write_tags_window.h"
#include "siblings/writetags/write_tags.h"
#include "support/accessible_walk.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace melovane::test {
namespace {

using namespace linux_media;
using namespace Qt::Literals::StringLiterals;

class WriteTagsWindowTest : public SuiteFixture
{
protected:
    void SetUp() override
    {
        m_texts = std::make_unique<ConfigObjects>(suite.folders.paths(), suite.folders.profile(),
                                                  suite.files);
        MelovaneConfiguration::fill(*m_texts);
        m_work = std::make_unique<WriteTags>(WriteTagsParts{.engine = *suite.engine,
                                                            .files = suite.files,
                                                            .reader = m_reader,
                                                            .covers = m_coverReader,
                                                            .writer = m_writer,
                                                            .clock = suite.clock,
                                                            .dataFolder = suite.dataFolder(),
                                                            .isLent = [] { return false; }},
                                             WriteTagsOrder{suite.dbName(), 2});
        m_window = std::make_unique<WriteTagsWindow>(*m_work, *m_texts, suite.dbName());
        m_window->whenOver = [this] { ++m_told; };
    }

    void add(bool isThere)
    {
        const QString name = u"%1.mp3"_s.arg(++m_files);
        if (isThere) {
            music.write(name, simpleMp3(u"Old"_s, u"Artist"_s));
        }
        const QString fid =
            suite.library.add({.Titel = u"New"_s, .Path = music.path() + u'/', .DName = name});
        suite.execute(u"insert into db_edit (fid) values ('%1')"_s.arg(fid));
    }

    template <typename Widget> Widget* find(const QString& name)
    {
        return m_window->findChild<Widget*>(name);
    }

    [[nodiscard]] int waiting() const
    {
        return int(suite.column(u"select fid from db_edit"_s).size());
    }

    TempFolder music;
    LinuxTagReader m_reader;
    Id3CoverReader m_coverReader;
    LinuxTagWriter m_writer{suite.file(u"tagjournal"_s)};
    std::unique_ptr<ConfigObjects> m_texts;
    std::unique_ptr<WriteTags> m_work;
    std::unique_ptr<WriteTagsWindow> m_window;
    int m_told = 0;
    int m_files = 0;
};

TEST_F(WriteTagsWindowTest, WhenAllIsWrittenItGoesAndTellsOnce)
{
    for (int i = 0; i < 20; ++i) {
        add(true);
    }
    m_window->show();
    m_window->start();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_window->isVisible(); }));
    EXPECT_EQ(m_told, 1);
    EXPECT_EQ(waiting(), 0);
}

TEST_F(WriteTagsWindowTest, WhatFailsIsListedWithItsReasonAndEnterCloses)
{
    add(true);
    add(false);
    m_window->show();
    m_window->start();
    auto* const report = find<QTreeWidget>(u"lstReport"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return report->topLevelItemCount() > 0; }));
    EXPECT_EQ(report->topLevelItem(0)->text(0), music.file(u"2.mp3"_s));
    EXPECT_EQ(report->topLevelItem(0)->text(1), u"die Datei ist nicht da"_s);
    EXPECT_TRUE(find<QLabel>(u"lblSummary"_s)->text().startsWith(u"1 Datei geschrieben\n"_s));
    EXPECT_FALSE(find<QPushButton>(u"cmdCancel"_s)->isVisible());
    QTest::keyClick(m_window.get(), Qt::Key_Return);
    EXPECT_FALSE(m_window->isVisible());
    EXPECT_EQ(m_told, 1);
}

TEST_F(WriteTagsWindowTest, EscapeStopsItAndTheRestWaits)
{
    for (int i = 0; i < 60; ++i) {
        add(true);
    }
    m_window->show();
    m_window->start();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_work->done() > 0; }));
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_window->isVisible(); }));
    EXPECT_EQ(m_told, 1);
    EXPECT_EQ(waiting(), 60 - m_work->report().written);
    EXPECT_GT(waiting(), 0);
}

TEST_F(WriteTagsWindowTest, EveryControlHasANameAndARoleAndIsReachedWithoutAMouse)
{
    add(false);
    m_window->show();
    m_window->start();
    auto* const report = find<QTreeWidget>(u"lstReport"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return report->topLevelItemCount() > 0; }));
    EXPECT_EQ(walkAccessibly(*m_window).faults().join(u'\n').toStdString(), "");
}

} // namespace
} // namespace melovane::test

#include "care/recycle_script.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

/// A script of one folder that is really run.
class RecycleScript : public testing::Test
{
protected:
    void add(const QString& recycled, const QString& original)
    {
        m_script += recyclescript::shellLine(folder.file(recycled).toUtf8(),
                                             folder.file(original).toUtf8());
    }

    /// The exit status of the script.
    int run()
    {
        const QString script = folder.write(u"r/ReMoveFiles.sh"_s, m_script);
        return QProcess::execute(u"/bin/sh"_s, {script});
    }

    test::TempFolder folder;

private:
    QByteArray m_script = recyclescript::shellHead();
};

} // namespace

TEST(RecycleBatch, ALineMovesTheFileToItsOldFolder)
{
    EXPECT_EQ(recyclescript::batchLine(u"C:\\MelovaneRecycler\\Music\\a b.mp3"_s, u"C:\\Music\\"_s),
              u"Move /Y \"C:\\MelovaneRecycler\\Music\\a b.mp3\" \"C:\\Music\\\"\n"_s);
}

TEST(RecycleBatch, ANameCanNeitherEndItsQuotesNorBeginALine)
{
    EXPECT_EQ(recyclescript::batchLine(u"/r/a\"b\nformat c:.mp3"_s, u"/m/"_s),
              u"Move /Y \"/r/a?b?format c:.mp3\" \"/m/\"\n"_s);
}

TEST(RecycleBatch, APercentSignIsDoubled)
{
    EXPECT_EQ(recyclescript::batchLine(u"/r/100%.mp3"_s, u"/m/"_s),
              u"Move /Y \"/r/100%%.mp3\" \"/m/\"\n"_s);
}

TEST_F(RecycleScript, FilesWithHostileNamesComeBackAsTheyWere)
{
    const QStringList names{u"it's.mp3"_s,       u"two\nlines.mp3"_s,  u"\"q\".mp3"_s,
                            u"$(id) `id`.mp3"_s, u"-rf.mp3"_s,         u"a\\b.mp3"_s,
                            u"ä*?[x].mp3"_s,     u" '; exit 7 #.mp3"_s};
    for (const QString& name : names) {
        folder.write(u"r/Rock/"_s + name, name.toUtf8());
        add(u"r/Rock/"_s + name, u"music/New folder/"_s + name);
    }
    EXPECT_EQ(run(), 0);
    for (const QString& name : names) {
        EXPECT_EQ(folder.read(u"music/New folder/"_s + name), name.toUtf8()) << name.toStdString();
        EXPECT_FALSE(QFile::exists(folder.file(u"r/Rock/"_s + name)));
    }
}

TEST_F(RecycleScript, AFileThatIsInTheWayStaysAndTheRestIsPutBack)
{
    folder.write(u"r/a.mp3"_s, "recycled");
    folder.write(u"r/b.mp3"_s, "b");
    folder.write(u"music/a.mp3"_s, "newer");
    add(u"r/a.mp3"_s, u"music/a.mp3"_s);
    add(u"r/b.mp3"_s, u"music/b.mp3"_s);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(folder.read(u"music/a.mp3"_s), "newer");
    EXPECT_EQ(folder.read(u"r/a.mp3"_s), "recycled");
    EXPECT_EQ(folder.read(u"music/b.mp3"_s), "b");
}

TEST_F(RecycleScript, WhatIsBackAlreadyIsNoFault)
{
    folder.write(u"r/a.mp3"_s, "a");
    add(u"r/a.mp3"_s, u"music/a.mp3"_s);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(folder.read(u"music/a.mp3"_s), "a");
}

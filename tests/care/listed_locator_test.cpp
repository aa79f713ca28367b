#include "care/listed_locator.h"
#include "platform/linux/files_in.h"
#include "platform/linux/linux_files.h"
#include "platform/system/path_text.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

/// Names that a disk may hold and a library may ask for, each in spellings that differ.
const QStringList kNames{u"a.mp3"_s,
                         u"A.MP3"_s,
                         u"ä.mp3"_s,
                         u"a\u0308.mp3"_s,
                         u"Ä.mp3"_s,
                         u"it's.mp3"_s,
                         u"two\nlines.mp3"_s,
                         u"back\\slash.mp3"_s,
                         u"*a.mp3"_s,
                         u"damaged\uEFE4.mp3"_s,
                         u"\uEFC3\uEFA4.mp3"_s,
                         u"x"_s,
                         u"b/inner.mp3"_s,
                         u".hidden"_s};
/// Those and what no file has.
const QStringList kAsked =
    kNames + QStringList{u""_s,         u" a.mp3 "_s,     u"."_s,      u".."_s,
                         u"b"_s,        u"b/"_s,          u"/a.mp3"_s, u"b\\inner.mp3"_s,
                         u"gone.mp3"_s, u"../One/a.mp3"_s};

class ListedLocatorTest : public testing::Test
{
protected:
    ListedLocatorTest() { QDir().mkpath(folder.file(u"data"_s)); }

    /// The answer for every asked name in these folders, of the plain and of the listed locator.
    void expectSame(const QStringList& folders)
    {
        LinuxFiles plainFiles;
        FileLocator plain(plainFiles, folder.file(u"data"_s));
        LinuxFiles files;
        ListedLocator listed(files, folder.file(u"data"_s), filesIn);
        for (const QString& at : folders) {
            for (const QString& name : kAsked) {
                QString plainPath = at;
                QString listedPath = at;
                const QString expected = plain.ExistFile(plainPath, name);
                EXPECT_EQ(listed.ExistFile(listedPath, name), expected)
                    << at.toStdString() << " + " << name.toStdString();
                EXPECT_EQ(listedPath, plainPath);
            }
        }
    }

    test::TempFolder folder;
};

} // namespace

TEST_F(ListedLocatorTest, ItFindsWhatTheLookUpOfEachFileFinds)
{
    QRandomGenerator random(20);
    const QStringList folders{u"Music/One"_s, u"music/One"_s,     u"Music/one"_s,
                              u"Müsic/x"_s,   u"Mu\u0308sic/x"_s, u"New/Rock"_s};
    for (const QString& at : folders) {
        QDir().mkpath(folder.file(at));
        for (const QString& name : kNames) {
            if (random.bounded(3) == 0) {
                folder.write(at + u'/' + name, "x");
            }
        }
    }
    QDir().mkpath(folder.file(u"Music/One/gone.mp3"_s)); // a folder with the name of a file
    QFile::link(folder.file(u"New/Rock/x"_s), folder.file(u"music/One/link.mp3"_s));
    QFile::link(folder.file(u"nowhere"_s), folder.file(u"Music/One/.."_s));
    folder.write(u"data/ChangeDir.conf"_s, "C:\\Music ?? " + folder.file(u"Music"_s).toUtf8() +
                                               "\nC:\\Music ?? " + folder.file(u"New"_s).toUtf8() +
                                               "\n/gone ?? " + folder.file(u"New"_s).toUtf8() +
                                               "\n");
    expectSame({folder.file(u"Music/One/"_s), folder.file(u"Music/One"_s),
                folder.file(u"MUSIC/ONE/"_s), folder.file(u"music/one/"_s),
                folder.file(u"Müsic/x/"_s), folder.file(u"MÜSIC/X/"_s),
                folder.file(u"New//Rock/"_s), folder.file(u"Music/../New/Rock/"_s),
                folder.file(u"nothing/here/"_s), folder.file(u"nothing"_s),
                folder.file(u"Music\\One\\"_s), u"C:\\Music\\One\\"_s, u"C:\\Music\\Rock\\"_s,
                u"/gone/Rock/"_s, u"/gone/rock"_s, u""_s, u"/"_s, u"\\\\server\\share\\"_s});
}

TEST_F(ListedLocatorTest, AFileInAFolderOfManyIsFoundByOneLookAtTheFolder)
{
    for (int i = 0; i < 20; ++i) {
        folder.write(u"m/%1.mp3"_s.arg(i), "x");
    }
    int looks = 0;
    LinuxFiles files;
    ListedLocator listed(files, folder.file(u"data"_s), [&looks](const QString& at) {
        ++looks;
        return filesIn(at);
    });
    for (int i = 0; i < 20; ++i) {
        QString path = folder.file(u"m/"_s);
        EXPECT_EQ(listed.ExistFile(path, u"%1.mp3"_s.arg(i)), folder.file(u"m/%1.mp3"_s.arg(i)));
    }
    EXPECT_EQ(looks, 1);
}

TEST_F(ListedLocatorTest, LinksAndPipesCountAsTheyDoForEachFile)
{
    folder.write(u"m/real.mp3"_s, "x");
    QFile::link(folder.file(u"m/real.mp3"_s), folder.file(u"m/link.mp3"_s));
    QFile::link(folder.file(u"m/none"_s), folder.file(u"m/dangling.mp3"_s));
    QFile::link(folder.file(u"m"_s), folder.file(u"m/folder.mp3"_s));
    ASSERT_EQ(::mkfifo(folder.file(u"m/pipe.mp3"_s).toUtf8().constData(), 0600), 0);
    const LinuxFiles files;
    QSet<QString> expected;
    for (const QString& name : files.names(folder.file(u"m"_s))) {
        if (files.fileExists(path::join(folder.file(u"m"_s), name))) {
            expected.insert(name);
        }
    }
    EXPECT_EQ(filesIn(folder.file(u"m/"_s)), expected);
    EXPECT_EQ(expected, (QSet<QString>{u"real.mp3"_s, u"link.mp3"_s, u"pipe.mp3"_s}));
}

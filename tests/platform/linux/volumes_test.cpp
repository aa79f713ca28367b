#include "platform/linux/linux_files.h"
#include "platform/linux/volumes.h"
#include "support/temp_folder.h"

#include <unistd.h>

namespace melovane::volumes {
namespace {

using namespace Qt::Literals::StringLiterals;

const QByteArray kTable =
    "22 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw\n"
    "30 22 8:17 / /media/My\\040Stick rw - vfat /dev/sdb1 rw\n"
    "31 22 0:50 / /mnt/nas rw master:2 propagate_from:1 - nfs4 nas:/music rw\n"
    "32 22 11:0 / /media/disc ro - iso9660 /dev/sr0 ro\n"
    "33 22 0:60 / /run rw - tmpfs tmpfs rw\n"
    "34 22 253:0 / /home rw - ext4 /dev/mapper/home rw\n"
    "35 22 8:18 / /mnt/nas/local rw - ext4 /dev/sdc1 rw\n"
    "broken line\n"
    "36 22 0:70 / /short -\n";

/// A device tree with a fixed disk, a stick, an encrypted stick and a card in a reader.
class DeviceTree : public testing::Test
{
protected:
    DeviceTree()
    {
        device("pci0/ata1/block/sda/sda2", "8:2", "sda2");
        device("pci0/usb2/2-1/block/sdb/sdb1", "8:17", "sdb1");
        device("pci0/mmc/block/mmcblk0/mmcblk0p1", "179:1", "mmcblk0p1");
        folder.write(u"sys/devices/pci0/mmc/block/mmcblk0/removable"_s, "1\n");
        folder.write(u"sys/devices/pci0/ata1/block/sda/removable"_s, "0\n");
        device("virtual/block/dm-0", "253:0", "dm-0");
        device("virtual/block/dm-1", "253:1", "dm-1");
        link("sys/devices/virtual/block/dm-0/slaves/sda2", "sys/devices/pci0/ata1/block/sda/sda2");
        link("sys/devices/virtual/block/dm-1/slaves/sdb1",
             "sys/devices/pci0/usb2/2-1/block/sdb/sdb1");
    }

    void link(const QByteArray& from, const QByteArray& to)
    {
        const QString name = folder.file(QString::fromLatin1(from));
        LinuxFiles().makeFolders(name.left(name.lastIndexOf(u'/')));
        ASSERT_EQ(::symlink(folder.file(QString::fromLatin1(to)).toUtf8().constData(),
                            name.toUtf8().constData()),
                  0);
    }

    void device(const QByteArray& place, const QByteArray& number, const QByteArray& name)
    {
        folder.write(QString::fromLatin1("sys/devices/" + place + "/dev"), number + "\n");
        link("sys/dev/block/" + number, "sys/devices/" + place);
        link("sys/class/block/" + name, "sys/devices/" + place);
    }

    [[nodiscard]] QByteArray sys() const { return folder.file(u"sys"_s).toUtf8(); }

    [[nodiscard]] VolumeKind kindAt(const QByteArray& path) const
    {
        const auto mounts = parseMounts(kTable);
        return kindOf(*mountOf(mounts, path), sys());
    }

    test::TempFolder folder;
};

TEST(Mounts, AreReadWithTheirEscapesAndBrokenLinesAreSkipped)
{
    const auto mounts = parseMounts(kTable);
    ASSERT_EQ(mounts.size(), 7U);
    EXPECT_EQ(mounts[1].point, "/media/My Stick");
    EXPECT_EQ(mounts[1].device, "8:17");
    EXPECT_EQ(mounts[1].type, "vfat");
    EXPECT_EQ(mounts[2].source, "nas:/music");
    EXPECT_TRUE(parseMounts(QByteArray()).empty());
    EXPECT_TRUE(parseMounts(QByteArray("\xFF\0 - - \\", 9)).empty());
}

TEST(Mounts, TheLongestPointAboveAPathIsItsMount)
{
    const auto mounts = parseMounts(kTable);
    EXPECT_EQ(mountOf(mounts, "/mnt/nas/local/x.mp3")->source, "/dev/sdc1");
    EXPECT_EQ(mountOf(mounts, "/mnt/nas/x.mp3")->type, "nfs4");
    EXPECT_EQ(mountOf(mounts, "/mnt/nas2/x.mp3")->point, "/");
    EXPECT_EQ(mountOf(mounts, "/")->point, "/");
    EXPECT_EQ(mountOf(parseMounts(QByteArray()), "/"), nullptr);
}

TEST(Mounts, OfTwoAtOnePointTheLaterHidesTheFirst)
{
    const auto mounts = parseMounts("1 0 8:1 / /x rw - ext4 /dev/a rw\n"
                                    "2 1 8:2 / /x rw - ext4 /dev/b rw\n");
    EXPECT_EQ(mountOf(mounts, "/x/y")->source, "/dev/b");
}

TEST_F(DeviceTree, TellsTheKindOfEachVolume)
{
    EXPECT_EQ(kindAt("/etc/x"), VolumeKind::Fixed);
    EXPECT_EQ(kindAt("/media/My Stick/x"), VolumeKind::Removable);
    EXPECT_EQ(kindAt("/mnt/nas/x"), VolumeKind::Network);
    EXPECT_EQ(kindAt("/media/disc/x"), VolumeKind::Optical);
    EXPECT_EQ(kindAt("/run/x"), VolumeKind::Unknown);
    EXPECT_EQ(kindAt("/home/x"), VolumeKind::Fixed);
}

TEST_F(DeviceTree, LooksBelowEncryptionAndIntoReaders)
{
    EXPECT_EQ(kindOf({"253:1", "/x", "ext4", "/dev/mapper/x"}, sys()), VolumeKind::Removable);
    EXPECT_EQ(kindOf({"179:1", "/x", "vfat", "/dev/mmcblk0p1"}, sys()), VolumeKind::Removable);
}

TEST_F(DeviceTree, AFileSystemWithANumberOfItsOwnIsFoundByItsDevice)
{
    EXPECT_EQ(kindOf({"0:33", "/x", "btrfs", "/dev/sdb1"}, sys()), VolumeKind::Removable);
    EXPECT_EQ(kindOf({"0:33", "/x", "btrfs", "/dev/sda2"}, sys()), VolumeKind::Fixed);
    EXPECT_EQ(kindOf({"0:33", "/x", "btrfs", "/dev/unknown"}, sys()), VolumeKind::Fixed);
}

TEST(Kinds, NetworkAndDiscFileSystemsNeedNoDevice)
{
    for (const char* type : {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "9p"}) {
        EXPECT_EQ(kindOf({"0:9", "/x", type, "x"}, "/nowhere"), VolumeKind::Network) << type;
    }
    EXPECT_EQ(kindOf({"0:9", "/x", "udf", "/dev/loop0"}, "/nowhere"), VolumeKind::Optical);
    EXPECT_EQ(kindOf({"11:0", "/x", "auto", "/dev/sr1"}, "/nowhere"), VolumeKind::Optical);
    EXPECT_EQ(kindOf({"0:9", "/x", "overlay", "overlay"}, "/nowhere"), VolumeKind::Unknown);
}

QByteArray discImage(const QByteArray& name)
{
    QByteArray image(0x8800, '\0');
    image.replace(0x8000, 6, QByteArray("\1CD001", 6));
    image.replace(0x8028, 32, name.leftJustified(32, ' ', true));
    return image;
}

TEST(Labels, ADiscCarriesItsNameInItsHeader)
{
    const test::TempFolder folder;
    EXPECT_EQ(discLabel(folder.write(u"a.iso"_s, discImage("PARTY MIX 3")).toUtf8()),
              u"PARTY MIX 3"_s);
    EXPECT_EQ(discLabel(folder.write(u"b.iso"_s, discImage(QByteArray(32, 'x'))).toUtf8()),
              QString(32, u'x'));
    EXPECT_EQ(discLabel(folder.write(u"c.iso"_s, discImage("")).toUtf8()), QString());
}

TEST(Labels, WhatIsNoDiscHasNoName)
{
    const test::TempFolder folder;
    EXPECT_EQ(discLabel(folder.write(u"short"_s, "x").toUtf8()), QString());
    EXPECT_EQ(discLabel(folder.write(u"zeros"_s, QByteArray(0x9000, '\0')).toUtf8()), QString());
    EXPECT_EQ(discLabel(folder.file(u"missing"_s).toUtf8()), QString());
}

TEST(Labels, ALinkThatLeadsToTheDeviceNamesIt)
{
    const test::TempFolder folder;
    const QByteArray device = folder.write(u"dev/sdb1"_s, "").toUtf8();
    ASSERT_TRUE(LinuxFiles().makeFolder(folder.file(u"labels"_s)));
    const QByteArray labels = folder.file(u"labels"_s).toUtf8();
    ASSERT_EQ(::symlink("../dev/sdb1", (labels + "/My\\x20M\xC3\xBCsik").constData()), 0);
    EXPECT_EQ(labelOf({"8:17", "/x", "vfat", device}, labels), u"My Müsik"_s);
    EXPECT_EQ(labelOf({"8:18", "/x", "vfat", device + "x"}, labels), QString());
    EXPECT_EQ(labelOf({"0:1", "/x", "nfs", "nas:/music"}, labels), QString());
}

TEST(Labels, ADiscWithoutALinkIsAskedItself)
{
    const test::TempFolder folder;
    const QByteArray device = folder.write(u"sr0"_s, discImage("DISC")).toUtf8();
    EXPECT_EQ(labelOf({"11:0", "/x", "iso9660", device}, "/nowhere"), u"DISC"_s);
    EXPECT_EQ(labelOf({"8:1", "/x", "ext4", device}, "/nowhere"), QString());
}

TEST(Volume, APathThatDoesNotExistBelongsToTheNearestFolderAboveIt)
{
    const test::TempFolder folder;
    const QByteArray root = folder.path().toUtf8();
    VolumeSources sources;
    sources.mountTable = folder
                             .write(u"mounts"_s, "1 0 0:1 / / rw - overlay overlay rw\n2 1 0:2 / " +
                                                     root + "/nas rw - nfs nas:/x rw\n")
                             .toUtf8();
    LinuxFiles files(sources);
    ASSERT_TRUE(files.makeFolders(folder.file(u"nas/Music"_s)));
    const VolumeFacts facts = files.volume(folder.file(u"nas/Music/gone/x.mp3"_s));
    EXPECT_EQ(facts.kind, VolumeKind::Network);
    EXPECT_EQ(facts.root, folder.file(u"nas"_s));
    EXPECT_EQ(files.volume(folder.file(u"elsewhere"_s)).root, u"/"_s);
    EXPECT_EQ(files.volume(folder.path() + u"\\nas\\Music"_s).kind, VolumeKind::Network);
}

TEST(Volume, ALinkBelongsToTheVolumeThatItLeadsTo)
{
    const test::TempFolder folder;
    VolumeSources sources;
    sources.mountTable =
        folder
            .write(u"mounts"_s, "1 0 0:1 / / rw - overlay overlay rw\n2 1 0:2 / " +
                                    folder.path().toUtf8() + "/nas rw - nfs nas:/x rw\n")
            .toUtf8();
    LinuxFiles files(sources);
    ASSERT_TRUE(files.makeFolders(folder.file(u"nas"_s)));
    ASSERT_EQ(::symlink("nas", folder.file(u"link"_s).toUtf8().constData()), 0);
    EXPECT_EQ(files.volume(folder.file(u"link/x.mp3"_s)).kind, VolumeKind::Network);
}

TEST(Volume, ThisMachinesTableIsUnderstood)
{
    const test::TempFolder folder;
    EXPECT_TRUE(folder.path().startsWith(LinuxFiles().volume(folder.path()).root));
    EXPECT_FALSE(LinuxFiles().volume(folder.path()).root.isEmpty());
}

TEST(Volume, WithoutATableNothingIsKnown)
{
    VolumeSources sources;
    sources.mountTable = "/nowhere";
    EXPECT_EQ(LinuxFiles(sources).volume(u"/"_s).kind, VolumeKind::Unknown);
    EXPECT_EQ(LinuxFiles(sources).volume(QString()).root, QString());
}

} // namespace
} // namespace melovane::volumes

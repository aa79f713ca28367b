#include "store/change_dir.h"

#include "fuzz/formats/formats.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString recordFault(const changedir::Record& record)
{
    if (record.oldFolder.isEmpty()) {
        return u"an old folder that matches everything"_s;
    }
    const QString below = path::join(record.oldFolder, u"Rock"_s);
    const auto moved = changedir::mapped(record, below);
    const bool hasFolder = !path::components(record.oldFolder).isEmpty();
    if (moved.has_value() != hasFolder) {
        return u"a folder below the old one is not mapped"_s;
    }
    if (moved && path::isSeparator(moved->back())) {
        return u"a separator that was not there"_s;
    }
    if (changedir::mapped(record, path::withSeparator(below)).has_value() != hasFolder) {
        return u"a folder with a separator behind it is not mapped"_s;
    }
    return {};
}

QString check(const QByteArray& bytes)
{
    const QString text = textfile::decode(bytes);
    const auto records = changedir::parse(text);
    if (qsizetype(records.size()) > textfile::lines(text).size()) {
        return u"more mappings than lines"_s;
    }
    QString written;
    for (const changedir::Record& record : records) {
        if (const QString fault = recordFault(record); !fault.isEmpty()) {
            return fault + u": "_s + record.oldFolder + u" ?? "_s + record.newFolder;
        }
        written += record.oldFolder + u" ?? "_s + record.newFolder + u'\n';
        // Any folder may be asked for, the lines themselves too.
        (void)changedir::mapped(record, text.left(200) + u'x');
    }
    for (const changedir::Record& record : records) {
        // A question mark at an edge, or a short line, is read otherwise when it is put together.
        const QString line = record.oldFolder + u" ?? "_s + record.newFolder;
        if (line.count(u'?') == 2 && line.trimmed().size() >= 6) {
            const auto again = changedir::parse(line);
            if (again.size() != 1 || again[0] != record) {
                return u"reads back otherwise: "_s + line;
            }
        }
    }
    return {};
}

std::vector<QByteArray> seeds()
{
    return {"C:\\Music ?? /home/user/Music\r\nD:\\Vinyl\\ ?? /media/vinyl/\r\n",
            QString(u"/mnt/Tr\u00E4ume\?\?/srv/tr\u00E4ume"_s).toUtf8(),
            "\xFF\xFE"
            "C\0:\0\\\0 \0?\0?\0 \0/\0x\0"_ba};
}

} // namespace

Format changeDir()
{
    return {"change_dir", check, seeds};
}

} // namespace melovane::fuzz

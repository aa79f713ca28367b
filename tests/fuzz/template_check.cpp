#include "fuzz/template_check.h"

#include "playlistfiles/template_path.h"

#include <QDir>
#include <QStringList>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes of one name on the file systems of Linux.
constexpr qsizetype kLongestName = 255;

QString nameFault(const QString& name)
{
    if (name.isEmpty() || name == "."_L1 || name == ".."_L1) {
        return u"a name that is none"_s;
    }
    if (name.toUtf8().size() > kLongestName) {
        return u"a name too long"_s;
    }
    for (const QChar sign : name) {
        if (sign.unicode() < 0x20 || sign.unicode() == 0x7F ||
            QStringView(u"\"\\:*?<>|").contains(sign)) {
            return u"a sign that no name may have"_s;
        }
    }
    if (QString::fromUtf8(name.toUtf8()) != name) {
        return u"a name that is not the same in bytes"_s;
    }
    return {};
}

QString pathFault(const QString& path)
{
    const QString folder = u"/target"_s;
    if (path.startsWith(u'/') || !QDir::cleanPath(folder + u'/' + path).startsWith(folder + u'/')) {
        return u"outside the target folder"_s;
    }
    if (!path.endsWith(u".mp3"_s)) {
        return u"another extension"_s;
    }
    for (const QString& name : path.split(u'/')) {
        const QString fault = nameFault(name);
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    return {};
}

} // namespace

QString checkTemplate(const QByteArray& input)
{
    QStringList lines = QString::fromUtf8(input).split(u'\n');
    lines.resize(9);
    for (QString& line : lines) {
        line.replace(u"\\n"_s, u"\n"_s).replace(u"\\0"_s, QString(QChar(u'\0')));
    }
    const TemplateValues values{lines[1], lines[2], lines[3], lines[4],
                                lines[5], lines[6], lines[7], lines[8]};
    Template2Path paths(lines[0]);
    const qint64 count = 1 + input.size() % 20'000;
    for (const QString& path :
         {paths.path(values, 1, count), paths.path(values, count, count), paths.preview(values)}) {
        const QString fault = pathFault(path);
        if (!fault.isEmpty()) {
            return fault + u": "_s + path;
        }
    }
    // What a user may type is a template like any other, and stays what it is.
    const QString typed = Template2Path::typeable(lines[0]);
    if (Template2Path::typeable(typed) != typed) {
        return u"typed twice is not typed once"_s;
    }
    return pathFault(Template2Path(typed).path(values, 1, count));
}

} // namespace melovane::fuzz

#include "fuzz/formats/formats.h"
#include "fuzz/formats/scratch.h"
#include "platform/linux/volumes.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where the header of a disc begins, and what stands in front of it: nothing that is read.
constexpr qsizetype kHeader = 32768;
constexpr qsizetype kLongestName = 32;

QString check(const QByteArray& bytes)
{
    static const Scratch scratch;
    const QString name = scratch.file(u"disc"_s, QByteArray(kHeader, '\0') + bytes);
    const QString label = volumes::discLabel(QFile::encodeName(name));
    if (label.size() > kLongestName) {
        return u"a name longer than its field"_s;
    }
    // Its field is filled up with blanks; other white space belongs to the name.
    return label.startsWith(u' ') || label.endsWith(u' ') ? u"blanks around a name"_s : QString();
}

std::vector<QByteArray> seeds()
{
    QByteArray header = "\1"
                        "CD001\1" +
                        QByteArray(33, ' ') + "MELOVANE" + QByteArray(24, ' ');
    return {header, header.left(50),
            QByteArray(header).replace("MELO", QByteArray("M\0\xC3\x84", 4))};
}

} // namespace

Format disc()
{
    return {"disc", check, seeds};
}

} // namespace melovane::fuzz

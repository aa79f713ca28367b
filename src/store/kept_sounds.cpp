#include "store/kept_sounds.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <QByteArrayView>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes of a hash.
constexpr qsizetype kHash = 16;

/// Prints of some ten million tracks.
constexpr qint64 kLargestFile = qint64{1024} * 1024 * 1024;

QString fileOf(const QString& database)
{
    return database.isEmpty()
               ? QString()
               : path::join(path::parent(database), path::baseName(database) + u".sounds"_s);
}

void readLine(const QByteArray& line, QHash<QString, AudioPrint>& prints)
{
    const QList<QByteArray> parts = line.split(' ');
    bool isNumber = false;
    const qint64 bytes = parts.size() == 3 ? parts[1].toLongLong(&isNumber) : 0;
    if (!isNumber || bytes <= 0 || parts[0].isEmpty() || parts[2].size() != 2 * kHash) {
        return;
    }
    QByteArray hash = QByteArray::fromHex(parts[2]);
    if (hash.size() == kHash) {
        prints.insert(QString::fromLatin1(parts[0]), {bytes, std::move(hash)});
    }
}

} // namespace

KeptSounds::KeptSounds(Files& files, const QString& database)
    : m_files(files)
    , m_file(fileOf(database))
{}

void KeptSounds::add(const QString& fid, const AudioPrint& print)
{
    m_added +=
        fid.toLatin1() + ' ' + QByteArray::number(print.bytes) + ' ' + print.hash.toHex() + '\n';
}

void KeptSounds::write()
{
    const QByteArray added = std::exchange(m_added, {});
    if (added.isEmpty() || m_file.isEmpty()) {
        return;
    }
    try {
        // A line that a killed program has left without its end would swallow the next one.
        m_files.append(m_file, '\n' + added);
    } catch (const IoError&) {
        // See the header.
    }
}

QHash<QString, AudioPrint> KeptSounds::read(const Files& files, const QString& database)
{
    QHash<QString, AudioPrint> prints;
    const QString file = fileOf(database);
    try {
        const QByteArray bytes =
            files.fileExists(file) ? files.read(file, kLargestFile) : QByteArray();
        qsizetype begin = 0;
        for (qsizetype end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n', begin)) {
            readLine(bytes.mid(begin, end - begin), prints);
            begin = end + 1;
        }
    } catch (const IoError&) {
        // See the header.
    }
    return prints;
}

} // namespace melovane

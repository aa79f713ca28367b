#include "platform/linux/ini_profile.h"

#include "platform/linux/file_writing.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/system_names.h"
#include "platform/system/files.h"
#include "platform/system/text_file.h"

#include <sys/stat.h>

#include <ctime>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char kMark[] = "\xEF\xBB\xBF";
/// Files kept in memory: settings, their working copy, languages.
constexpr qsizetype kMaxKnown = 16;
/// A file changed this short a time ago may change again without a new time: ticks of the kernel
/// are 1 to 10 ms, those of some file systems 2 s.
constexpr qint64 kSettledNs = 2'500'000'000;

qint64 nanoseconds(const timespec& time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

bool isSettled(qint64 changed)
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now) - changed > kSettledNs;
}

bool hasMark(const QByteArray& bytes)
{
    return bytes.startsWith(kMark) || bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

/// Line by line, so that one line of an old program does not turn the umlauts of all others.
QString decode(const QByteArray& bytes)
{
    if (hasMark(bytes) || QByteArrayView(bytes).isValidUtf8()) {
        return textfile::decode(bytes);
    }
    QStringList lines;
    for (const QByteArray& line : bytes.split('\n')) {
        // A mark is one at the beginning of the file alone.
        lines.append(hasMark(line) ? QString::fromLatin1(line) : textfile::decode(line));
    }
    return lines.join(u'\n');
}

QByteArray encode(const QString& text, bool mark)
{
    return (mark ? QByteArray(kMark) : QByteArray()) + text.toUtf8();
}

/// The file behind all links, so that every way to it takes the same lock.
QString behindLinks(const QString& file)
{
    return linuxnames::decode(linuxfiles::linkTarget(linuxnames::systemPath(file)));
}

} // namespace

IniProfile::IniProfile(Files& files, std::chrono::milliseconds patience)
    : m_files(files)
    , m_patience(patience)
{}

std::optional<IniProfile::Fingerprint> IniProfile::fingerprintOf(const QString& file)
{
    const QByteArray name = linuxnames::systemPath(file);
    struct stat facts = {};
    if (name.isEmpty() || ::stat(name.constData(), &facts) != 0) {
        return {};
    }
    return Fingerprint{facts.st_dev, facts.st_ino, facts.st_size, nanoseconds(facts.st_mtim),
                       nanoseconds(facts.st_ctim)};
}

const IniText& IniProfile::text(const QString& file) const
{
    static const IniText kEmpty;
    const auto fingerprint = fingerprintOf(file);
    if (!fingerprint) {
        m_known.remove(file);
        return kEmpty;
    }
    const auto known = m_known.find(file);
    if (known != m_known.end() && known->settled && known->fingerprint == *fingerprint) {
        return known->text;
    }
    const bool settled = isSettled(fingerprint->changed);
    QByteArray bytes;
    try {
        bytes = m_files.read(file, kMaxBytes);
    } catch (const IoError&) {
        return kEmpty;
    }
    if (known != m_known.end() && known->bytes == bytes) {
        known->fingerprint = *fingerprint;
        known->settled = settled;
        return known->text;
    }
    if (m_known.size() >= kMaxKnown) {
        m_known.clear();
    }
    const IniText text(decode(bytes));
    return m_known.insert(file, {*fingerprint, settled, bytes, text})->text;
}

std::optional<QString>
IniProfile::value(const QString& file, const QString& section, const QString& key) const
{
    return text(file).value(section, key);
}

QStringList IniProfile::section(const QString& file, const QString& section) const
{
    return text(file).section(section);
}

bool IniProfile::change(const QString& file, const std::function<bool(IniText&)>& edit)
{
    if (file.isEmpty()) {
        // A file without a name has its lock in whatever folder the program stands.
        return false;
    }
    m_unwritten.insert(file);
    try {
        const QString real = behindLinks(file);
        const auto lock = lockFile(real + u".lock"_s, m_patience);
        if (!lock) {
            return false;
        }
        const QByteArray before =
            m_files.facts(real) ? m_files.read(real, kMaxBytes) : QByteArray();
        IniText text(decode(before));
        if (!edit(text)) {
            m_unwritten.remove(file);
            return false;
        }
        const QByteArray after = encode(text.toText(), hasMark(before));
        if (after != before) {
            m_files.writeWhole(real, after);
        }
        m_unwritten.remove(file);
        return true;
    } catch (const IoError&) {
        return false;
    }
}

bool IniProfile::write(const QString& file,
                       const QString& section,
                       const QString& key,
                       const std::optional<QString>& value)
{
    return change(file, [&](IniText& text) {
        return value ? text.set(section, key, *value) : text.remove(section, key);
    });
}

bool IniProfile::writeAll(const QString& file, const std::vector<ProfileEntry>& entries)
{
    bool complete = true;
    const bool written = change(file, [&](IniText& text) {
        for (const ProfileEntry& entry : entries) {
            const bool done = entry.value ? text.set(entry.section, entry.key, *entry.value)
                                          : text.remove(entry.section, entry.key);
            complete = complete && done;
        }
        return true;
    });
    return written && complete;
}

bool IniProfile::replace(const QString& file, const QString& source)
{
    try {
        const QString real = behindLinks(file);
        const auto lock = lockFile(real + u".lock"_s, m_patience);
        if (!lock) {
            return false;
        }
        m_files.writeWhole(real, m_files.read(source, kMaxBytes));
        return true;
    } catch (const IoError&) {
        return false;
    }
}

} // namespace melovane

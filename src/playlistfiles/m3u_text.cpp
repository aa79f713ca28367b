#include "playlistfiles/m3u_text.h"

#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "platform/system/text_file.h"
#include "platform/system/trim_blanks.h"

#include <QStringList>

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters of "#MLV:FID=" and the like. The files of other machines hold these words: keep.
constexpr qsizetype kPrefix = 9;

/// Fields of a line; a line with fewer is ignored as a whole.
constexpr qsizetype kTitleFields = 3;
constexpr qsizetype kVolumeFields = 4;
constexpr qsizetype kMixFields = 6;

QString field(QStringView text)
{
    const QString trimmed = trimBlanks(text);
    return upperCase(trimmed) == "NULL"_L1 ? QString() : trimmed;
}

int number(QStringView text)
{
    return leadingLong(text);
}

/// True for UTF-16 with its mark, or with the zero byte that each plain letter then has.
bool isUtf16(const QByteArray& bytes)
{
    const QByteArrayView head = QByteArrayView(bytes).first(qMin<qsizetype>(bytes.size(), 4));
    if (head.startsWith("\xFF\xFE") || head.startsWith("\xFE\xFF")) {
        return true;
    }
    const auto isZero = [&](qsizetype at) { return head[at] == '\0'; };
    return head.size() == 4 && isZero(0) == isZero(2) && isZero(1) == isZero(3) &&
           isZero(0) != isZero(1);
}

QByteArray utf8Of(QByteArray bytes)
{
    if (bytes[0] == '\0') {
        bytes.prepend("\xFE\xFF");
    } else if (bytes[1] == '\0') {
        bytes.prepend("\xFF\xFE");
    }
    return textfile::decode(bytes).toUtf8();
}

bool isLineEnd(char sign)
{
    return sign == '\n' || sign == '\r';
}

} // namespace

M3uLines::M3uLines(const QByteArray& bytes)
    : m_bytes(isUtf16(bytes) ? utf8Of(bytes) : bytes)
{}

std::optional<QString> M3uLines::next()
{
    if (m_at >= m_bytes.size()) {
        return {};
    }
    const qsizetype start = m_at;
    while (m_at < m_bytes.size() && !isLineEnd(m_bytes[m_at])) {
        ++m_at;
    }
    const QByteArray line = m_bytes.sliced(start, m_at - start);
    const bool isPair =
        m_at + 1 < m_bytes.size() && m_bytes[m_at] == '\r' && m_bytes[m_at + 1] == '\n';
    m_at += isPair ? 2 : 1;
    return textfile::decode(line);
}

std::optional<M3uRecord> M3uParser::take(const QString& line)
{
    if (line.startsWith(u'#')) {
        const QStringView prefix = QStringView(line).left(kPrefix);
        const QString values = line.mid(kPrefix);
        if (prefix == "#MLV:FID="_L1) {
            m_record.FID = field(values);
        } else if (prefix == "#MLV:TIT="_L1) {
            takeTitle(values);
        } else if (prefix == "#MLV:VOL="_L1) {
            takeVolume(values);
        } else if (prefix == "#MLV:MIX="_L1) {
            takeMix(values);
        }
        return {};
    }
    if (trimBlanks(line).isEmpty()) {
        return {};
    }
    M3uRecord record = std::exchange(m_record, {});
    record.line = line;
    record.file = line.left(line.indexOf(u'|'));
    return record;
}

void M3uParser::takeTitle(const QString& values)
{
    const QStringList fields = values.split(u'|');
    if (fields.size() >= kTitleFields) {
        m_record.Titel = field(fields[0]);
        m_record.Interpret = field(fields[1]);
        m_record.Genre = field(fields[2]);
    }
}

void M3uParser::takeVolume(const QString& values)
{
    const QStringList fields = values.split(u'|');
    if (fields.size() >= kVolumeFields) {
        m_record.Volume = number(fields[0]);
        m_record.Pitch = number(fields[1]);
        m_record.BPM = field(fields[2]);
        m_record.DTimeMsec = number(fields[3]);
    }
}

void M3uParser::takeMix(const QString& values)
{
    const QStringList fields = values.split(u'|');
    if (fields.size() >= kMixFields) {
        m_record.FrameStart = number(fields[0]);
        m_record.FrameStop = number(fields[1]);
        m_record.MixTime = number(fields[2]);
        m_record.MixIn = field(fields[3]);
        m_record.MixOut = field(fields[4]);
        m_record.eq = field(fields[5]);
    }
}

} // namespace melovane

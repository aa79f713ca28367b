#include "playlistfiles/template_path.h"

#include "platform/system/leading_number.h"
#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"

#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kExtension = u".mp3"_s;

/// Bytes of one name on the file systems of Linux.
constexpr qsizetype kLongestName = 255;
/// Digits that positions and track numbers have at least.
constexpr int kFewestDigits = 2;

/// The longer marker stands first where one begins like the other.
enum class Marker
{
    GroupName,
    TrackNumber,
    Position,
    Album,
    Interpret,
    Titel,
    Genre,
    Playlist,
    Original
};

constexpr std::array<std::pair<QStringView, Marker>, 9> kMarkers = {{
    {u"%GN", Marker::GroupName},
    {u"%TO", Marker::TrackNumber},
    {u"%TP", Marker::Position},
    {u"%A", Marker::Album},
    {u"%I", Marker::Interpret},
    {u"%N", Marker::Titel},
    {u"%G", Marker::Genre},
    {u"%P", Marker::Playlist},
    {u"%O", Marker::Original},
}};

const std::pair<QStringView, Marker>* markerAt(QStringView text)
{
    for (const auto& marker : kMarkers) {
        if (text.startsWith(marker.first, Qt::CaseInsensitive)) {
            return &marker;
        }
    }
    return nullptr;
}

bool asksFor(QStringView text, Marker wanted)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (const auto* marker = markerAt(text.sliced(at))) {
            if (marker->second == wanted) {
                return true;
            }
            at += marker->first.size() - 1;
        }
    }
    return false;
}

/// A value must not open folders.
QString withoutSeparators(QString value)
{
    for (QChar& sign : value) {
        if (path::isSeparator(sign)) {
            sign = u'_';
        }
    }
    return value;
}

/// The name without its extension; a separator in it is one of the name.
QString withoutExtension(const QString& name)
{
    return path::baseName(withoutSeparators(name));
}

QString withDigits(qint64 number, int digits)
{
    const QString text = QString::number(qAbs(number)).rightJustified(digits, u'0');
    return number < 0 ? u'-' + text : text;
}

bool isForbidden(QChar sign)
{
    return QStringView(u"\"/\\:*?<>|").contains(sign) || sign.unicode() < 0x20 ||
           sign.unicode() == 0x7F;
}

/// Half of a letter has no bytes of its own.
bool isHalfLetter(const QString& text, qsizetype at)
{
    if (text[at].isHighSurrogate()) {
        return at + 1 == text.size() || !text[at + 1].isLowSurrogate();
    }
    return text[at].isLowSurrogate() && (at == 0 || !text[at - 1].isHighSurrogate());
}

bool isOnlyDots(const QString& name)
{
    // Blanks and dots at an end are nothing to some file systems, so ". ." is "." there.
    return std::all_of(name.cbegin(), name.cend(),
                       [](QChar sign) { return sign == u'.' || sign == u' '; });
}

/// The longest beginning of whole letters that fits.
QString cutToBytes(const QString& name, qsizetype bytes)
{
    if (name.toUtf8().size() <= bytes) {
        return name;
    }
    qsizetype used = 0;
    qsizetype end = 0;
    while (end < name.size()) {
        const bool isPair =
            name[end].isHighSurrogate() && end + 1 < name.size() && name[end + 1].isLowSurrogate();
        const qsizetype units = isPair ? 2 : 1;
        used += QStringView(name).sliced(end, units).toUtf8().size();
        if (used > bytes) {
            break;
        }
        end += units;
    }
    return name.first(end);
}

QString joinedParts(const QString& text)
{
    QStringList parts;
    qsizetype start = 0;
    for (qsizetype at = 0; at <= text.size(); ++at) {
        if (at == text.size() || path::isSeparator(text[at])) {
            // Every part may turn out to be the last one, which takes the extension.
            const QString name = nameForPath(text.sliced(start, at - start), kExtension.size());
            if (!name.isEmpty()) {
                parts.append(name);
            }
            start = at + 1;
        }
    }
    return parts.join(path::kSeparator) + kExtension;
}

} // namespace

QString nameForPath(const QString& text, qsizetype room)
{
    QString name = trimBlanks(text);
    for (qsizetype at = 0; at < name.size(); ++at) {
        if (isForbidden(name[at]) || isHalfLetter(name, at)) {
            name[at] = u'_';
        }
    }
    name = trimBlanks(cutToBytes(name, kLongestName - room));
    if (isOnlyDots(name)) {
        name.replace(u'.', u'_');
    }
    if (name.startsWith(u'.')) {
        name[0] = u'_'; // a hidden file or folder, which no player shows
    }
    return name;
}

Template2Path::Template2Path(QString text)
    : m_text(std::move(text))
    , m_asksForTrack(asksFor(m_text, Marker::TrackNumber))
{}

const QStringList& Template2Path::offered()
{
    static const QStringList kOffered = {
        u"%O"_s,
        u"%P/%O"_s,
        u"%P/%TP_%I - %N"_s,
        u"%A/%TO_%I - %N"_s,
        u"%G/%A/%O"_s,
        u"%GN/%P/%I - %N"_s,
        u"%I/%A/%O"_s,
        u"%G/%TP_%I - %N"_s,
        u"%I/%A/%TO_%I - %N"_s,
    };
    return kOffered;
}

QString Template2Path::typeable(QString text)
{
    for (const QChar sign : QStringView(u":*?<>|")) {
        text.remove(sign);
    }
    return text;
}

QString Template2Path::expanded(const TemplateValues& values,
                                const QString& position,
                                const QString& track) const
{
    const auto valueOf = [&](Marker marker) {
        switch (marker) {
        case Marker::GroupName:
            return withoutSeparators(values.GroupName);
        case Marker::TrackNumber:
            return track;
        case Marker::Position:
            return position;
        case Marker::Album:
            return withoutSeparators(values.Album);
        case Marker::Interpret:
            return withoutSeparators(values.Interpret);
        case Marker::Titel:
            return withoutSeparators(values.Titel);
        case Marker::Genre:
            return withoutSeparators(values.Genre);
        case Marker::Playlist:
            return withoutSeparators(values.plname);
        case Marker::Original:
            return withoutExtension(values.DName);
        }
        return QString();
    };
    QString result;
    for (qsizetype at = 0; at < m_text.size();) {
        if (const auto* marker = markerAt(QStringView(m_text).sliced(at))) {
            result += valueOf(marker->second);
            at += marker->first.size();
        } else {
            result += m_text[at];
            ++at;
        }
    }
    return result;
}

QString Template2Path::path(const TemplateValues& values, qint64 position, qint64 count)
{
    const int digits = qMax(kFewestDigits, int(QString::number(count).size()));
    QString track;
    if (m_asksForTrack) {
        const int number = leadingLong(values.Track);
        track = withDigits(number == 0 ? ++m_counter : number, kFewestDigits);
    }
    return joinedParts(expanded(values, withDigits(position, digits), track));
}

QString Template2Path::preview(const TemplateValues& sample) const
{
    const QString number = withDigits(1, kFewestDigits);
    return joinedParts(expanded(sample, number, number));
}

} // namespace melovane

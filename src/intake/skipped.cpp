#include "intake/skipped.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "intake/import_errors.h"
#include "platform/system/path_text.h"
#include "platform/system/readable_name.h"

#include <QHash>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters of a name in a line that tells other things, too.
constexpr qsizetype kMaxInLine = 100;

} // namespace

QString unreadKind(const QString& fileName)
{
    static const QHash<QString, QString> kinds = {
        {u"flac"_s, u"FLAC"_s},
        {u"ogg"_s, u"Ogg"_s},
        {u"oga"_s, u"Ogg"_s},
        {u"opus"_s, u"Opus"_s},
        {u"m4a"_s, u"M4A"_s},
        {u"m4b"_s, u"M4A"_s},
        {u"aac"_s, u"AAC"_s},
        {u"wma"_s, u"WMA"_s},
        {u"wav"_s, u"WAV"_s},
        {u"aif"_s, u"AIFF"_s},
        {u"aiff"_s, u"AIFF"_s},
        {u"ape"_s, u"APE"_s},
        {u"mpc"_s, u"MPC"_s},
        {u"wv"_s, u"WavPack"_s},
        // Lists of other programs: what they name is not read either.
        {u"pls"_s, u"PLS"_s},
        {u"xspf"_s, u"XSPF"_s}};
    return kinds.value(path::extension(fileName).toLower());
}

QString kindsText(const Skipped& skipped)
{
    QStringList parts;
    for (auto kind = skipped.kinds.begin(); kind != skipped.kinds.end(); ++kind) {
        parts.append(u"%1 %2"_s.arg(kind.value()).arg(kind.key()));
    }
    return parts.join(u", "_s);
}

QString skippedText(const ConfigObjects& texts, const Skipped& skipped)
{
    QStringList parts;
    if (!skipped.refused.empty()) {
        parts.append(countedText(
            texts, u"playlist.skipped"_s, qint64(skipped.refused.size()),
            readableName(shortened(path::fileName(skipped.refused.front().path), kMaxInLine))));
    }
    if (!skipped.kinds.isEmpty()) {
        parts.append(texts.text(u"intake.kinds", kindsText(skipped)));
    }
    return parts.join(u' ');
}

QString reasonText(const ConfigObjects& texts, const Refusal& refusal)
{
    const QString known = texts.text(refusal.detail);
    const QString detail = known.isEmpty() ? refusal.detail : known;
    if (refusal.code == 0) {
        return detail;
    }
    QString text = texts.text(u"importerror.%1"_s.arg(refusal.code));
    if (text.isEmpty()) {
        text = importerror::GetMessageText(refusal.code);
    }
    return detail.isEmpty() ? text : u"%1 (%2)"_s.arg(text, detail);
}

} // namespace melovane

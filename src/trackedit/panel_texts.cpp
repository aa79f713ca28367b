#include "trackedit/panel_texts.h"

#include "config/config_objects.h"
#include "platform/system/trim_blanks.h"
#include "store/milli_sec_to_min.h"
#include "trackedit/ks_edit_fid.h"
#include "views/track_look.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace melovane::paneltexts {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Format of positions, "mm:ss:hh".
constexpr int kPositionFormat = 3;

/// The greatest level, and twice that: full scale.
constexpr double kGreatestLevel = 32767;
constexpr double kFullScale = 65534;

/// A level that nobody has measured.
constexpr double kUnknown = 1;

/// Bytes in a megabyte of the desktop.
constexpr double kMegabyte = 1'000'000;

/// In the numbers of the language of the window.
QString sizeText(double bytes, const ConfigObjects& texts)
{
    const QLocale locale(texts.text(u"Sprach.Code"));
    return texts.text(u"edittag.size", locale.toString(bytes / kMegabyte, 'f', 1));
}

} // namespace

int optionOfNote(const Value& note)
{
    const QString text = trimBlanks(note.toText());
    const bool isMark = text.size() == 1 && text[0] >= u'1' && text[0] <= u'5';
    return isMark ? kRatings - text.toInt() : 0;
}

QString startText(int frames)
{
    const double ms = std::clamp(frames * Mod_MilliSecToMin::kFrameMs, -1e9, 2e9);
    return Mod_MilliSecToMin::MilliSecToMin(int(ms), kPositionFormat);
}

QString stopText(int frames, const QString& length)
{
    return frames <= 0 ? length : startText(frames);
}

double levelDecibels(double level)
{
    if (!(level >= 1)) {
        return kUnknown;
    }
    const double decibels = 20 * std::log10(std::min(level, kGreatestLevel) * 2 / kFullScale);
    return std::floor(decibels * 100) / 100;
}

QString levelText(double level)
{
    const double decibels = levelDecibels(level);
    return decibels == kUnknown ? u"??"_s : QString::number(decibels, 'f', 2) + u" db"_s;
}

QString factText(const KsField& field, const ConfigObjects& texts)
{
    const Value& value = field.value;
    switch (field.Display) {
    case KsDisplay::Moment: {
        const QDateTime moment = value.toDateTime();
        const bool isDay = moment.time() == QTime(0, 0) || field.DatabaseName != "Play"_L1;
        return moment.toString(isDay ? u"dd.MM.yyyy"_s : u"dd.MM.yyyy HH:mm"_s);
    }
    case KsDisplay::BitRate:
        return bitRateText(value);
    case KsDisplay::Position:
        return startText(value.toLong());
    case KsDisplay::Level:
        return levelText(value.toDouble());
    case KsDisplay::Plain:
    case KsDisplay::Genre:
    case KsDisplay::Rating:
    case KsDisplay::Number:
    case KsDisplay::Setting:
    case KsDisplay::Drive:
    case KsDisplay::Title:
        break;
    }
    if (field.DatabaseName == "DLen"_L1) {
        return value.toDouble() > 0 ? sizeText(value.toDouble(), texts) : QString();
    }
    return value.toText();
}

} // namespace melovane::paneltexts

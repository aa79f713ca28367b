#include "siblings/melovanejob/job_settings.h"

#include "platform/system/private_profile.h"
#include "platform/system/trim_blanks.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Sections of the file, one a job: keep, users have them in their files.
constexpr std::array kSections{u"Tags", u"Lists", u"Trees"};
static_assert(kSections.size() == kJobKinds.size());

/// A day has no more use for than these; what stands behind them is no list of times.
constexpr qsizetype kMaxTimes = 48;
constexpr qsizetype kMaxLetters = 1000;

/// Digits alone, in the given range.
std::optional<int> wholeNumber(QStringView text, int least, int greatest)
{
    const bool digits = !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar sign) {
        return sign >= u'0' && sign <= u'9';
    });
    bool fits = false;
    const int number = text.toInt(&fits);
    return digits && fits && number >= least && number <= greatest ? std::optional(number)
                                                                   : std::nullopt;
}

/// "h:mm" or "hh:mm".
std::optional<QTime> timeOfDay(QStringView text)
{
    const qsizetype colon = text.indexOf(u':');
    if (colon < 1 || colon > 2 || text.size() != colon + 3) {
        return {};
    }
    const auto hour = wholeNumber(text.first(colon), 0, 23);
    const auto minute = wholeNumber(text.sliced(colon + 1), 0, 59);
    return hour && minute ? std::optional(QTime(*hour, *minute)) : std::nullopt;
}

QList<QTime> timesOfDay(QString text)
{
    QList<QTime> times;
    text.truncate(kMaxLetters);
    text.replace(u',', u' ').replace(u';', u' ').replace(u'\t', u' ');
    for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
        const auto time = timeOfDay(word);
        if (time && !times.contains(*time) && times.size() < kMaxTimes) {
            times.append(*time);
        }
    }
    std::sort(times.begin(), times.end());
    return times;
}

} // namespace

JobSettings readJobSettings(const PrivateProfile& profile, const QString& file)
{
    const auto number = [&](const QString& section, const QString& key, int least, int greatest) {
        return wholeNumber(trimBlanks(profile.value(file, section, key).value_or(QString())), least,
                           greatest);
    };
    JobSettings settings;
    if (const auto pause = number(u"Global"_s, u"Pause"_s, 5, 24 * 60 * 60)) {
        settings.pause = std::chrono::seconds(*pause);
    }
    if (const auto retry = number(u"Global"_s, u"Retry"_s, 1, 24 * 60)) {
        settings.retry = std::chrono::minutes(*retry);
    }
    for (const JobKind kind : kJobKinds) {
        const QString section = QStringView(kSections[size_t(kind)]).toString();
        JobRule& rule = settings.rules[size_t(kind)];
        rule.whenIdle = number(section, u"Idle"_s, 0, 1).value_or(rule.whenIdle ? 1 : 0) != 0;
        rule.times = timesOfDay(profile.value(file, section, u"Times"_s).value_or(QString()));
    }
    return settings;
}

} // namespace melovane

#include "care/backup_record.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kTimeForm = u"yyyyMMdd_HHmmss"_s;

constexpr int kDays = 7;
constexpr int kWeeks = 4;
constexpr int kMonths = 12;

struct OccasionWord
{
    BackupOccasion occasion;
    QLatin1StringView word; ///< stands in archives: keep
};

constexpr std::array kOccasions{
    OccasionWord{BackupOccasion::Daily, "daily"_L1},
    OccasionWord{BackupOccasion::ByHand, "hand"_L1},
    OccasionWord{BackupOccasion::Cleaning, "cleaning"_L1},
    OccasionWord{BackupOccasion::Relink, "relink"_L1},
    OccasionWord{BackupOccasion::Merge, "merge"_L1},
    OccasionWord{BackupOccasion::Restore, "restore"_L1},
    OccasionWord{BackupOccasion::Upgrade, "upgrade"_L1},
};

QLatin1StringView wordOf(BackupOccasion occasion)
{
    return std::find_if(kOccasions.begin(), kOccasions.end(),
                        [occasion](const OccasionWord& o) { return o.occasion == occasion; })
        ->word;
}

void readFact(QStringView key, const QString& value, Backup& backup)
{
    if (key == u"tracks") {
        backup.tracks = value.toInt();
    } else if (key == u"lists") {
        backup.lists = value.toInt();
    } else if (key == u"library") {
        backup.library = value;
    } else if (key == u"occasion") {
        const auto* const known =
            std::find_if(kOccasions.begin(), kOccasions.end(),
                         [&value](const OccasionWord& o) { return value == o.word; });
        backup.occasion = known == kOccasions.end() ? BackupOccasion::ByHand : known->occasion;
    }
}

/// Chosen by hand, or needed by who goes back to an older release.
bool staysForGood(const Backup& backup)
{
    return backup.occasion == BackupOccasion::ByHand || backup.occasion == BackupOccasion::Upgrade;
}

/// Takes the first of each period as long as there are periods left.
class Periods
{
public:
    explicit Periods(int count)
        : m_count(count)
    {}

    bool takes(int period)
    {
        if (m_taken.contains(period) || m_taken.size() >= m_count) {
            return false;
        }
        m_taken.insert(period);
        return true;
    }

private:
    qsizetype m_count;
    QSet<int> m_taken;
};

int weekOf(const QDate& day)
{
    int year = 0;
    const int week = day.weekNumber(&year);
    return year * 100 + week;
}

} // namespace

bool Backup::isPlain() const
{
    return name.endsWith(u".mdb"_s);
}

QString backupName(int level, const QDateTime& made)
{
    return u"Melovane.Backup.(%1).%2.tar.zst"_s.arg(level).arg(made.toString(kTimeForm));
}

std::optional<Backup> backupOfName(const QString& name)
{
    static const QRegularExpression form(
        u"^Melovane\\.Backup\\.\\((\\d{1,9})\\)\\.(\\d{8}_\\d{6})\\.(mdb|tar\\.zst)$"_s);
    const QRegularExpressionMatch match = form.match(name);
    const QDateTime made = QDateTime::fromString(match.captured(2), kTimeForm);
    if (!match.hasMatch() || !made.isValid()) {
        return std::nullopt;
    }
    Backup backup;
    backup.name = name;
    backup.made = made;
    backup.level = match.captured(1).toInt();
    return backup;
}

QByteArray factsText(const Backup& backup)
{
    return u"occasion=%1\ntracks=%2\nlists=%3\nlibrary=%4\n"_s
        .arg(wordOf(backup.occasion), QString::number(backup.tracks), QString::number(backup.lists),
             backup.library)
        .toUtf8();
}

void readFacts(const QByteArray& text, Backup& backup)
{
    for (const QString& line : QString::fromUtf8(text).split(u'\n')) {
        const qsizetype sign = line.indexOf(u'=');
        if (sign > 0) {
            readFact(QStringView(line).left(sign), line.mid(sign + 1), backup);
        }
    }
}

QStringList backupsToDrop(const std::vector<Backup>& backups, const QDate& today)
{
    std::vector<Backup> newestFirst = backups;
    std::stable_sort(newestFirst.begin(), newestFirst.end(),
                     [](const Backup& a, const Backup& b) { return a.made > b.made; });
    Periods days(kDays);
    Periods weeks(kWeeks);
    Periods months(kMonths);
    bool hasGood = false;
    QStringList dropped;
    for (const Backup& backup : newestFirst) {
        const QDate day = backup.made.date();
        const bool isRecent = day.daysTo(today) < kDays;
        bool stays = staysForGood(backup);
        if (backup.state == BackupState::Damaged) {
            stays = stays || isRecent;
        } else {
            const bool isOfDay = days.takes(int(day.toJulianDay()));
            const bool isOfWeek = weeks.takes(weekOf(day));
            const bool isOfMonth = months.takes(day.year() * 100 + day.month());
            const bool isSafety = backup.occasion != BackupOccasion::Daily && isRecent;
            stays = stays || !hasGood || isOfDay || isOfWeek || isOfMonth || isSafety;
            hasGood = true;
        }
        if (!stays) {
            dropped.append(backup.name);
        }
    }
    return dropped;
}

} // namespace melovane

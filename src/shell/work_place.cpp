#include "shell/work_place.h"

#include "platform/db/db_error.h"
#include "platform/system/files.h"
#include "platform/system/ini_text.h"
#include "platform/system/timers.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A place is a few lines; a larger file is none.
constexpr qint64 kMaxBytes = 1024LL * 1024;

/// As much work as a kill costs.
constexpr auto kInterval = 2s;

const QString kSection = u"Place"_s;

} // namespace

WorkPlace::WorkPlace(Files& files, MessageLoop& loop, QString file, std::vector<PlacePart> parts)
    : m_files(files)
    , m_file(std::move(file))
    , m_parts(std::move(parts))
    , m_timer(loop.makeTimer(kInterval, [this] { note(); }))
{}

WorkPlace::~WorkPlace() = default;

void WorkPlace::begin(bool goesBack)
{
    if (goesBack) {
        restore();
    }
    // What a start has found needs not be kept again.
    for (const PlacePart& part : m_parts) {
        if (part.keep) {
            m_noted[part.name] = part.place();
        }
    }
    m_timer->start();
}

void WorkPlace::restore()
{
    if (!m_files.fileExists(m_file)) {
        return;
    }
    QByteArray bytes;
    try {
        bytes = m_files.read(m_file, kMaxBytes);
    } catch (const IoError&) {
        return;
    }
    // A place that makes the program die must not do so again and again.
    m_files.remove(m_file);
    const IniText text(QString::fromUtf8(bytes));
    for (const PlacePart& part : m_parts) {
        const QString place = text.value(kSection, part.name).value_or(QString());
        if (part.restore && !place.isEmpty()) {
            part.restore(place);
        }
    }
}

void WorkPlace::note()
{
    QHash<QString, QString> now;
    try {
        for (const PlacePart& part : m_parts) {
            now[part.name] = part.place();
        }
    } catch (const DbError&) {
        return; // The view that has failed has told it. What was noted last holds.
    }
    if (now == m_noted) {
        return;
    }
    IniText text;
    for (const PlacePart& part : m_parts) {
        const QString& place = now[part.name];
        if (part.keep && m_noted.value(part.name) != place) {
            part.keep();
        }
        text.set(kSection, part.name, place);
    }
    m_noted = now;
    try {
        m_files.writeWhole(m_file, text.toText().toUtf8());
    } catch (const IoError&) {
        return; // The next change tries again.
    }
}

void WorkPlace::end(bool isLeft)
{
    m_timer->stop();
    if (!isLeft) {
        m_files.remove(m_file);
    }
}

} // namespace melovane

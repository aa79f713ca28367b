#include "shell/opened_files.h"

#include "platform/db/sql_text.h"
#include "platform/system/path_text.h"
#include "platform/system/timers.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <chrono>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Of one message, in bytes; its text carries no more than 64 KB.
constexpr qsizetype kMaxText = 60'000;

/// Between two looks whether another work is over.
constexpr auto kPause = 50ms;

QByteArray textOf(const QJsonArray& places)
{
    return QJsonDocument(places).toJson(QJsonDocument::Compact);
}

} // namespace

OpenedFiles::OpenedFiles(Parts parts)
    : m_parts(std::move(parts))
    , m_timer(m_parts.loop.makeTimer(kPause, [this] { take(); }))
{}

OpenedFiles::~OpenedFiles() = default;

void OpenedFiles::open(const QStringList& places)
{
    std::copy_if(places.begin(), places.end(), std::back_inserter(m_waiting),
                 [](const QString& place) { return path::isAbsolute(place); });
    if (!m_waiting.isEmpty()) {
        m_timer->start();
    }
}

void OpenedFiles::take()
{
    if (m_parts.loop.isNested()) {
        return;
    }
    m_timer->stop();
    const QStringList places = std::exchange(m_waiting, {});
    QStringList lists;
    QStringList tracks;
    for (const QString& place : places) {
        (m_parts.isList(place) ? lists : tracks).append(place);
    }
    if (!tracks.isEmpty()) {
        QStringList fids;
        for (const QString& fid : m_parts.tracksOf(tracks)) {
            fids.append(sql::text(fid));
        }
        if (!fids.isEmpty()) {
            m_parts.show(u"FID in ("_s + fids.join(u',') + u')');
        }
    }
    if (!lists.isEmpty()) {
        m_parts.importLists(lists);
    }
}

QStringList OpenedFiles::texts(const QStringList& places)
{
    QStringList texts;
    QJsonArray some;
    qsizetype bytes = 0;
    const auto close = [&] {
        if (!some.isEmpty()) {
            texts.append(QString::fromUtf8(textOf(some)));
        }
        some = {};
        bytes = 0;
    };
    for (const QString& place : places) {
        const qsizetype more = textOf({place}).size();
        if (bytes + more > kMaxText) {
            close();
        }
        some.append(place);
        bytes += more;
    }
    close();
    return texts;
}

QStringList OpenedFiles::fromText(const QString& text)
{
    QStringList places;
    for (const auto& place : QJsonDocument::fromJson(text.toUtf8()).array()) {
        places.append(place.toString());
    }
    return places;
}

} // namespace melovane

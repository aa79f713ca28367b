#include "intake/drop_commands.h"

#include "config/counted_text.h"
#include "platform/controls/pointer_control.h"
#include "platform/controls/progress_window.h"
#include "platform/system/path_text.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Milliseconds of work between two turns of the message loop.
constexpr qint64 kBetweenTurns = 40;

} // namespace

DropCommands::DropCommands(DropParts parts)
    : m_parts(std::move(parts))
{}

DroppedTracks::Result DropCommands::take(const QStringList& places)
{
    const BusyCursor busy(m_parts.pointer);
    const auto window = m_parts.openProgress(m_parts.texts.text(u"drop.title"_s));
    QElapsedTimer sinceTurn;
    const auto goOn = [&](const QString& place, qint64 done, qint64 size) {
        if (sinceTurn.isValid() && sinceTurn.elapsed() < kBetweenTurns) {
            return true;
        }
        const QString name = path::fileName(place);
        const bool goesOn = window->show(name.isEmpty() ? place : name, done, size);
        sinceTurn.start();
        return goesOn;
    };
    return DroppedTracks(m_parts.engine, m_parts.settings, m_parts.files, m_parts.reader,
                         m_parts.clock)
        .take(places, goOn);
}

QString DropCommands::told(const DroppedTracks::Result& result) const
{
    const ConfigObjects& texts = m_parts.texts;
    if (result.isGivenUp) {
        return texts.text(u"m3u.insert.cancelled"_s);
    }
    QStringList words;
    if (result.fids.isEmpty()) {
        words.append(texts.text(u"playlist.notracks"_s));
    }
    if (result.beyond > 0) {
        words.append(countedText(texts, u"drop.beyond"_s, result.beyond, DroppedTracks::kMaxFiles));
    }
    if (!result.skipped.isEmpty()) {
        words.append(skippedText(texts, result.skipped));
    }
    return words.join(u": "_s);
}

QStringList DropCommands::tracksOf(const QStringList& places)
{
    if (m_busy) {
        return {};
    }
    const QScopedValueRollback busy(m_busy, true);
    const DroppedTracks::Result result = take(places);
    for (const Refusal& refusal : result.skipped.refused) {
        m_parts.logRefusal(refusal);
    }
    if (result.entered > 0) {
        m_parts.libraryChanged();
    }
    if (const QString words = told(result); !words.isEmpty()) {
        m_parts.showStatusText(words);
    }
    return result.fids;
}

} // namespace melovane

#include "bus/event_guard.h"

#include "config/config_objects.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString databaseFaultText(const ConfigObjects& texts,
                          int number,
                          const QString& text,
                          const QString& database)
{
    const QString known = texts.text(u"dberror.%1"_s.arg(number), database);
    return known.isEmpty() ? text : known;
}

EventGuard::EventGuard(const ConfigObjects& texts,
                       std::function<QString()> database,
                       std::function<void(const QString&)> tell,
                       ErrorSink log)
    : m_texts(texts)
    , m_database(std::move(database))
    , m_tell(std::move(tell))
    , m_log(std::move(log))
{}

bool EventGuard::run(const QString& where, const Work& work) const
{
    try {
        work();
        return true;
    } catch (const DbError& error) {
        failed(where, error.text(),
               databaseFaultText(m_texts, error.number(), error.text(), m_database()));
    } catch (const IoError& error) {
        const QString text = QString::fromUtf8(error.what());
        failed(where, text, m_texts.text(u"fehler.unerwartet", text));
    }
    return false;
}

void EventGuard::failed(const QString& where, const QString& logged, const QString& shown) const
{
    if (m_log) {
        m_log(where, logged);
    }
    // The status line has one line, texts of dialogs have several.
    m_tell(QString(shown).replace(u'\n', u' '));
}

} // namespace melovane

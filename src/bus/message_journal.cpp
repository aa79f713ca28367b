#include "bus/message_journal.h"

#include "bus/message_numbers.h"
#include "platform/system/clock.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Messages that are remembered.
constexpr size_t kMax = 40;

/// Characters of a text that a line shows.
constexpr qsizetype kShownText = 80;

QString shown(QString text)
{
    text = text.left(kShownText);
    for (QChar& letter : text) {
        letter = letter.isPrint() ? letter : QChar(u'.');
    }
    return text;
}

QString outcomeOf(qint32 answer)
{
    return u"= "_s + QString::number(answer);
}

} // namespace

QString journalLine(const JournalEntry& entry)
{
    QString line = entry.moment.toString(u"HH:mm:ss  "_s);
    line += entry.target == 0 ? u"<"_s : u"> "_s + QString::number(entry.target);
    line += u"  "_s + QString::number(entry.id) + u' ' + QString::number(entry.wParam) + u' ';
    line += entry.text ? u'"' + shown(*entry.text) + u'"' : QString::number(entry.lParam);
    return entry.outcome.isEmpty() ? line : line + u"  "_s + entry.outcome;
}

JournalControl::JournalControl(std::unique_ptr<KSMessage> control, const Clock& clock)
    : m_control(std::move(control))
    , m_clock(clock)
    , m_lives(std::make_shared<bool>(true))
{
    setMessageNumber({});
    setMessageText({});
}

QStringList JournalControl::lines() const
{
    QStringList result;
    for (const JournalEntry& entry : m_entries) {
        result.append(journalLine(entry));
    }
    return result;
}

MessageHandle JournalControl::handle() const
{
    return m_control->handle();
}

void JournalControl::setTarget(MessageHandle target)
{
    m_control->setTarget(target);
}

MessageHandle JournalControl::target() const
{
    return m_control->target();
}

JournalEntry JournalControl::sent(qint32 id, qint32 wParam, qint32 lParam) const
{
    return {.moment = m_clock.now(),
            .target = m_control->target(),
            .id = id,
            .wParam = wParam,
            .lParam = lParam};
}

void JournalControl::keep(JournalEntry entry)
{
    m_entries.push_back(std::move(entry));
    if (m_entries.size() > kMax) {
        m_entries.pop_front();
    }
}

qint32 JournalControl::Send(qint32 id, qint32 wParam, qint32 lParam)
{
    const std::weak_ptr<bool> lives = m_lives;
    JournalEntry entry = sent(id, wParam, lParam);
    const qint32 answer = m_control->Send(id, wParam, lParam);
    entry.outcome = outcomeOf(answer);
    if (!lives.expired()) {
        keep(std::move(entry));
    }
    return answer;
}

bool JournalControl::SendWithin(std::chrono::milliseconds patience,
                                qint32 id,
                                qint32 wParam,
                                qint32 lParam)
{
    const std::weak_ptr<bool> lives = m_lives;
    JournalEntry entry = sent(id, wParam, lParam);
    const bool isAnswered = m_control->SendWithin(patience, id, wParam, lParam);
    entry.outcome = isAnswered ? u"="_s : u"-"_s;
    if (!lives.expired()) {
        keep(std::move(entry));
    }
    return isAnswered;
}

qint32 JournalControl::SendText(qint32 id, qint32 number, const QString& text)
{
    const std::weak_ptr<bool> lives = m_lives;
    JournalEntry entry = sent(id, number, 0);
    entry.text = text;
    const qint32 answer = m_control->SendText(id, number, text);
    entry.outcome = outcomeOf(answer);
    if (!lives.expired()) {
        keep(std::move(entry));
    }
    return answer;
}

void JournalControl::Post(qint32 id, qint32 wParam, qint32 lParam)
{
    m_control->Post(id, wParam, lParam);
    keep(sent(id, wParam, lParam));
}

void JournalControl::PostText(qint32 id, qint32 number, const QString& text)
{
    m_control->PostText(id, number, text);
    JournalEntry entry = sent(id, number, 0);
    entry.text = text;
    keep(std::move(entry));
}

void JournalControl::setMessageNumber(NumberHandler handler)
{
    m_control->setMessageNumber([this, lives = std::weak_ptr<bool>(m_lives),
                                 handler = std::move(handler)](qint32 id, qint32 wParam,
                                                               qint32 lParam) {
        if (id == message::kTellJournal) {
            tell(lParam);
            return 1;
        }
        JournalEntry entry{.moment = m_clock.now(), .id = id, .wParam = wParam, .lParam = lParam};
        const auto stillLives = lives;
        const qint32 answer = handler ? handler(id, wParam, lParam) : 0;
        entry.outcome = outcomeOf(answer);
        if (!stillLives.expired()) {
            keep(std::move(entry));
        }
        return answer;
    });
}

void JournalControl::setMessageText(TextHandler handler)
{
    m_control->setMessageText(
        [this, lives = std::weak_ptr<bool>(m_lives),
         handler = std::move(handler)](qint32 id, qint32 number, const QString& text) {
            JournalEntry entry{.moment = m_clock.now(), .id = id, .wParam = number, .text = text};
            const auto stillLives = lives;
            const qint32 answer = handler ? handler(id, number, text) : 0;
            entry.outcome = outcomeOf(answer);
            if (!stillLives.expired()) {
                keep(std::move(entry));
            }
            return answer;
        });
}

/// The target of the control is the business of whoever else uses it.
void JournalControl::tell(MessageHandle asker)
{
    const MessageHandle former = m_control->target();
    m_control->setTarget(asker);
    m_control->SendText(message::kTellJournal, 0, lines().join(u'\n'));
    m_control->setTarget(former);
}

} // namespace melovane

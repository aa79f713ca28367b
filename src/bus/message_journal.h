#pragma once

#include "platform/message/message_control.h"

#include <QDateTime>
#include <QStringList>

#include <deque>
#include <memory>
#include <optional>

namespace melovane {

class Clock;

/// One message that a control has sent or got.
struct JournalEntry
{
    QDateTime moment;
    MessageHandle target = 0; ///< 0 for one that has arrived: nobody knows who sent it
    qint32 id = 0;
    qint32 wParam = 0; ///< of a text its number
    qint32 lParam = 0;
    std::optional<QString> text = {};
    QString outcome = {}; ///< "= 5", "=" for an answer of no number, "-" for none; empty for a post
};

/// "23:04:05  > 4711  1039 0 0  = 1": the moment, sent or arrived, who gets it, number and values,
/// the answer. One line whatever the text holds.
[[nodiscard]] QString journalLine(const JournalEntry& entry);

/// A message control that remembers what went through it last, and tells it to whom sends it
/// kTellJournal; such a question is not remembered itself.
class JournalControl : public KSMessage
{
public:
    /// \param control not null
    /// \param clock   outlives this
    JournalControl(std::unique_ptr<KSMessage> control, const Clock& clock);

    /// The last messages, the newest last.
    [[nodiscard]] QStringList lines() const;

    [[nodiscard]] MessageHandle handle() const override;
    void setTarget(MessageHandle target) override;
    [[nodiscard]] MessageHandle target() const override;
    qint32 Send(qint32 id, qint32 wParam, qint32 lParam) override;
    bool SendWithin(std::chrono::milliseconds patience,
                    qint32 id,
                    qint32 wParam,
                    qint32 lParam) override;
    qint32 SendText(qint32 id, qint32 number, const QString& text) override;
    void Post(qint32 id, qint32 wParam, qint32 lParam) override;
    void PostText(qint32 id, qint32 number, const QString& text) override;
    void setMessageNumber(NumberHandler handler) override;
    void setMessageText(TextHandler handler) override;

private:
    [[nodiscard]] JournalEntry sent(qint32 id, qint32 wParam, qint32 lParam) const;
    void keep(JournalEntry entry);
    void tell(MessageHandle asker);

    std::unique_ptr<KSMessage> m_control;
    const Clock& m_clock;
    std::deque<JournalEntry> m_entries;
    std::shared_ptr<bool> m_lives; ///< a handler may destroy the control that it was called for
};

} // namespace melovane

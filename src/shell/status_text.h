#pragma once

#include <QString>

#include <memory>

namespace melovane {

class MessageLoop;
class StatusLine;
class Timer;

/// The text in panel "MSG": stands for five seconds, then runs off to the left and leaves the panel
/// to the text that is kept, if there is one.
class StatusText
{
public:
    StatusText(MessageLoop& loop, StatusLine& line);
    ~StatusText();

    /// Shows a text; the five seconds begin anew.
    void show(const QString& text);

    /// A text that stands whenever no other does, until it is an empty one.
    void keep(const QString& text);

private:
    void startRunning();
    void runOn();

    StatusLine& m_line;
    QString m_marquee;
    QString m_kept;
    std::unique_ptr<Timer> m_timerMsg1; ///< `TimerMsg1`: how long a text stands
    std::unique_ptr<Timer> m_timerMsg2; ///< `TimerMsg2`: one step of the run
};

} // namespace melovane

#pragma once

#include <QString>

#include <memory>

namespace melovane {

class MessageLoop;
class StatusLine;
class Timer;

/// The text in panel "MSG": stands for five seconds, then runs off to the left.
class StatusText
{
public:
    StatusText(MessageLoop& loop, StatusLine& line);
    ~StatusText();

    /// Shows a text; the five seconds begin anew.
    void show(const QString& text);

private:
    void startRunning();
    void runOn();

    StatusLine& m_line;
    QString m_marquee;
    std::unique_ptr<Timer> m_timerMsg1; ///< `TimerMsg1`: how long a text stands
    std::unique_ptr<Timer> m_timerMsg2; ///< `TimerMsg2`: one step of the run
};

} // namespace melovane

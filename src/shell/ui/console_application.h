#pragma once

#include <QApplication>

#include <functional>

namespace melovane {

/// The application object of the console.
///
/// It hands each event to a guard, so that a failure that no handler has stopped ends neither the
/// message loop nor the program.
class ConsoleApplication : public QApplication
{
public:
    using QApplication::QApplication;

    /// Runs the work that it is given, and stops what fails in it. It outlives the last event, or
    /// is taken away by an empty one.
    using Guard = std::function<void(const std::function<void()>& work)>;

    void setGuard(Guard guard) { m_guard = std::move(guard); }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    Guard m_guard;
};

} // namespace melovane

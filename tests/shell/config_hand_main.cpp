// The settings program with a user who does what the arguments behind the console's control say:
//   set ID VALUE    a control of the window: a tick, a number, a choice or a text
//   key COMMAND     the key Ctrl+Shift+F8 for a command
//   reset PAGE      everything on the page of that number is as it ships
//   apply           what was chosen is written, and told
//   say             what the window says below goes to the output
//   wait FILE       until another process has made that file
// It ends behind the last step.

#include "settings/setting_pages.h"
#include "settings/ui/settings_window.h"
#include "siblings/mlvconfig/ui/run_config.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>
#include <QTreeWidget>

#include <cstdio>

namespace {

using namespace melovane;
using melovane::test::kLongWaitMs;
using namespace Qt::Literals::StringLiterals;

/// Waits for the window to be shown, and uses it.
class Hand : public QObject
{
public:
    explicit Hand(QStringList steps)
        : m_steps(std::move(steps))
    {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* const window = qobject_cast<SettingsWindow*>(watched);
        if (window != nullptr && event->type() == QEvent::Show && !std::exchange(m_isDone, true)) {
            QMetaObject::invokeMethod(
                this, [this, window] { use(*window); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void use(SettingsWindow& window)
    {
        bool isRight = true;
        for (qsizetype at = 0; at < m_steps.size() && isRight;) {
            const QString step = m_steps[at++];
            if (step == "set"_L1) {
                isRight = set(window, m_steps.value(at), m_steps.value(at + 1));
                at += 2;
            } else if (step == "key"_L1) {
                isRight = bind(window, m_steps.value(at++));
            } else if (step == "reset"_L1) {
                window.showPage(SettingPage(m_steps.value(at++).toInt()));
                window.findChild<QPushButton*>(u"cmdReset"_s)->click();
            } else if (step == "say"_L1) {
                std::printf("%s\n", qPrintable(window.findChild<QLabel*>(u"lblChanges"_s)->text()));
            } else if (step == "wait"_L1) {
                const QString file = m_steps.value(at++);
                isRight = QTest::qWaitFor([&file] { return QFile::exists(file); }, kLongWaitMs);
            } else {
                window.findChild<QPushButton*>(u"cmdApply"_s)->click();
            }
        }
        QApplication::exit(isRight ? 0 : 3);
    }

    static bool set(SettingsWindow& window, const QString& id, const QString& value)
    {
        auto* const control = window.findChild<QWidget*>(id);
        if (auto* const tick = qobject_cast<QCheckBox*>(control)) {
            tick->setChecked(value == "1"_L1);
        } else if (auto* const number = qobject_cast<QSpinBox*>(control)) {
            number->setValue(value.toInt());
        } else if (auto* const choice = qobject_cast<QComboBox*>(control)) {
            const int found = choice->findData(value);
            choice->setCurrentIndex(found);
            emit choice->activated(found);
            return found >= 0;
        } else if (auto* const text = qobject_cast<QLineEdit*>(control)) {
            text->selectAll();
            QTest::keyClicks(text, value);
        } else if (auto* const button = qobject_cast<QRadioButton*>(control)) {
            button->click();
        } else {
            std::fprintf(stderr, "no control %s\n", qPrintable(id));
            return false;
        }
        return true;
    }

    static bool bind(SettingsWindow& window, const QString& command)
    {
        window.showPage(SettingPage::Keys);
        auto* const table = window.findChild<QTreeWidget*>(u"tblKeys"_s);
        for (QTreeWidgetItemIterator it(table); *it != nullptr; ++it) {
            if ((*it)->data(0, Qt::UserRole).toString() == command) {
                table->setCurrentItem(*it);
                QTest::keyClick(table, Qt::Key_Return);
                QTest::keyClick(table, Qt::Key_F8, Qt::ControlModifier | Qt::ShiftModifier);
                return true;
            }
        }
        return false;
    }

    QStringList m_steps;
    bool m_isDone = false;
};

QStringList g_steps; // read before the application object is there

void prepareHand()
{
    auto* const hand = new Hand(g_steps);
    hand->setParent(qApp);
    qApp->installEventFilter(hand);
}

Q_COREAPP_STARTUP_FUNCTION(prepareHand)

} // namespace

int main(int argc, char** argv)
{
    for (int i = 2; i < argc; ++i) {
        g_steps.append(QString::fromLocal8Bit(argv[i]));
    }
    return runConfig(1, argv, argc > 1 ? QByteArray(argv[1]).toInt() : 0, {});
}

// The tag tool with a user who does what a line of the standard input says: a JSON array of texts,
// answered with one line of what stands on the screen then. Its end closes the tool.
//   folder PATH        puts the new files of a folder on the bench
//   type FIELD TEXT    types into a field of the common values
//   apply              by keys
//   state

#include "platform/qt/data_grid.h"
#include "siblings/tagbench/ui/run_bench.h"
#include "tagbench/ui/bench_window.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QSocketNotifier>
#include <QTest>
#include <QToolButton>

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

class Hand : public QObject
{
public:
    explicit Hand(QObject* parent)
        : QObject(parent)
        , m_input(STDIN_FILENO, QSocketNotifier::Read)
    {
        connect(&m_input, &QSocketNotifier::activated, this, [this] { read(); });
    }

private:
    void read()
    {
        char bytes[4096];
        const auto size = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (size <= 0) {
            m_input.setEnabled(false);
            QApplication::quit();
            return;
        }
        m_line.append(bytes, size);
        for (qsizetype end = m_line.indexOf('\n'); end >= 0; end = m_line.indexOf('\n')) {
            const QJsonArray words = QJsonDocument::fromJson(m_line.left(end)).array();
            m_line.remove(0, end + 1);
            if (BenchWindow* const bench = window()) {
                act(*bench, words);
            }
            std::puts(QJsonDocument(state()).toJson(QJsonDocument::Compact).constData());
            std::fflush(stdout);
        }
    }

    static BenchWindow* window()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* const bench = qobject_cast<BenchWindow*>(widget);
            if (bench != nullptr && bench->isVisible()) {
                return bench;
            }
        }
        return nullptr;
    }

    void act(BenchWindow& bench, const QJsonArray& words)
    {
        const QString work = words.at(0).toString();
        m_told = {};
        bench.ask = [](QWidget*, const QString&) { return true; };
        bench.tell = [this](QWidget*, const QStringList& lines) {
            m_told = QJsonArray::fromStringList(lines);
        };
        if (work == "folder"_L1) {
            bench.chooseFolder = [&words](QWidget*) { return words.at(1).toString(); };
            bench.findChild<QToolButton*>(u"cmdFolder"_s)->click();
        } else if (work == "type"_L1) {
            auto* const field = bench.findChild<QLineEdit*>(words.at(1).toString());
            field->setFocus();
            field->selectAll();
            QTest::keyClicks(field, words.at(2).toString());
        } else if (work == "apply"_L1) {
            QTest::keyClick(&bench, Qt::Key_Return, Qt::ControlModifier);
        }
    }

    [[nodiscard]] QJsonObject state() const
    {
        const BenchWindow* const bench = window();
        if (bench == nullptr) {
            return {};
        }
        return {{u"rows"_s, bench->findChild<DataGrid*>(u"TDBGrid1"_s)->model()->rowCount()},
                {u"said"_s, bench->findChild<QLabel*>(u"lblProgress"_s)->text()},
                {u"told"_s, m_told}};
    }

    QSocketNotifier m_input;
    QByteArray m_line;
    QJsonArray m_told; ///< by a message, since the last answer
};

void prepareHand()
{
    new Hand(qApp);
}

Q_COREAPP_STARTUP_FUNCTION(prepareHand)

} // namespace

int main(int argc, char** argv)
{
    // Nobody is left behind by a test that was killed.
    if (::prctl(PR_SET_PDEATHSIG, SIGKILL) != 0) {
        return 2;
    }
    return runBench(argc, argv, BenchMode::Import);
}

// What a message to another program costs: the program starts itself as the other one.
//
//   message_bench [rounds = 20000]

#include "platform/linux/linux_messages.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

/// Bar of the median of one send, in microseconds.
constexpr double kBar = 50;

constexpr qint32 kAdd = 1;
/// Has the receiver send once to the sender before it answers.
constexpr qint32 kCallBack = 2;

int serve(const QString& folder)
{
    LinuxMessages messages{MessagePlace(folder)};
    const auto control = messages.makeControl();
    control->setMessageNumber([&](qint32 id, qint32 wParam, qint32 lParam) {
        if (id == kCallBack) {
            control->setTarget(lParam);
            return control->Send(kAdd, wParam, 1);
        }
        return wParam + lParam;
    });
    control->setMessageText(
        [](qint32, qint32, const QString& text) { return qint32(text.size()); });
    std::printf("%d\n", control->handle());
    std::fflush(stdout);
    return QCoreApplication::exec();
}

/// Prints median and 99th percentile; the median in microseconds.
double measure(const char* what, int rounds, const std::function<void(int)>& job)
{
    std::vector<double> micros;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer watch;
        watch.start();
        job(i);
        micros.push_back(double(watch.nsecsElapsed()) / 1000);
    }
    std::sort(micros.begin(), micros.end());
    const double median = micros[micros.size() / 2];
    std::printf("%-28s median %7.1f us   99%% %8.1f us\n", what, median,
                micros[micros.size() * 99 / 100]);
    return median;
}

int send(int rounds)
{
    const QTemporaryDir folder;
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), {u"serve"_s, folder.path()});
    while (!other.canReadLine() && other.waitForReadyRead()) {
    }
    LinuxMessages messages{MessagePlace(folder.path())};
    const auto control = messages.makeControl();
    const MessageHandle target = other.readLine().trimmed().toInt();
    control->setTarget(target);
    control->setMessageNumber([](qint32, qint32 one, qint32 two) { return one + two; });
    int wrong = 0;
    const double median = measure(
        "Send", rounds, [&](int i) { wrong += control->Send(kAdd, i, 1) == i + 1 ? 0 : 1; });
    measure("Send with a call back", rounds, [&](int i) {
        wrong += control->Send(kCallBack, i, control->handle()) == i + 1 ? 0 : 1;
    });
    const QString text(65536, u'x');
    measure("SendText of 64 KB", rounds / 10,
            [&](int) { wrong += control->SendText(kAdd, 0, text) == text.size() ? 0 : 1; });
    measure("Post", rounds, [&](int i) { control->Post(kAdd, i, 1); });
    wrong += control->Send(kAdd, 1, 1) == 2 ? 0 : 1;
    measure("IsMsgWindow", rounds / 10,
            [&](int) { wrong += messages.IsMsgWindow(target) ? 0 : 1; });
    other.kill();
    other.waitForFinished();
    std::printf("%d wrong answers; bar of the median: %.0f us\n", wrong, kBar);
    return wrong == 0 && median < kBar ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "serve"_L1) {
        return serve(arguments.value(2));
    }
    return send(std::max(arguments.value(1, u"20000"_s).toInt(), 100));
}

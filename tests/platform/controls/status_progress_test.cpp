#include "platform/controls/status_progress.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class Line : public StatusLine
{
public:
    void setPanel(StatusPanel panel, const QString& text) override { texts[panel] = text; }

    [[nodiscard]] QString panel(StatusPanel panel) const override
    {
        const auto found = texts.find(panel);
        return found == texts.end() ? QString() : found->second;
    }

    std::map<StatusPanel, QString> texts;
};

class Window : public ProgressWindow
{
public:
    Window(QStringList& log, bool goesOn)
        : m_log(log)
        , m_goesOn(goesOn)
    {}

    ~Window() override { m_log.append(u"gone"_s); }

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    bool show(const QString& text, qint64 done, qint64 whole) override
    {
        m_log.append(u"%1 %2/%3"_s.arg(text).arg(done).arg(whole));
        return m_goesOn;
    }

private:
    QStringList& m_log;
    bool m_goesOn;
};

TEST(StatusProgress, ALongWorkShowsInItsWindowAndInThePanelUntilItIsOver)
{
    Line line;
    QStringList log;
    {
        StatusProgress progress(std::make_unique<Window>(log, true), line);
        EXPECT_EQ(line.panel(StatusPanel::Progress), QString());
        EXPECT_TRUE(progress.show(u"liste.m3u"_s, 1, 4));
        EXPECT_EQ(line.panel(StatusPanel::Progress), u"25 %"_s);
        EXPECT_TRUE(progress.show(u"liste.m3u"_s, 4, 4));
        EXPECT_EQ(line.panel(StatusPanel::Progress), u"100 %"_s);
    }
    EXPECT_EQ(line.panel(StatusPanel::Progress), QString());
    EXPECT_EQ(log, (QStringList{u"liste.m3u 1/4"_s, u"liste.m3u 4/4"_s, u"gone"_s}));
    EXPECT_EQ(line.texts.size(), 1U);
}

TEST(StatusProgress, TheUsersCancelReachesTheWork)
{
    Line line;
    QStringList log;
    StatusProgress progress(std::make_unique<Window>(log, false), line);
    EXPECT_FALSE(progress.show(u"a"_s, 1, 2));
}

TEST(StatusProgress, IsRoundedDownAndStaysBetweenNothingAndAll)
{
    EXPECT_EQ(progressText(999, 1000), u"99 %"_s);
    EXPECT_EQ(progressText(-5, 10), u"0 %"_s);
    EXPECT_EQ(progressText(20, 10), u"100 %"_s);
    EXPECT_EQ(progressText(3, 0), QString());
    EXPECT_EQ(
        progressText(std::numeric_limits<qint64>::max() / 2, std::numeric_limits<qint64>::max()),
        u"50 %"_s);
}

} // namespace
} // namespace melovane

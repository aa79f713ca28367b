#pragma once

#include "platform/controls/status_line.h"
#include "platform/controls/window_frame.h"
#include "platform/system/programs.h"
#include "platform/system/timers.h"

#include <QHash>
#include <QStringList>

#include <functional>
#include <map>

namespace melovane::test {

/// Writes down what would be started.
class RecordingProcesses : public Programs
{
public:
    bool start(const QString& commandLine, WindowStyle style) override
    {
        commands.append(commandLine);
        styles.push_back(style);
        return succeeds;
    }

    bool startProgram(const QString& program, const QString& arguments, WindowStyle style) override
    {
        programs.append(program);
        return start(program + arguments, style);
    }

    QStringList commands;
    QStringList programs; ///< of the commands whose program was named
    std::vector<WindowStyle> styles;
    bool succeeds = true;
};

/// Timers that run when the test says so.
class SteppedLoop : public MessageLoop
{
public:
    struct Entry
    {
        std::chrono::milliseconds interval{};
        std::function<void()> handler;
        bool active = false;
    };

    [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds interval,
                                                   std::function<void()> handler) override
    {
        auto entry = std::make_shared<Entry>(Entry{interval, std::move(handler), false});
        timers.push_back(entry);
        return std::make_unique<SteppedTimer>(entry);
    }

    void turn() override {}

    [[nodiscard]] bool isNested() const override { return nested; }

    /// Fires the running timers of that interval once; false when there is none.
    bool fire(int milliseconds)
    {
        bool fired = false;
        for (const auto& entry : std::vector(timers)) {
            if (entry->active && entry->interval.count() == milliseconds) {
                fired = true;
                entry->handler();
            }
        }
        return fired;
    }

    std::vector<std::shared_ptr<Entry>> timers;
    bool nested = false;

private:
    class SteppedTimer : public Timer
    {
    public:
        explicit SteppedTimer(std::shared_ptr<Entry> entry)
            : m_entry(std::move(entry))
        {}

        ~SteppedTimer() override { m_entry->active = false; }

        void start() override { m_entry->active = true; }

        void stop() override { m_entry->active = false; }

        [[nodiscard]] bool isActive() const override { return m_entry->active; }

    private:
        std::shared_ptr<Entry> m_entry;
    };
};

class PlainStatusLine : public StatusLine
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

class PlainWindow : public WindowFrame
{
public:
    void setCaption(const QString& text) override { caption = text; }

    void setLeastSize(const QSize& size) override { leastSize = size; }

    [[nodiscard]] QRect place() const override { return rect; }

    void setPlace(const QRect& place) override
    {
        rect = place;
        isOuter = false;
    }

    void setOuterPlace(const QRect& place) override
    {
        rect = place;
        isOuter = true;
    }

    [[nodiscard]] bool isMaximisedNow() const override { return maximised; }

    void maximise() override { maximised = true; }

    void setNormal() override
    {
        maximised = false;
        ++normals;
        if (whenNormal) {
            whenNormal();
        }
    }

    [[nodiscard]] int windowHandle32() const override { return 4712; }

    [[nodiscard]] QRect screenArea() const override { return area; }

    [[nodiscard]] QRect screenOf(const QRect& place) const override
    {
        return second.contains(place.topLeft()) ? second : area;
    }

    void bringToFront() override { ++raised; }

    void closeWindow() override { ++closed; }

    QString caption;
    QSize leastSize;
    QRect rect{10, 20, 1000, 700};
    bool isOuter = false; ///< the place was told with the frame
    QRect area{0, 0, 1600, 1000};
    QRect second; ///< another screen, when there is one
    bool maximised = false;
    int raised = 0;
    int closed = 0;
    int normals = 0;
    std::function<void()> whenNormal;
};

class PlainSplit : public SplitControl
{
public:
    [[nodiscard]] int position() const override { return at; }

    void setPosition(int thousandths) override { at = thousandths; }

    int at = 500;
};

class PlainSkin : public SkinControl
{
public:
    bool load(const QString& themeText) override
    {
        if (!themeText.contains(u'#')) {
            return false;
        }
        loaded = themeText;
        return true;
    }

    void clear() override { loaded.clear(); }

    [[nodiscard]] QString titleOf(const QString& themeText) const override
    {
        return themeText.section(u'\n', 0, 0);
    }

    QString loaded;
};

} // namespace melovane::test

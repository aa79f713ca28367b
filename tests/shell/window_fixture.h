#pragma once

#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "monitor/monitor_control.h"
#include "platform/controls/warnings.h"
#include "platform/message/message_control.h"
#include "shell/fakes.h"
#include "shell/mlvdb.h"
#include "shell/more_result.h"
#include "shell/sibling_control.h"
#include "shell/window_data.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

#include <QSet>

#include <gtest/gtest.h>

namespace melovane::test {

/// The window's message control without a wire: what it sends is written down.
class LoggedControl : public KSMessage
{
public:
    explicit LoggedControl(QStringList& log)
        : m_log(log)
    {}

    [[nodiscard]] MessageHandle handle() const override { return 1'000'001; }

    void setTarget(MessageHandle target) override { m_target = target; }

    [[nodiscard]] MessageHandle target() const override { return m_target; }

    qint32 Send(qint32 id, qint32 wParam, qint32 lParam) override
    {
        m_log.append(
            QStringLiteral("send %1 %2 %3 to %4").arg(id).arg(wParam).arg(lParam).arg(m_target));
        return 0;
    }

    bool
    SendWithin(std::chrono::milliseconds patience, qint32 id, qint32 wParam, qint32 lParam) override
    {
        patiences.append(patience.count());
        Send(id, wParam, lParam);
        return answers;
    }

    qint32 SendText(qint32, qint32, const QString&) override { return 0; }

    void Post(qint32 id, qint32, qint32) override
    {
        m_log.append(QStringLiteral("post %1 to %2").arg(id).arg(m_target));
    }

    void PostText(qint32, qint32, const QString&) override {}

    void setMessageNumber(NumberHandler handler) override { number = std::move(handler); }

    void setMessageText(TextHandler handler) override { text = std::move(handler); }

    NumberHandler number;
    TextHandler text;
    bool answers = true;
    QList<qint64> patiences; ///< in milliseconds, of what was sent with one

private:
    QStringList& m_log;
    MessageHandle m_target = 0;
};

class ListedMessages : public Messages
{
public:
    [[nodiscard]] std::unique_ptr<KSMessage> makeControl() override { return nullptr; }

    [[nodiscard]] bool IsMsgWindow(MessageHandle handle) const override
    {
        return alive.contains(handle);
    }

    QSet<MessageHandle> alive;
};

class LoggedData : public WindowData
{
public:
    explicit LoggedData(QStringList& log)
        : m_log(log)
    {}

    void open() override
    {
        m_log.append(QStringLiteral("open"));
        fail();
    }

    void openOther(const QString& name) override
    {
        m_log.append(QStringLiteral("open other ") + name.section(u'/', -1));
        fail();
        hold(name);
    }

    void release() override { m_log.append(QStringLiteral("release")); }

    void idle() override { m_log.append(QStringLiteral("idle")); }

    [[nodiscard]] bool sideFilesWereStale() override
    {
        m_log.append(QStringLiteral("side files"));
        return stale;
    }

    void requireLibrary() override { fail(); }

    void rebuildTree(const QString& tree) override
    {
        m_log.append(QStringLiteral("rebuild ") + tree);
    }

    [[nodiscard]] qint64 trackCount() override
    {
        m_log.append(QStringLiteral("count"));
        fail();
        return tracks;
    }

    [[nodiscard]] bool IsChangePlaylist() override { return playlistChanged; }

    [[nodiscard]] MlvAllData GetAllDataByFid(const QString& fid) override
    {
        MlvAllData result = track;
        result.FID = fid;
        return result;
    }

    std::function<void(const QString& name)> hold; ///< what the settings do then
    bool stale = false;
    bool playlistChanged = false;
    qint64 tracks = 1;
    MlvAllData track;
    int fault = 0; ///< number of the error that every access meets

private:
    void fail() const
    {
        if (fault != 0) {
            throw DbError(fault, QStringLiteral("the engine's words"));
        }
    }

    QStringList& m_log;
};

class LoggedMonitor : public MonitorControl
{
public:
    explicit LoggedMonitor(QStringList& log)
        : m_log(log)
    {}

    void MonitorPlayer(const QString& action, const QString& fid, int position) override
    {
        m_log.append(QStringLiteral("monitor %1 %2 %3").arg(action, fid).arg(position));
    }

    [[nodiscard]] int positionFrames() const override { return frame; }

    void stop() override { m_log.append(QStringLiteral("monitor stop")); }

    void setVolume(int volume) override
    {
        m_log.append(QStringLiteral("monitor volume %1").arg(volume));
    }

    void reopen() override { m_log.append(QStringLiteral("monitor reopen")); }

    int frame = 0;

private:
    QStringList& m_log;
};

class LoggedWarnings : public Warnings
{
public:
    explicit LoggedWarnings(QStringList& log)
        : m_log(log)
    {}

    WarningAnswer ShowWarning(const QString& text,
                              WarningType type,
                              const QString& title,
                              const QString&,
                              const QString&) override
    {
        m_log.append(QStringLiteral("warning %1: %2").arg(title, text));
        if (whileOpen) {
            std::exchange(whileOpen, {})();
        }
        return type == WarningType::Question ? answer : WarningAnswer::Ok;
    }

    WarningAnswer answer = WarningAnswer::No; ///< to a question
    std::function<void()> whileOpen;          ///< happens once while the user reads

private:
    QStringList& m_log;
};

class PlainMenus : public MenuControl
{
public:
    void setText(const QString& name, const QString& caption, const QString& toolTip) override
    {
        captions[name] = caption;
        toolTips[name] = toolTip;
    }

    void setChecked(const QString& name, bool on) override { checked[name] = on; }

    void setPlugIns(const std::vector<PlugInEntry>& entries) override { plugIns = entries; }

    void setEnabled(const QString& name, bool on, const QString& toolTip) override
    {
        enabled[name] = on;
        toolTips[name] = toolTip;
    }

    void setVisible(const QString& name, bool on) override { visible[name] = on; }

    void setKey(const QString& name, const QString& key) override { keys[name] = key; }

    void setChoices(const QString& menu, const std::vector<MenuChoice>& entries) override
    {
        choices[menu] = entries;
    }

    [[nodiscard]] EditPlace editPlace() const override { return place; }

    [[nodiscard]] bool canEditText(QStringView name) const override { return name == canEdit; }

    void editText(QStringView name) override { edited.append(name.toString()); }

    void showContextMenu(const std::vector<MoreResultEntry>& entries) override
    {
        ++opened;
        more = entries;
    }

    QHash<QString, QString> captions;
    QHash<QString, QString> toolTips;
    QHash<QString, bool> checked;
    QHash<QString, bool> enabled;
    QHash<QString, bool> visible;
    QHash<QString, QString> keys;
    QHash<QString, std::vector<MenuChoice>> choices;
    EditPlace place = EditPlace::Playlist; ///< where the keyboard is
    QString canEdit;                       ///< the one command that a text field can do
    QStringList edited;                    ///< what it was asked for
    std::vector<PlugInEntry> plugIns;
    std::vector<MoreResultEntry> more;
    int opened = 0;
};

/// The logic of the main window without a window, a library, or another program. What it asks of
/// them stands in `log`, in order, bus messages included.
struct WindowFixture : public testing::Test
{
    WindowFixture()
    {
        MelovaneConfiguration::fill(texts);
        listener = bus.subscribe([this](const MLVMessage& message) {
            QString line = QStringLiteral("bus ") + message.Command;
            for (const Value& value :
                 {message.Value1, message.Value2, message.Value3, message.Value4}) {
                if (!value.isNull()) {
                    line += u' ' + value.toText();
                }
            }
            log.append(line);
        });
    }

    /// What stands in `log`, which is empty afterwards.
    QStringList taken()
    {
        QStringList result;
        log.swap(result);
        return result;
    }

    void click(const QString& name)
    {
        for (const MenuRow& row : MenuCommands::rows()) {
            if (row.name == name) {
                mlvdb.menu().clicked(row);
                return;
            }
        }
        FAIL() << "no entry " << name.toStdString();
    }

    /// A sibling's file in the program folder.
    void install(const QString& program) { folders.install(program, "x"); }

    [[nodiscard]] QString command(const QString& text) const
    {
        return folders.programFolder() + u'/' + text;
    }

    [[nodiscard]] QString shown() const { return status.panel(StatusPanel::Message); }

    std::function<void()> noted(const QString& what)
    {
        return [this, what] { log.append(what); };
    }

    QStringList log;
    SuiteFolders folders;
    FakeClock clock;
    NoEngine engine;
    std::unique_ptr<GlobalSettings> settings = folders.makeSettings();
    ConfigObjects texts{folders.paths(), folders.profile(), folders.files()};
    MLVMessageBus bus{folders.paths(), folders.files(), clock};
    MLVMessageBus::Subscription listener;
    RecordingProcesses processes;
    SteppedLoop loop;
    PlainWindow window;
    PlainStatusLine status;
    PlainSkin skin;
    PlainMenus menus;
    std::array<PlainSplit, 3> splits;
    LoggedData data{log};
    LoggedMonitor monitor{log};
    LoggedWarnings warnings{log};
    ListedMessages messages;
    LoggedControl control{log};
    SuiteMessages suite{*settings, engine, messages, control};
    SiblingControl siblings{folders.paths(), folders.files(), processes};
    std::function<void()> onLibrarySave = noted(QStringLiteral("library save"));
    bool readOnly = false;
    bool layoutChosen = false;
    std::optional<GridFont> chosenFont;
    int shownPnid = 12;
    int currentPlid = 345;
    MLVDB mlvdb{
        {*settings,
         texts,
         folders.paths(),
         folders.files(),
         loop,
         bus,
         data,
         siblings,
         suite,
         control,
         monitor,
         warnings,
         {noted(QStringLiteral("library start")), noted(QStringLiteral("library reload")),
          noted(QStringLiteral("library deleted")), noted(QStringLiteral("library missing")),
          [this] { onLibrarySave(); }, noted(QStringLiteral("forget searches")),
          [this](const QString& text) { log.append(QStringLiteral("find ") + text); }},
         {[this] { return shownPnid; }, [this] { return currentPlid; }, [] {}, [] {}, [] {}, [] {},
          noted(QStringLiteral("import lists")), noted(QStringLiteral("save active list")),
          [this](const QString& key) { log.append(QStringLiteral("playlist press ") + key); }},
         {noted(QStringLiteral("info")), noted(QStringLiteral("ask genre")),
          [this] {
              log.append(QStringLiteral("edit layout"));
              return layoutChosen;
          },
          [this](const GridFont& present) {
              log.append(QStringLiteral("choose font ") + present.name);
              return chosenFont;
          },
          [] { return false; },
          [this](int list) { log.append(QStringLiteral("export list %1").arg(list)); }},
         {},
         [this] { return readOnly; },
         {[this](const QString& fid, bool edits, bool inLibrary) {
              log.append(
                  QStringLiteral("tags %1 %2 in %3")
                      .arg(fid, edits ? QStringLiteral("edited") : QStringLiteral("shown"),
                           inLibrary ? QStringLiteral("library") : QStringLiteral("playlist")));
          },
          noted(QStringLiteral("tags save"))}},
        {window, status, skin, menus, {&splits[0], &splits[1], &splits[2]}}};
    BusSender others{bus, QStringLiteral("Tree")};
};

} // namespace melovane::test

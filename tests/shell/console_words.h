#pragma once

#include "bus/mlv_message_bus.h"
#include "platform/controls/status_line.h"
#include "platform/linux/linux_messages.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/outline_tree.h"
#include "shell/application_fixture.h"
#include "shell/closed_dialogs.h"
#include "support/message_sibling.h"
#include "trees/ui/tree_widget.h"

#include <QToolButton>

#include <array>
#include <memory>

namespace melovane::test {

/// The whole console with two lists, a jingle list, a track that sounds, a player beside it, and
/// small programs in the places of others that write down how they were started.
class ConsoleWords : public ApplicationTest
{
protected:
    using Values = std::array<Value, 4>;

    ConsoleWords();

    /// Runs the console with the window ready for messages.
    void inConsole(const std::function<void()>& act);

    /// Puts library, lists and views back to what they were at the start.
    void reset();

    void send(const QString& name, const Values& values = {});

    // -- what is to be seen --

    [[nodiscard]] DataGrid& library() const;
    [[nodiscard]] DataGrid& list() const;
    [[nodiscard]] OutlineTree& lists() const;
    [[nodiscard]] TreeWidget& tree() const;
    [[nodiscard]] QWidget& view(const QString& name) const;
    [[nodiscard]] QString status(StatusPanel panel) const;

    /// The titles of a grid, separated by blanks.
    [[nodiscard]] static QString titles(const DataGrid& grid);
    [[nodiscard]] static QString texts(const OutlineTree& tree);

    /// The key of the row in the panel of lists that begins so; empty for none.
    [[nodiscard]] QString keyOf(const QString& text) const;
    [[nodiscard]] static TreeRow rowOf(const OutlineTree& tree, const QString& text);

    /// A button of a view; the test fails for one that is there twice or not at all.
    [[nodiscard]] QToolButton& tool(const QString& view, const QString& key) const;

    [[nodiscard]] qint64 count(const QString& fromWhere);
    [[nodiscard]] QString entry(int sid);

    // -- what other programs got --

    /// Waits until a stand-in was started with that line: its name and its arguments.
    [[nodiscard]] bool wasStarted(const QString& line) const;
    /// Waits until the player has got a number since the last reset.
    [[nodiscard]] bool playerGot(qint32 number);

    /// How many numbers it has got since it runs.
    [[nodiscard]] qint32 numbersOfPlayer();

    // -- before-states --

    void search(const QString& text) const;
    void showKind(const QString& key) const;

    QMainWindow* window = nullptr;
    ClosedDialogs dialogs;
    QStringList heard;             ///< names on the bus, in lower case
    QString said;                  ///< the last text for the status line
    std::array<QString, 3> tracks; ///< Hafen, which sounds, Brandung, Segel
    int group = 0;
    int main = 0; ///< Hauptset: Hafen and Brandung; plays
    int dance = 0;
    int jingles = 0;
    int hidden = 0; ///< a list that the panel leaves out

private:
    [[nodiscard]] qint32 ask(qint32 number, qint32 wParam = 0);

    std::unique_ptr<Sibling> m_player;
    std::unique_ptr<LinuxMessages> m_messages;
    std::unique_ptr<KSMessage> m_asker;
    std::unique_ptr<BusSender> m_sender;
    qint32 m_seenBefore = 0; ///< numbers that the player had got at the last reset
};

} // namespace melovane::test

#pragma once

#include "library/mp3db.h"
#include "library/test_library.h"
#include "platform/controls/clipboard.h"
#include "platform/controls/pointer_control.h"
#include "platform/controls/search_box.h"
#include "platform/system/timers.h"
#include "playlists/list_history.h"
#include "views/plain_grid.h"

#include <gtest/gtest.h>

#include <functional>

namespace melovane::test {

class PlainSearchBox : public SearchBox
{
public:
    [[nodiscard]] QString text() const override { return m_text; }

    void setText(const QString& text) override
    {
        m_text = text;
        if (changed) {
            changed(text);
        }
    }

    [[nodiscard]] QStringList list() const override { return texts; }

    void setList(const QStringList& wanted) override { texts = wanted; }

    void focus() override { ++focused; }

    std::function<void(QString)> changed;
    QStringList texts;
    int focused = 0;

private:
    QString m_text;
};

class PointerLog : public PointerControl
{
public:
    void push(PointerShape shape) override
    {
        shapes.push_back(shape);
        ++depth;
    }

    void pop() override { --depth; }

    std::vector<PointerShape> shapes;
    int depth = 0;
};

class PlainClipboard : public Clipboard
{
public:
    [[nodiscard]] QString text() const override { return content; }

    void setText(const QString& text) override { content = text; }

    QString content;
};

class NoTimer : public Timer
{
public:
    void start() override {}

    void stop() override {}

    [[nodiscard]] bool isActive() const override { return false; }
};

class NoLoop : public MessageLoop
{
public:
    [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds,
                                                   std::function<void()>) override
    {
        return std::make_unique<NoTimer>();
    }

    void turn() override {}
};

/// The library view without a window, over a real file. Typing searches once it is started.
struct LibraryViewTest : public testing::Test
{
    void start()
    {
        search.changed = [this](const QString& text) { view.searchTextChanged(text); };
        view.start();
    }

    [[nodiscard]] QStringList titles()
    {
        QStringList result;
        for (qint64 row = 0; row < view.Data1().rowCount(); ++row) {
            const int column = view.Data1().Recordset()->fieldIndex(u"Titel");
            result.append(view.Data1().cell(row, column).toText());
        }
        return result;
    }

    [[nodiscard]] int columnOf(const QString& field) const { return grid.columnOf(field); }

    /// What another view over the same library is made of.
    [[nodiscard]] Mp3dbParts parts()
    {
        return {*library.engine,
                *library.settings,
                library.texts,
                library.folders.paths(),
                library.folders.files(),
                library.clock,
                loop,
                library.bus,
                history,
                [this](const QString& where, const QString& what) {
                    logged.append(where + QStringLiteral(": ") + what);
                }};
    }

    TestLibrary library;
    PlainGrid grid;
    PlainSearchBox search;
    PointerLog pointer;
    PlainClipboard clipboard;
    NoLoop loop;
    ListHistory history{*library.engine,
                        library.folders.files(),
                        library.clock,
                        *library.settings,
                        {}};
    int imports = 0;
    QStringList logged; ///< "where: what" of every failure
    QStringList tempoSearches;
    QStringList sampled; ///< tracks that the sample tool got
    ctl_MP3DB view{parts(),
                   {grid, search, pointer, clipboard},
                   {[this] { ++imports; },
                    [this](const QString& cmd, const QString& fid) {
                        tempoSearches.append(cmd + QChar::fromLatin1(' ') + fid);
                    },
                    [](const QString& file) { return file; },
                    [this](const QString& fid) { sampled.append(fid); }}};
};

} // namespace melovane::test

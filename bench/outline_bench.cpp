// A tree in its window: filling, folding, selecting, finding, filtering, each with the paint that
// follows, over one root with artists by letter and their albums.
//
//   outline_bench [rows ...]     10000, 100000 and 300000 without any
//
// The best of some tries, CPU time of this process in milliseconds.

#include "bench/measure.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace melovane::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kLetters = 27;
constexpr int kAlbums = 3; ///< of an artist
constexpr int kTries = 5;

TreeRow rowOf(const QString& text, int level)
{
    TreeRow row;
    row.key = u"%1:%2"_s.arg(level).arg(text);
    row.text = text + u" [12]"_s;
    row.countLetters = 4;
    row.picture = level == 0 ? u"folder"_s : u"playlist"_s;
    row.level = level;
    row.tick = level == 0 ? RowTick::None : RowTick::Off;
    return row;
}

/// Letters, artists below them, albums below those.
std::vector<TreeRow> rowsOf(int count)
{
    std::vector<TreeRow> rows;
    rows.reserve(std::size_t(count));
    const int perLetter = std::max(1, count / kLetters);
    for (int number = 0; number < count; ++number) {
        if (number % perLetter == 0) {
            rows.push_back(rowOf(u"Buchstabe %1"_s.arg(number / perLetter), 0));
        } else if (number % perLetter % (kAlbums + 1) == 1) {
            rows.push_back(rowOf(u"Interpret Nr. %1 Größenwahn"_s.arg(number), 1));
        } else {
            rows.push_back(rowOf(u"Album %1 über den Wolken"_s.arg(number), 2));
        }
    }
    return rows;
}

double timed(const std::function<void()>& work)
{
    return measured(work).cpu;
}

/// One tree of that many rows and what is measured on it.
class Run
{
public:
    explicit Run(const Skin& skin, const IconSet& icons, int rows)
        : m_tree(skin, icons)
        , m_rows(rowsOf(rows))
    {
        m_tree.setMultiSelection(true);
        m_tree.resize(340, 900);
        m_tree.show();
        QCoreApplication::processEvents();
        std::printf("\n%d rows%43s\n", rows, "ms");
    }

    void all()
    {
        fill();
        fold();
        select();
        find();
        filter();
    }

private:
    void paint() { m_tree.viewport()->repaint(); }

    void say(const char* what, double milliseconds)
    {
        std::printf("  %-40s %8.2f\n", what, milliseconds);
    }

    /// The work with a paint, the best of some tries; `back` between them.
    void
    measure(const char* what, const std::function<void()>& work, const std::function<void()>& back)
    {
        double best = 1e9;
        for (int tries = 0; tries < kTries; ++tries) {
            best = std::min(best, timed([&] {
                                work();
                                paint();
                            }));
            back();
            paint();
        }
        say(what, best);
    }

    void fill()
    {
        double best = 1e9;
        for (int tries = 0; tries < kTries; ++tries) {
            std::vector<TreeRow> rows = m_rows;
            best = std::min(best, timed([&] {
                                m_tree.setRows(std::move(rows));
                                paint();
                            }));
        }
        say("fill, all open", best);
        measure(
            "a page with nothing changed", [] {}, [] {});
        measure(
            "scroll to the end", [this] { m_tree.scrollToBottom(); },
            [this] { m_tree.scrollToTop(); });
    }

    void fold()
    {
        const auto open = [this](bool on) { m_tree.setOpen(0, on); };
        measure(
            "fold a letter at the top", [&] { open(false); }, [&] { open(true); });
        open(false);
        measure(
            "open it", [&] { open(true); }, [&] { open(false); });
        open(true);
        measure(
            "fold all", [this] { m_tree.foldTo(0); }, [this] { m_tree.foldTo(9); });
        m_tree.foldTo(0);
        measure(
            "open all", [this] { m_tree.foldTo(9); }, [this] { m_tree.foldTo(0); });
        m_tree.foldTo(9);
        measure(
            "insert a row at the top", [this] { m_tree.insertRow(1, rowOf(u"Neu"_s, 1)); },
            [this] { m_tree.removeRow(1); });
        QStringList keys;
        for (std::size_t row = 1; row < m_rows.size() && keys.size() < 200; row += 4) {
            keys.append(m_rows[row].key);
        }
        measure(
            "fold 200 keys", [&] { m_tree.setFolded(keys); }, [this] { m_tree.setFolded({}); });
        QStringList parents;
        for (const TreeRow& row : m_rows) {
            if (row.level == 1) {
                parents.append(row.key);
            }
        }
        measure(
            "open every artist by its key", [&] { m_tree.setFolds({}, parents); },
            [this] { m_tree.foldTo(1); });
        m_tree.foldTo(9);
    }

    void select()
    {
        m_tree.setCurrentRow(0);
        measure(
            "select all", [this] { m_tree.selectAll(); }, [this] { m_tree.setCurrentRow(0); });
        measure(
            "all selected rows", [this] { m_tree.selectAll(), (void)m_tree.selectedRows(); },
            [this] { m_tree.setCurrentRow(0); });
        m_tree.selectAll();
        measure(
            "fold a letter, all selected", [this] { m_tree.setOpen(0, false); },
            [this] { m_tree.setOpen(0, true); });
        m_tree.setCurrentRow(0);
    }

    void find()
    {
        m_tree.setRows(m_rows);
        const QString last = m_rows.back().key;
        say("find the last key, first time", timed([&] { (void)m_tree.find(last); }));
        say("find the last key", timed([&] { (void)m_tree.find(last); }));
        measure(
            "go to the last row", [&] { m_tree.setCurrentRow(m_tree.find(last)); },
            [this] { m_tree.setCurrentRow(0); });
    }

    /// The longest turn of the loop in the time that a user needs to reach for a key.
    void rest()
    {
        constexpr int kRest = 400;
        double longest = 0;
        QElapsedTimer since;
        since.start();
        while (since.elapsed() < kRest) {
            longest = std::max(longest, timed([] { QCoreApplication::processEvents(); }));
        }
        say("longest turn after a fill", longest);
    }

    void filter()
    {
        const auto firstKey = [this] {
            m_tree.setFilter(u"i"_s);
            paint();
        };
        m_tree.setRows(m_rows);
        say("filter, first key at once after a fill", timed(firstKey));
        m_tree.setFilter({});
        m_tree.setRows(m_rows);
        rest();
        say("filter, first key of a new tree", timed(firstKey));
        for (const QString& text : {u"e"_s, u"in"_s, u"ber"_s, u"wahn"_s, u"nichts"_s}) {
            const QByteArray what = u"filter \"%1\""_s.arg(text).toUtf8();
            measure(
                what.constData(), [&] { m_tree.setFilter(text); },
                [this] { m_tree.setFilter(u"12"_s); });
        }
        measure(
            "end of the filter", [this] { m_tree.setFilter({}); },
            [this] { m_tree.setFilter(u"in"_s); });
        m_tree.setFilter({});
        measure(
            "type a name that nobody has", [this] { m_tree.keyboardSearch(u"qqq"_s); }, [] {});
    }

    OutlineTree m_tree;
    std::vector<TreeRow> m_rows;
};

} // namespace
} // namespace melovane::bench

int main(int argc, char** argv)
{
    using namespace melovane;
    const QApplication application(argc, argv);
    Skin skin(*qApp);
    QFile theme(QStringLiteral(MLV_THEME));
    if (!theme.open(QIODevice::ReadOnly) || !skin.load(QString::fromUtf8(theme.readAll()))) {
        return 1;
    }
    const IconSet icons(skin);
    const QStringList given = QCoreApplication::arguments().mid(1);
    for (const QString& count :
         given.isEmpty() ? QString(QStringLiteral("10000 100000 300000")).split(u' ') : given) {
        bench::Run(skin, icons, std::max(1, count.toInt())).all();
    }
    return 0;
}

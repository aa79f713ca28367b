// The library tree as the user meets it: each kind opened, a letter opened, everything opened
// before a filter, and the keys of the filter, each with the paint that follows, then the longest
// turn of the loop behind it. Processor time of this process and wall time, in milliseconds.
//
// Usage: tree_view_bench [TRACKS]...   (100000 1000000)

#include "bench/libraries.h"
#include "bench/measure.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/skin.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "store/check_database.h"
#include "trees/rebuild_trees.h"
#include "trees/tree_key.h"
#include "trees/tree_pages.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

namespace melovane::bench {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kTries = 3;

/// In which a user reaches for the next key.
constexpr int kRest = 300;

/// A stack of trees of which all are windows.
class Stack : public TreeForm
{
public:
    Stack(const Skin& skin, const IconSet& icons)
    {
        for (auto& tree : m_trees) {
            tree = std::make_unique<OutlineTree>(skin, icons);
            tree->setMultiSelection(true);
            tree->resize(340, 900);
        }
    }

    [[nodiscard]] TreeControl& page(TreeKind kind) override { return tree(kind); }

    [[nodiscard]] OutlineTree& tree(TreeKind kind) { return *m_trees[std::size_t(kind)]; }

    void bringUp(TreeKind kind) override { tree(kind).show(); }

    void setGroupButtons(bool) override {}

    void setFolds(bool) override {}

private:
    std::array<std::unique_ptr<OutlineTree>, kTreeKinds> m_trees;
};

/// The trees of one library.
class Run
{
public:
    Run(const Skin& skin, const IconSet& icons, const QString& folder, const QString& library)
        : m_environment(placesBelow(folder))
        , m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_texts(m_paths, m_profile, m_files)
        , m_stack(skin, icons)
    {
        MelovaneConfiguration::fill(m_texts);
        m_settings.SetDbName(library);
        const QString data = QFileInfo(library).absolutePath();
        const auto made =
            RebuildTrees(
                {.engine = *m_engine, .files = m_files, .clock = m_clock, .dataFolder = data},
                library)
                .run(RebuildTrees::Scope::All);
        for (const QString& failure : made.failures) {
            std::fprintf(stderr, "%s\n", qPrintable(failure));
        }
    }

    void all()
    {
        for (const TreeKind kind : {TreeKind::Dir, TreeKind::Genre, TreeKind::Album,
                                    TreeKind::Interpret, TreeKind::Favorit, TreeKind::State}) {
            kindOpened(kind);
        }
        letter();
        everything(TreeKind::Genre);
        everything(TreeKind::Interpret);
    }

private:
    void say(const QString& what, const Cost& cost)
    {
        std::printf("  %-36s cpu %8.2f  wall %8.2f\n", qPrintable(what), cost.cpu, cost.wall);
        std::fflush(stdout);
    }

    void paint(TreeKind kind) { m_stack.tree(kind).viewport()->repaint(); }

    /// The longest turn of the loop behind what was done.
    Cost longestTurn()
    {
        Cost longest;
        QElapsedTimer since;
        since.start();
        while (since.elapsed() < kRest) {
            longest = greatest(longest, measured([] { QCoreApplication::processEvents(); }));
        }
        return longest;
    }

    void kindOpened(TreeKind kind)
    {
        TreePages pages(*m_engine, m_settings, m_texts, m_stack);
        pages.bringUp(kind);
        QCoreApplication::processEvents();
        const QString name = nameOf(kind).toString();
        Cost best{1e9, 1e9};
        Cost behind;
        for (int tries = 0; tries < kTries; ++tries) {
            best = least(best, measured([&] {
                             pages.fill(kind);
                             paint(kind);
                         }));
            behind = greatest(behind, longestTurn());
        }
        say(u"%1, %2 rows"_s.arg(name).arg(m_stack.page(kind).rowCount()), best);
        say(name + u", longest turn behind"_s, behind);
        best = {1e9, 1e9};
        for (int tries = 0; tries < kTries; ++tries) {
            pages.fill(kind);
            best = least(best, measured([&] {
                             m_stack.tree(kind).setFilter(u"d"_s);
                             paint(kind);
                         }));
            m_stack.tree(kind).setFilter({});
        }
        say(name + u", filter at once behind"_s, best);
    }

    static Cost least(const Cost& a, const Cost& b)
    {
        return {std::min(a.wall, b.wall), std::min(a.cpu, b.cpu)};
    }

    static Cost greatest(const Cost& a, const Cost& b)
    {
        return {std::max(a.wall, b.wall), std::max(a.cpu, b.cpu)};
    }

    void letter()
    {
        TreePages pages(*m_engine, m_settings, m_texts, m_stack);
        pages.bringUp(TreeKind::Interpret);
        pages.fill(TreeKind::Interpret);
        const int row = pages.top().find(treekey::artistLetter(u'D'));
        const Cost cost = measured([&] {
            pages.open(row);
            paint(TreeKind::Interpret);
        });
        say(u"letter D, %1 rows in all"_s.arg(pages.top().rowCount()), cost);
    }

    /// What the first key of a filter asks for, then keys.
    void everything(TreeKind kind)
    {
        TreePages pages(*m_engine, m_settings, m_texts, m_stack);
        pages.bringUp(kind);
        pages.fill(kind);
        const Cost cost = measured([&] {
            pages.openAll();
            paint(kind);
        });
        const QString name = nameOf(kind).toString();
        say(u"%1, all opened, %2 rows"_s.arg(name).arg(pages.top().rowCount()), cost);
        say(name + u", longest turn behind"_s, longestTurn());
        for (const QString& key : {u"d"_s, u"di"_s, u"die"_s, u"die b"_s}) {
            const Cost typed = measured([&] {
                m_stack.tree(kind).setFilter(key);
                paint(kind);
            });
            say(u"%1, filter \"%2\""_s.arg(name, key), typed);
        }
        m_stack.tree(kind).setFilter({});
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    ConfigObjects m_texts;
    Stack m_stack;
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
         given.isEmpty() ? QString(QStringLiteral("100000 1000000")).split(u' ') : given) {
        const QTemporaryDir folder;
        std::printf("%s tracks\n", qPrintable(count));
        bench::Run(skin, icons, folder.path(), bench::libraryFile(count.toInt())).all();
    }
}

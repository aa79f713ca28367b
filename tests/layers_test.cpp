#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace Qt::Literals::StringLiterals;

/// Layers from the top of the include order down: a folder uses its own files and those of folders
/// with a lower number.
const std::vector<std::pair<QString, int>> kLayers = {
    // Implementations of the seam: named by the composition root only.
    {u"platform/sqlite/"_s, 1},
    {u"platform/linux/"_s, 1},
    {u"platform/qt/"_s, 1},
    {u"platform/"_s, 0},
    {u"config/"_s, 2},
    {u"store/"_s, 3},
    {u"bus/"_s, 4},
    {u"intake/"_s, 5},
    {u"playlists/"_s, 6},
    {u"views/"_s, 7},
    {u"library/"_s, 8},
    {u"playlistview/"_s, 9},
    {u"playlistfiles/"_s, 10},
    {u"trackedit/"_s, 11},
    {u"trees/"_s, 12},
    {u"tagbench/"_s, 13},
    {u"care/"_s, 14},
    {u"monitor/"_s, 15},
    {u"player/"_s, 16},
    {u"settings/"_s, 17},
    {u"help/"_s, 18},
    {u"shell/"_s, 19},
    {u"siblings/"_s, 20},
};

/// Drawers of platform/sqlite/, ordered in the same way.
const std::vector<std::pair<QString, int>> kDrawers = {
    {u"platform/sqlite/functions/"_s, 0},
    {u"platform/sqlite/dialect/"_s, 1},
    {u"platform/sqlite/index/"_s, 2},
    {u"platform/sqlite/engine/"_s, 3},
};

/// What the composition root sees of them.
const QString kEngineDoor = u"platform/sqlite/engine/sqlite_engine.h"_s;
const QString kCareDoor = u"platform/sqlite/engine/database_care.h"_s;

QString layerName(const QString& file)
{
    for (const auto& [prefix, level] : kLayers) {
        if (file.startsWith(prefix)) {
            return prefix;
        }
    }
    return {};
}

int level(const QString& layer)
{
    for (const auto& [prefix, number] : kLayers) {
        if (prefix == layer) {
            return number;
        }
    }
    return -1;
}

bool isImplementation(const QString& layer)
{
    return layer == "platform/sqlite/"_L1 || layer == "platform/linux/"_L1 ||
           layer == "platform/qt/"_L1;
}

bool isForm(const QString& file)
{
    return file.contains("/ui/"_L1) || file.startsWith("platform/qt/"_L1);
}

bool isCompositionRoot(const QString& file)
{
    return file.startsWith("shell/wings/"_L1) || file.startsWith("shell/application."_L1) ||
           file.startsWith("siblings/"_L1) || file.endsWith("/main.cpp"_L1);
}

/// -1 for a file of platform/sqlite/ that lies in none of its drawers.
int drawerOf(const QString& file)
{
    for (const auto& [prefix, number] : kDrawers) {
        if (file.startsWith(prefix)) {
            return number;
        }
    }
    return -1;
}

/// What is wrong with one file of platform/sqlite/ including another, or an empty text.
QString drawerFault(const QString& file, const QString& header)
{
    const int from = drawerOf(file);
    const int to = drawerOf(header);
    if (from < 0 || to < 0) {
        return u"lies in no drawer"_s;
    }
    return to <= from ? QString() : u"uses a drawer below its own"_s;
}

/// What is wrong with `file` including `header`, or an empty text.
QString fault(const QString& file, const QString& header)
{
    const QString from = layerName(file);
    const QString to = layerName(header);
    if (to.isEmpty()) {
        return header.contains(u'/') ? u"unknown folder"_s : QString();
    }
    if (from == to) {
        return from == "platform/sqlite/"_L1 ? drawerFault(file, header) : QString();
    }
    if (isImplementation(to)) {
        if (to == "platform/sqlite/"_L1 && header != kEngineDoor && header != kCareDoor) {
            return u"looks into the database engine"_s;
        }
        const bool qtForForms = to == "platform/qt/"_L1 && isForm(file);
        return isCompositionRoot(file) || qtForForms ? QString()
                                                     : u"names an implementation of the seam"_s;
    }
    if (isImplementation(from)) {
        return to == "platform/"_L1 ? QString() : u"the seam knows nothing of ours"_s;
    }
    // playlistfiles/ stands below library/ but needs nothing of it.
    if (from == "playlistfiles/"_L1 && to == "library/"_L1) {
        return u"playlistfiles/ needs no library/"_s;
    }
    return level(to) <= level(from) ? QString() : u"uses a folder below its own"_s;
}

struct Include
{
    QString file;
    QString header;
    bool system;
};

std::vector<Include> allIncludes()
{
    static const QRegularExpression form(u"^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]"_s,
                                         QRegularExpression::MultilineOption);
    const QString root = QString::fromUtf8(MLV_SOURCE_ROOT) + u'/';
    std::vector<Include> result;
    QDirIterator walk(root, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        const QString name = file.fileName().mid(root.size());
        if (name.startsWith("pch/"_L1)) {
            continue;
        }
        for (auto it = form.globalMatch(text); it.hasNext();) {
            const auto match = it.next();
            result.push_back({name, match.captured(2), match.captured(1) == u'<'});
        }
    }
    return result;
}

TEST(Layers, EveryFolderUsesOnlyFoldersAboveIt)
{
    int seen = 0;
    for (const Include& include : allIncludes()) {
        if (!include.system) {
            ++seen;
            EXPECT_EQ(fault(include.file, include.header), QString())
                << include.file.toStdString() << " includes " << include.header.toStdString();
        }
    }
    EXPECT_GT(seen, 10);
}

using Graph = std::map<QString, std::vector<QString>>;

/// Follows the arrows from `node`. \return a ring as its files in order, or nothing
QStringList
ringFrom(const QString& node, const Graph& graph, QStringList& path, QSet<QString>& done)
{
    if (const qsizetype at = path.indexOf(node); at >= 0) {
        return path.mid(at) << node;
    }
    const auto arrows = graph.find(node);
    if (done.contains(node) || arrows == graph.end()) {
        return {};
    }
    path.append(node);
    for (const QString& next : arrows->second) {
        if (QStringList ring = ringFrom(next, graph, path, done); !ring.isEmpty()) {
            return ring;
        }
    }
    path.removeLast();
    done.insert(node);
    return {};
}

QStringList ringOf(const Graph& graph)
{
    QSet<QString> done;
    for (const auto& [node, arrows] : graph) {
        QStringList path;
        if (QStringList ring = ringFrom(node, graph, path, done); !ring.isEmpty()) {
            return ring;
        }
    }
    return {};
}

/// A header and its source are one node: what either includes, the pair needs.
QString nodeOf(const QString& file)
{
    return file.section(u'.', 0, 0);
}

TEST(Layers, NoFilesOfTheDatabaseEngineIncludeEachOtherInARing)
{
    Graph graph;
    for (const Include& include : allIncludes()) {
        const QString from = nodeOf(include.file);
        const QString to = nodeOf(include.header);
        if (!include.system && from != to && from.startsWith("platform/sqlite/"_L1)) {
            graph[from].push_back(to);
        }
    }
    EXPECT_GT(graph.size(), 50U);
    EXPECT_EQ(ringOf(graph).join(u" -> "_s), QString());
}

TEST(Layers, TheGuardFindsARing)
{
    Graph graph{{u"a"_s, {u"b"_s, u"c"_s}}, {u"b"_s, {u"d"_s}}, {u"c"_s, {u"d"_s}}};
    EXPECT_TRUE(ringOf(graph).isEmpty());
    graph[u"d"_s] = {u"c"_s};
    EXPECT_EQ(ringOf(graph), QStringList({u"d"_s, u"c"_s, u"d"_s}));
    graph[u"d"_s] = {u"d"_s};
    EXPECT_EQ(ringOf(graph), QStringList({u"d"_s, u"d"_s}));
}

TEST(Layers, OneFileAloneMakesFileDialogsAndReadsFilesForTheirKind)
{
    static const QRegularExpression reader(
        u"^(QtWidgets/|QtCore/|QtGui/)?"
        "Q(FileDialog|FileSystemModel|FileIconProvider|MimeDatabase)$"_s);
    QSet<QString> users;
    for (const Include& include : allIncludes()) {
        if (include.system && reader.match(include.header).hasMatch()) {
            users.insert(include.file);
        }
    }
    EXPECT_EQ(users, QSet<QString>({u"platform/qt/file_dialogs.cpp"_s}));
}

TEST(Layers, WidgetsAreNamedByFormsAndGeneralControlsAlone)
{
    static const QRegularExpression widget(
        u"^(QtWidgets/.*|QtWidgets|Q(Application|Widget|MainWindow|Dialog|MessageBox|FileDialog|"
        "Label|LineEdit|ComboBox|PushButton|ToolButton|ToolBar|TableView|TreeView|ListView|"
        "HeaderView|Menu|MenuBar|StatusBar|ProgressBar|Splitter|StyledItemDelegate|Style|"
        "ProxyStyle|BoxLayout|VBoxLayout|HBoxLayout|GridLayout|StackedWidget|SplashScreen))$"_s);
    for (const Include& include : allIncludes()) {
        if (include.system && widget.match(include.header).hasMatch()) {
            EXPECT_TRUE(isForm(include.file))
                << include.file.toStdString() << " includes " << include.header.toStdString();
        }
    }
}

TEST(Layers, TheGuardFindsWhatItForbids)
{
    EXPECT_FALSE(fault(u"store/x.cpp"_s, u"library/mp3db.h"_s).isEmpty());
    EXPECT_FALSE(fault(u"shell/mlvdb.cpp"_s, u"platform/linux/linux_files.h"_s).isEmpty());
    EXPECT_FALSE(fault(u"library/mp3db.cpp"_s, u"platform/sqlite/dialect/a.h"_s).isEmpty());
    EXPECT_FALSE(fault(u"platform/sqlite/engine/a.cpp"_s, u"store/b.h"_s).isEmpty());
    EXPECT_FALSE(fault(u"shell/a.cpp"_s, u"platform/sqlite/engine/session.h"_s).isEmpty());
    EXPECT_FALSE(fault(u"platform/db/a.h"_s, u"platform/qt/b.h"_s).isEmpty());
    EXPECT_FALSE(fault(u"playlistfiles/a.h"_s, u"library/b.h"_s).isEmpty());
    EXPECT_TRUE(fault(u"library/ui/a.cpp"_s, u"platform/qt/grid.h"_s).isEmpty());
    EXPECT_TRUE(
        fault(u"shell/application.cpp"_s, u"platform/sqlite/engine/sqlite_engine.h"_s).isEmpty());
}

TEST(Layers, TheGuardKnowsTheOrderOfTheDrawers)
{
    const QString functions = u"platform/sqlite/functions/a.h"_s;
    const QString dialect = u"platform/sqlite/dialect/a.h"_s;
    const QString index = u"platform/sqlite/index/a.h"_s;
    const QString engine = u"platform/sqlite/engine/a.h"_s;
    for (const QString& below : {index, engine}) {
        EXPECT_TRUE(fault(below, functions).isEmpty()) << below.toStdString();
        EXPECT_TRUE(fault(below, dialect).isEmpty()) << below.toStdString();
        EXPECT_FALSE(fault(functions, below).isEmpty()) << below.toStdString();
        EXPECT_FALSE(fault(dialect, below).isEmpty()) << below.toStdString();
    }
    EXPECT_TRUE(fault(dialect, functions).isEmpty());
    EXPECT_FALSE(fault(functions, dialect).isEmpty());
    EXPECT_TRUE(fault(engine, index).isEmpty());
    EXPECT_FALSE(fault(index, engine).isEmpty());
    EXPECT_FALSE(fault(u"platform/sqlite/a.cpp"_s, dialect).isEmpty());
    EXPECT_FALSE(fault(engine, u"platform/sqlite/a.h"_s).isEmpty());
}

} // namespace

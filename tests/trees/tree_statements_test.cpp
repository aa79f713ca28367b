// The statements with which the library tree fills its pages and stores ticks, whole: other
// programs of the suite watch the same tables.
#include "playlists/tree_favorites.h"
#include "support/statement_engine.h"
#include "trees/library_tree_panel.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class TreeStatements : public test::LibraryTreeTest
{
protected:
    /// All statements while a page is filled.
    /// \param isFirst the page is the one that the start fills
    QStringList noted(const std::function<void(Tree&)>& act, bool isFirst = false)
    {
        TreeParts over = parts();
        StatementParts behind{over};
        Tree panel(behind.parts, form);
        panel.start();
        if (!isFirst) {
            behind.engine.statements.take();
        }
        act(panel);
        return behind.engine.statements.take();
    }

    /// Those about one of the tables.
    QStringList
    about(const QString& table, const std::function<void(Tree&)>& act, bool isFirst = false)
    {
        QStringList found;
        for (const QString& statement : noted(act, isFirst)) {
            if (statement.contains(u" from "_s + table + u' ')) {
                found.append(statement);
            }
        }
        return found;
    }

    /// The last statement when the row of that key is opened.
    QString opened(TreeKind kind, const QString& tool, const QString& key)
    {
        const QStringList statements = noted([&](Tree& panel) {
            panel.toolPressed(tool);
            panel.rowOpening(form.pages[size_t(kind)].find(key));
        });
        return statements.isEmpty() ? QString() : statements.last();
    }

    QStringList filled(const QString& tool, const QString& table)
    {
        return about(
            table, [&](Tree& panel) { panel.toolPressed(tool); }, tool == u"tree.dir");
    }

    /// The same behind an engine that notes what it is asked.
    struct StatementParts
    {
        explicit StatementParts(const TreeParts& of)
            : engine(of.engine)
            , parts{.engine = engine,
                    .settings = of.settings,
                    .texts = of.texts,
                    .lists = of.lists,
                    .loop = of.loop,
                    .bus = of.bus,
                    .warnings = of.warnings,
                    .popup = of.popup,
                    .sink = of.sink,
                    .mayWrite = of.mayWrite,
                    .track = of.track,
                    .cover = of.cover,
                    .placeOf = of.placeOf,
                    .append = of.append,
                    .startViewer = of.startViewer,
                    .rebuildTables = of.rebuildTables}
        {}

        test::StatementEngine engine;
        TreeParts parts;
    };

    /// What a tick of the user makes of the tables.
    QStringList stored(const std::function<void(TreeFavorites&)>& act)
    {
        test::StatementEngine engine(*lists.engine);
        TreeFavorites favorites(engine, *lists.settings, {});
        act(favorites);
        return engine.statements.take();
    }
};

const QString kNamed = u"select Name, anzahl, imgkey, favorit, Name from "_s;

TEST_F(TreeStatements, DirectoriesAreFavouritesByTheirTimeThenAllByNumber)
{
    addDirectory(u"/"_s, 0, u"/"_s, 0, 1);
    EXPECT_EQ(filled(u"tree.dir"_s, u"tree_dir"_s),
              (QStringList{u"select Name, anzahl, imgkey, favorit, Path from tree_dir where "
                           "favorit=true order by tstamp desc"_s,
                           u"select rLevel, Name, Path, vName, Drive, anzahl, BAnzahl, imgkey, "
                           "favorit from tree_dir order by id asc"_s}));
}

TEST_F(TreeStatements, GenresAreFavouritesByTheirTimeThenAllByNumber)
{
    addNamed(u"tree_genre"_s, u"Soul"_s, 2);
    EXPECT_EQ(filled(u"tree.genre"_s, u"tree_genre"_s),
              (QStringList{kNamed + u"tree_genre where favorit=true order by tstamp desc"_s,
                           kNamed + u"tree_genre  order by id asc"_s}));
}

TEST_F(TreeStatements, AlbumsOfMoreThanOneTrackAreListed)
{
    addNamed(u"tree_album"_s, u"Nacht"_s, 2);
    EXPECT_EQ(filled(u"tree.album"_s, u"tree_album"_s),
              (QStringList{kNamed + u"tree_album where favorit=true order by tstamp desc"_s,
                           kNamed + u"tree_album where anzahl>1 order by id asc"_s}));
}

TEST_F(TreeStatements, OfTheArtistsOnlyFavouritesAreReadUntilALetterIsOpened)
{
    addNamed(u"tree_interpret"_s, u"Anna"_s, 1);
    EXPECT_EQ(filled(u"tree.interpret"_s, u"tree_interpret"_s),
              QStringList{kNamed + u"tree_interpret where favorit=true order by tstamp desc"_s});
    const QStringList letter = about(u"tree_interpret"_s, [&](Tree& panel) {
        panel.toolPressed(u"tree.interpret"_s);
        const auto& page = form.pages[size_t(TreeKind::Interpret)];
        for (int row = 0; row < page.rowCount(); ++row) {
            if (page.row(row).key.startsWith(u"INP?"_s) && page.row(row).text == u"A") {
                panel.rowOpening(row);
                return;
            }
        }
    });
    ASSERT_EQ(letter.size(), 2);
    EXPECT_EQ(letter[1], kNamed + u"tree_interpret where name like '[A]*' order by id desc"_s);
}

TEST_F(TreeStatements, TheFavouritesAreReadFromTheirFourTables)
{
    for (const auto& [table, key] : {std::pair{u"tree_interpret"_s, u"Name"_s},
                                     {u"tree_dir"_s, u"Path"_s},
                                     {u"tree_album"_s, u"Name"_s},
                                     {u"tree_genre"_s, u"Name"_s}}) {
        EXPECT_EQ(filled(u"tree.favorit"_s, table),
                  QStringList{u"select Name, anzahl, imgkey, favorit, %1 from %2 where "
                              "favorit=true order by tstamp desc"_s.arg(key, table)});
    }
}

TEST_F(TreeStatements, ArtistsBelowAGenreAreReadWhenItIsOpened)
{
    addNamed(u"tree_genre"_s, u"It's Soul"_s, 2, 1);
    EXPECT_EQ(opened(TreeKind::Genre, u"tree.genre"_s, u"GEN?Genre??It's Soul"_s),
              kNamed + u"tree_genre_interpret where genre='It''s Soul' order by id"_s);
    EXPECT_EQ(opened(TreeKind::Genre, u"tree.genre"_s, u"FGN?Genre??It's Soul"_s),
              kNamed + u"tree_genre_interpret where favorit=true and genre='It''s Soul' "
                       "order by id"_s);
    EXPECT_EQ(opened(TreeKind::Favorit, u"tree.favorit"_s, u"FGEN?Genre??It's Soul"_s),
              kNamed + u"tree_genre_interpret where favorit=true and genre ='It''s Soul' "
                       "order by id desc"_s);
}

TEST_F(TreeStatements, TheStatisticsAreReadFromTheirView)
{
    const auto open = [](Tree& panel) { panel.toolPressed(u"tree.state"_s); };
    EXPECT_EQ(noted(open).filter(u"v_state"_s),
              QStringList{u"select tyear, tmon, monat, datum, tday from v_state"_s});
}

TEST_F(TreeStatements, TheInformationOfATrackIsReadFromItsPlaysAndLists)
{
    const QString fid = lists.library.add();
    lists.library.addPlaylist({.Name = u"Abend"_s, .GRID = lists.friday, .tracks = {fid}});
    const QStringList statements = noted([&](Tree& panel) {
        panel.toolPressed(u"tree.info"_s);
        send(u"info.from.fid"_s, fid);
    });
    EXPECT_EQ(statements.filter(fid),
              (QStringList{u"select * from vpl_getstat where fid='%1' order by tday"_s.arg(fid),
                           u"select count(*) as anz from pl_all where fid='%1'"_s.arg(fid),
                           u"select * from vpl_getinfo where fid='%1'"_s.arg(fid)}));
}

TEST_F(TreeStatements, TheExtendedTreeIsReadByItsHeadings)
{
    lists.execute(u"delete from TreeErweitertConfig"_s);
    lists.execute(u"insert into TreeErweitertConfig (id,parentid,sid,aktiv,ItemTyp,ItemName,"
                  u"RowExpand) values (7,0,1,true,'heading','Felder',-1)"_s);
    const QString all = u"select * from TreeErweitertConfig where parentid=%1 and aktiv=true "
                        u"order by sid"_s;
    EXPECT_EQ(about(u"TreeErweitertConfig"_s,
                    [](Tree& panel) { panel.toolPressed(u"tree.erweitert"_s); }),
              (QStringList{all.arg(0), all.arg(7)}));
    EXPECT_EQ(stored([](TreeFavorites& favorites) { favorites.SetCollapsInfoState(7, u"false"); }),
              QStringList{u"update TreeErweitertConfig set RowExpand=false where id = 7"_s});
}

TEST_F(TreeStatements, PlaylistsAreReadByTheirGroups)
{
    EXPECT_EQ(filled(u"tree.playlist"_s, u"pl_group"_s),
              QStringList{u"select * from pl_group order by sid"_s});
    EXPECT_EQ(filled(u"tree.playlist"_s, u"pl_name"_s),
              (QStringList{
                  u"select * from pl_name where GRID=%1 order by sid asc"_s.arg(lists.friday),
                  u"select * from pl_name where GRID=%1 order by sid asc"_s.arg(lists.saturday)}));
}

TEST_F(TreeStatements, GroupsThatAnotherProgramTakesAwayWhileTheyAreReadAreShownOnceMore)
{
    constexpr int kGroups = 600; // more than are read at once
    for (int group = 1; group <= kGroups; ++group) {
        lists.execute(
            u"insert into pl_group (GRID,SID,Name) values (%1,%1,'g%2')"_s.arg(1'000'000 + group)
                .arg(group));
    }
    TreeParts over = parts();
    StatementParts noted{over};
    Tree panel(noted.parts, form);
    panel.start();
    noted.engine.statements.before = [&](const QString& statement) {
        if (statement.startsWith(u"select * from pl_name where GRID=")) {
            lists.execute(u"delete from pl_group where GRID>1000000"_s);
        }
    };
    panel.toolPressed(u"tree.playlist"_s);
    const test::PlainTree& page = form.pages[size_t(TreeKind::Playlist)];
    EXPECT_GE(page.find(u"PLGROUP?Gruppe??%1"_s.arg(1'000'000 + kGroups)), 0);
    EXPECT_EQ(page.note.title, QString());
}

TEST_F(TreeStatements, TicksAreStoredAsTheOtherProgramsOfTheSuiteStoreThem)
{
    using Favorites = TreeFavorites;

    struct Case
    {
        void (Favorites::*store)(QStringView key, QStringView word);
        QString key;
        QString word;
        QStringList statements;
    };

    const std::vector<Case> cases{
        {&Favorites::UpdateTreeDirFavorit,
         u"DIR?Path?\?/m/x/"_s,
         u"update"_s,
         {u"update tree_dir set favorit=true, tstamp=now where path='/m/x'"_s}},
        {&Favorites::UpdateTreeDirFavorit,
         u"DIR?Path?\?/m/x/"_s,
         u"delete"_s,
         {u"update tree_dir set favorit=false, tstamp=now where path='/m/x'"_s}},
        {&Favorites::UpdateTreeAlbum,
         u"ABM?Album??It's"_s,
         u"update"_s,
         {u"update tree_album set favorit=true, tstamp=now where name='It*s'"_s}},
        {&Favorites::UpdateTreeAlbum,
         u"ABM?Album??Nacht"_s,
         u"delete"_s,
         {u"update tree_album set favorit=false, tstamp=now where name='Nacht'"_s}},
        {&Favorites::UpdateTreeInterpret,
         u"IEX?Interpret??Anna"_s,
         u"update"_s,
         {u"update tree_Interpret set favorit=true, tstamp=now where name='Anna'"_s}},
        {&Favorites::UpdateTreeInterpret,
         u"IEX?Interpret??Anna"_s,
         u"delete"_s,
         {u"update tree_Interpret set favorit=false, tstamp=now where name='Anna'"_s}},
        {&Favorites::UpdateTreePlaylist,
         u"PLG?Playlist??7"_s,
         u"update"_s,
         {u"update pl_name set activ=true, UpdateTime=now where nid=7"_s}},
        {&Favorites::UpdateTreePlaylist,
         u"PLG?Playlist??7"_s,
         u"delete"_s,
         {u"update pl_name set activ=false, UpdateTime=now where nid=7"_s}},
        {&Favorites::UpdateTreePlaylistGroup,
         u"PLGROUP?Gruppe??3"_s,
         u"update"_s,
         {u"update pl_group set activ=true, UpdateTime=now where grid=3"_s}},
        {&Favorites::UpdateTreePlaylistGroup,
         u"PLGROUP?Gruppe??3"_s,
         u"delete"_s,
         {u"update pl_group set activ=false, UpdateTime=now where grid=3"_s}},
        {&Favorites::UpdateTreeGenreFavorit,
         u"GEN?Genre??Soul"_s,
         u"update"_s,
         {u"update tree_genre set favorit=true ,tstamp=now where name='Soul'"_s,
          u"update tree_genre_interpret set favorit=true,tstamp=now where genre='Soul'"_s}},
        {&Favorites::UpdateTreeGenreFavorit,
         u"GEN?Genre??Soul"_s,
         u"delete"_s,
         {u"update tree_genre set favorit=false where name='Soul'"_s,
          u"update tree_genre_interpret set favorit=false,tstamp=now where genre='Soul'"_s}},
        {&Favorites::UpdateTreeGenreFavorit,
         u"GEX?Interpret??Anna"_s,
         u"update_fav"_s,
         {u"update tree_genre_interpret set favorit=true,tstamp=now where name='Anna'"_s}},
        {&Favorites::UpdateTreeGenreFavorit,
         u"GEX?Interpret??Anna"_s,
         u"delete_fav"_s,
         {u"update tree_genre_interpret set favorit=false,tstamp=now where name='Anna'"_s}},
        {&Favorites::UpdateTreeGenreFavorit,
         u"GEN?Genre??Soul"_s,
         u"update_fav_dir"_s,
         {u"update tree_genre set favorit=true , tstamp=now where name='Soul'"_s}},
        {&Favorites::UpdateTreeAlbum, u"ABM?Album??Nacht"_s, u"nonsense"_s, {}},
        {&Favorites::UpdateTreeAlbum, u"no key"_s, u"update"_s, {}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(stored([&](Favorites& favorites) { (favorites.*one.store)(one.key, one.word); }),
                  one.statements)
            << one.key.toStdString() << ' ' << one.word.toStdString();
    }
}

} // namespace
} // namespace melovane

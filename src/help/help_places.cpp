#include "help/help_places.h"

#include <algorithm>

namespace melovane {

std::span<const HelpPlace> helpPlaces()
{
    static constexpr HelpPlace kPlaces[] = {
        // Panels of the console.
        {u"Text1", u"search"},
        {u"ctl_MP3DB1", u"search"},
        {u"Tree1", u"trees"},
        {u"PlaylistFavorit1", u"lists#groups"},
        {u"ctl_Playlist1", u"lists"},
        {u"EditTag1", u"tags#panel"},

        // Its windows.
        {u"QuickOpen", u"search#quick"},
        {u"frmEditGrid", u"settings#columns"},
        {u"frmKopieFile", u"night#export"},
        {u"frmBerDB", u"care#cleaning"},
        {u"frmRecycler", u"care#cleaning"},
        {u"frmBackups", u"care#backup"},
        {u"frmHealth", u"care#health"},
        {u"FindAgainWindow", u"care#again"},
        {u"DoublesWindow", u"care#doubles"},
        {u"frmEditBox", u"lists#groups"},
        {u"frmDetail", u"lists"},

        // The other programs.
        {u"IntakeWindow", u"start#import"},
        {u"SettingsWindow", u"settings"},
        {u"tblKeys", u"keys"},
        {u"BenchWindow", u"tags#bench"},
        {u"SleeveWindow", u"tags#covers"},
        {u"WriteTagsWindow", u"tags#files"},
        {u"PlayerWindow", u"player"},
        {u"LevelWindow", u"search#listen"},
    };
    return kPlaces;
}

QString helpPlaceOf(const QStringList& names)
{
    for (const QString& name : names) {
        const auto places = helpPlaces();
        const auto found = std::ranges::find(places, QStringView(name), &HelpPlace::control);
        if (found != places.end()) {
            return found->place.toString();
        }
    }
    return kHelpPages.front().toString();
}

} // namespace melovane

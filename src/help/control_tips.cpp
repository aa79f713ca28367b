#include "help/control_tips.h"

#include <algorithm>

namespace melovane {

std::span<const ControlTip> controlTips()
{
    // clang-format off
    static constexpr ControlTip kTips[] = {
        {u"EditTag1", u"txtTitel", u"tip.field"},
        {u"EditTag1", u"txtInterpret", u"tip.field"},
        {u"EditTag1", u"txtAlbum", u"tip.field"},
        {u"EditTag1", u"txtKommentar", u"tip.field"},
        {u"EditTag1", u"txtJahr", u"tip.field"},
        {u"EditTag1", u"txtTrack", u"tip.field"},
        {u"EditTag1", u"txtBPM", u"tip.field"},
        {u"EditTag1", u"cmbGenre", u"tip.field"},
        {u"EditTag1", u"cmbKategorie", u"tip.field"},
        {u"EditTag1", u"cmbStimmung", u"tip.field"},
        {u"EditTag1", u"cmbSituation", u"tip.field"},
        {u"EditTag1", u"cmbTempo", u"tip.field"},
        {u"EditTag1", u"txtUser1", u"tip.field"},
        {u"EditTag1", u"txtUser2", u"tip.field"},
        {u"EditTag1", u"txtUser3", u"tip.field"},
        {u"EditTag1", u"txtUser4", u"tip.field"},
        {u"EditTag1", u"txtUser5", u"tip.field"},
        {u"frmBerDB", u"cmdOk", u"tip.clean.ok"},
        {u"frmBerDB", u"checkBer_0", u"tip.clean.0"},
        {u"frmBerDB", u"checkBer_1", u"tip.clean.1"},
        {u"frmBerDB", u"checkBer_2", u"tip.clean.2"},
        {u"frmBerDB", u"checkBer_3", u"tip.clean.3"},
        {u"frmBerDB", u"checkBer_4", u"tip.clean.4"},
        {u"frmRecycler", u"cmdOne", u"tip.recycler.one"},
        {u"frmRecycler", u"cmdAll", u"tip.recycler.all"},
        {u"frmBackups", u"cmdNow", u"tip.backup.now"},
        {u"frmBackups", u"cmdCheck", u"tip.backup.check"},
        {u"frmBackups", u"cmdRestore", u"tip.backup.restore"},
        {u"FindAgainWindow", u"cmdSearch", u"tip.find.search"},
        {u"FindAgainWindow", u"cmdApply", u"tip.find.apply"},
        {u"DoublesWindow", u"checkSound", u"tip.double.sound"},
        {u"DoublesWindow", u"checkNames", u"tip.double.names"},
        {u"DoublesWindow", u"cmdSearch", u"tip.double.search"},
        {u"DoublesWindow", u"cmdMerge", u"tip.double.merge"},
        {u"frmEditGrid", u"cmdOk", u"tip.columns.ok"},
        {u"frmEditGrid", u"txtHeading", u"tip.columns.heading"},
        {u"frmEditGrid", u"cmdAddCol", u"tip.columns.add"},
        {u"frmEditGrid", u"cmdRemoveCol", u"tip.columns.remove"},
        {u"QuickOpen", u"txtQuick", u"tip.quick"},
        {u"frmHealth", u"cmdAgain", u"tip.health.again"},
        {u"frmHealth", u"cmdCopy", u"tip.health.copy"},
        {u"frmInfo", u"cmdOk", u"tip.close"},
        {u"frmInfo", u"Facts", u"tip.facts"},
        {{}, u"MoreTools", u"tip.more"},
        {{}, u"cmdAbbruch", u"tip.close"},
        {{}, u"cmdClose", u"tip.close"},
    };
    // clang-format on
    return kTips;
}

QString controlTipOf(const QStringList& names)
{
    if (names.isEmpty()) {
        return {};
    }
    const auto tips = controlTips();
    const auto found = std::ranges::find_if(tips, [&](const ControlTip& tip) {
        return tip.control == names.first() &&
               (tip.window.isEmpty() || names.contains(tip.window.toString()));
    });
    return found == tips.end() ? QString() : found->textKey.toString();
}

} // namespace melovane

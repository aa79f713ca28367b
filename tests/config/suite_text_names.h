#pragma once

#include <QRegularExpression>
#include <QStringList>

namespace melovane::test {

/// Names of all texts that the programs of the suite share, in the order of filling.
inline QStringList suiteTextNames()
{
    return QString::fromLatin1(R"(
conf.monitor.playtype uebernehmen Abbruch Play centerPlay stop tooltip.play.start
tooltip.play.center tooltip.play.stop tooltip.play.vor tooltip.play.zur tooltip.all.book
tooltip.all.copy tooltip.all.delete tooltip.all.data.select tooltip.all.data.insert
tooltop.all.data.append tooltip.all.clip.insert tooltip.all.clip.append tooltip.all.newdoc
tooltip.all.newdir all.newdir tooltip.all.activate tooltip.all.lock tooltip.all.refresh
tooltip.all.sample ok achtung minuten ToolTipPlaylistNew ToolTipPlaylistLock
ToolTipPlaylistActiv ToolTipPlaylistDel ToolTipPlaylistDetail ToolTipPlaylistGoTo ToolTipRefresh
ToolTipDBTableDel ToolTipAllTableDetail ToolTipAllTableSel ToolTipAllTableCopy
ToolTipAllTableAppend ToolTipAllTableInsert ToolTipPlayerPlay ToolTipPlayerStop
ToolTipPlayerPlayCenter ToolTipPlayerRemain ToolTipPlayerForward ToolTipKIV ToolTipSuchen
ToolTipHistoryRemain ToolTipHistoryForward ToolTipPlaylistTableAppend ToolTipPlaylistTableInsert
ToolTipPlaylistTableDel ToolTip.Sleeve.Viewer ToolTip.Tree.Genre ToolTip.Tree.Dir
ToolTip.Tree.Album ToolTip.Tree.Playlist ToolTip.Tree.state ToolTip.Tree.Favorit
ToolTip.Tree.Info ToolTip.Tree.Erweitert ToolTip.Tree.collaps.close ToolTip.Tree.Interpret
ToolTipTreeNewGroup ToolTipTreeDelGroup ToolTip.Player.Mixer.Reload
ToolTip.Player.Mixer.Talkover ToolTip.Player.Mixer.Shuffle ToolTip.Player.Mixer.Mixstyle.NoCange
ToolTip.Player.Mixer.Regler.Soundkard msg-001 msg-002 inf-001 inf-002 inf-003 inf-004 noWarn
warnDelPlaylistLock warnDelPlaylistAktiv warnDelPlaylist warnDelGroup warnM3Uerrors nodb
dbverserr glob_warn dbOpenError Db.Open.No.Data confApp confnodb confdbfile confLabelTexte_7
confLabelTexte_6 confLabelTexte_5 confLabelTexte_4 confLabelTexte_3 confLabelTexte_2
confLabelTexte_1 confLabelTexte_0 confSSTab_0 confSSTab_1 confSSTab_2 confSSTab_3 confFrame7
confCheckLiveSuche confFrame8 confReset confFrame5 confcmdCompact confFrame4 confFrame3
confFrame2 confFrame1 confSdel confSup confSdown confPlay1 confPlay2 confStop1 confStop2
confPause1 confPause2 confMix confLoop confMplay confMStop confTalkover Mixer.Jingle.1
Mixer.Jingle.2 Mixer.Jingle.3 Mixer.Jingle.4 Mixer.Jingle.5 Mixer.Jingle.6 Mixer.Jingle.7
Mixer.Jingle.Stop Mixer.Jingle.Volume tast.player.activate.tree tast.player.activate.table
confImTausch confImGenre confImDatei confImDel confTopDj confTopDB conf.GridSwap.EditPlay
conf.GridSwap.Edit conf.GridSwap.Play conf.GridSwap.AddPList confPlayNext confPlayNow
confPLDirFrame confProFrame confSoundkartFrame confDBFrame confPLSaveCheck confPLNameFrame
confPLGroupNameFrame confGridValue confGridDesc confGridActiv confGridIntervall
confSuchOptionCheck_0 confSuchOptionCheck_1 confSuchOptionCheck_2 confSuchOptionCheck_3
confChPlayerStartMixMode Compact.DB.Info Compact.DB.end Compact.DB.Wait impOk impOkEdit
mnuImpMP3_0 mnuImpMP3_1 mnuImpMP3_2 mnuAutosizeGrid mnuExitJobs mnuInternet_0 mnuInternet_1
mnuInternet_3 mnuPOPDBGRID_0 mnuPOPDBGRID_1 mnuPOPDBGRID_2 mnuPOPDBGRID_4 mnuPOPDBGRID_5
mnuPOPDBGRID_7 mnuPOPDBGRID_8 mnuPOPDBGRID_9 mnuPOPDBGRID_11 mnuPOPDBGRID_12 mnuPOPDBGRID_13
mnuPOPDBGRID_15 mnuPOPDBGRID_16 mnuPOPDBGRID_17 mnuDatei mnuConfig mnuImpPlaylistBas
mnuExpPlaylistBas noChangePlaylist mnuAktivePlaylist mnuAktivePlaystFiles mnuExit mnuExtra
mnuDelSuchlist mnuDelDayCount mnuViewDel mnuNoExist mnuNoExistSuchen mnuNoExistAnzeigen
mnuToDatei mnuRefreshTree mnuTopPlugin mnuAnsicht mnuPlaylist mnuDatenbank mnuRepairGridLayout
mnuFont mnuHelp mnuUeber frmBerDB chBerDB-0 chBerDB-1 chBerDB-2 chBerDB-3 chBerDB-4 errPlayer
errPlayerNoFile errPlayerNoMP3 errPlayerNext EditGridChGross EditGrid-db EditGrid-pl opExpFile_0
opExpFile_1 opExpFile_2 opExpDir_0 opExpDir_1 opExpDir_2 opExpDir_3 frExpNewDir frExpFile
frExpDir meldExpAbbruch meldExpEnd button.play.loop buttons.loop button.loop.plus
button.loop.minus buttons.takte button.takte.plus button.takte.minus player1.Global.Eq
player2.Global.Eq db.monitor.play.by.pos mixer.button.0 mixer.button.1 mixer.button.2
mixer.button.3 mixer.button.4 mixer.button.5 mixer.button.6 mixer.button.7 mixer.button.8
mixer.button.9 player.1.button.0 EditBox.Caption.NewGenre EditTag.NewGenre Button.0 Button.1
Button.2 Button.3 Button.4 Button.5 Button.Open.Mixstyle Button.Reload CheckBox.Shuffle
CheckBox.LockMix Button.View.AllVolume CheckBox.TalkOver Button.Jingle.Stop
Button.View.JingleMixer Sprach.Datei Importer.msg.findfile.end Importer.msg.errorfiles
Importer.msg.new.search Importer.msg.info.search Importer.msg.info.attention
Importer.msg.firstimport StartUp.Set.Old.Track StartUp.Set.To.Old.Position StartUp.Autoplay
Playlist.Time Playlist.View.Aktive.Rows Player.PitchDirection Player.One.Click.Action
player.monitor.pause.change Player.BPM.Anzeige Explorer.Kontext.Menu.Import
player.WaitForMixTime other.settings Explorer.Kontext.Menu.Import.shell other.db.settings
Tree.Item.No.Data player.mnuConfig player.mnuStatistikMenu player.mnuStatistik
player.mnuStatAutoMix player.mnuAnsicht player.mnuGridConfig player.mnuFont
player.mnuRepairGridLayout player.mnuDockDB player.mnuHelp player.mnuInternet player.mnuInfo
player.mnuToPlayer player.mnuAutocue player.mnuToAktivPlaylist player.mnuMelovaneKIV
player.mnuBeatGaugeManuell player.mnuBeatGauge player.mnuAutosizeGrid player.mnuMixStyleAllDel
player.mnuMixstyleCopyToAll player.mnuPlayNormal player.mnuPlayStop player.mnuPlayLoop
)")
        .split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
}

} // namespace melovane::test

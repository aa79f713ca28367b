// The properties of GlobalSettings, each made of its row in the table.
#include "config/global_settings.h"

namespace melovane {

// clang-format off
#define MLV_TEXT_SETTING(Name)                                                                     \
    QString GlobalSettings::Name() const { return text(Setting::Name); }                           \
    void GlobalSettings::Set##Name(const QString& value) { setText(Setting::Name, value); }

#define MLV_NUMBER_SETTING(Name)                                                                   \
    int GlobalSettings::Name() const { return number(Setting::Name); }                             \
    void GlobalSettings::Set##Name(int value) { setNumber(Setting::Name, value); }

#define MLV_HANDLE_SETTING(Name)                                                                   \
    int GlobalSettings::Name() const { return number(Setting::Name); }                             \
    void GlobalSettings::Set##Name(int value) { setHandle(Setting::Name, value); }

MLV_TEXT_SETTING(DbName)
MLV_TEXT_SETTING(LangFile)
MLV_TEXT_SETTING(SCardNameMonitor)
MLV_TEXT_SETTING(SCardNamePlayer1)
MLV_TEXT_SETTING(SCardNamePlayer2)
MLV_NUMBER_SETTING(DefaultVolume)
MLV_NUMBER_SETTING(MinMaxPitch)
MLV_NUMBER_SETTING(RePitchTime)
MLV_HANDLE_SETTING(MessageHandleDB)
MLV_HANDLE_SETTING(MessageHandleDJ)
MLV_NUMBER_SETTING(MaxBlendTime)
MLV_NUMBER_SETTING(TalkoverVolume)
MLV_NUMBER_SETTING(TalkoverBlendIn)
MLV_NUMBER_SETTING(TalkoverBlendOut)
MLV_NUMBER_SETTING(DefaultMixTime)
MLV_NUMBER_SETTING(LastConigCard)
MLV_NUMBER_SETTING(LiveSuche)
MLV_NUMBER_SETTING(HandleDB)
MLV_NUMBER_SETTING(HandleDj)
MLV_TEXT_SETTING(SkinFileName)
MLV_NUMBER_SETTING(LastAbsolutePosition)
MLV_NUMBER_SETTING(WriteStatistik)
MLV_NUMBER_SETTING(WriteStatistikAuto)
MLV_NUMBER_SETTING(ShiftPressHoldTime)
MLV_NUMBER_SETTING(NormalizeOn)
MLV_NUMBER_SETTING(NormalizeTuning)
MLV_NUMBER_SETTING(GridSwapEditPlay)
MLV_NUMBER_SETTING(FadeIn)
MLV_NUMBER_SETTING(FadeOut)
MLV_NUMBER_SETTING(StartMixMode)
MLV_NUMBER_SETTING(ID3v2Tags)
MLV_TEXT_SETTING(DefaultMixStyleIN)
MLV_TEXT_SETTING(DefaultMixStyleOUT)
MLV_NUMBER_SETTING(AutoCue)
MLV_NUMBER_SETTING(AutoCueLevel)
MLV_NUMBER_SETTING(AutoNormalize)
MLV_TEXT_SETTING(PlaylistVerzeichnis)
MLV_TEXT_SETTING(PlaylistNameFormat)
MLV_NUMBER_SETTING(AutoCueMaxScan)
MLV_NUMBER_SETTING(AutosizeGrid)
MLV_TEXT_SETTING(PlaylistGroupNameFormat)
MLV_NUMBER_SETTING(SuchAlbum)
MLV_NUMBER_SETTING(SuchDatei)
MLV_NUMBER_SETTING(SuchPath)
MLV_NUMBER_SETTING(SuchKommentar)
MLV_NUMBER_SETTING(DBGridLoadAllRows)
MLV_TEXT_SETTING(CDCacheDir)
MLV_TEXT_SETTING(LastImportDir)
// clang-format on

#undef MLV_TEXT_SETTING
#undef MLV_NUMBER_SETTING
#undef MLV_HANDLE_SETTING

int GlobalSettings::MessageHandleKiv() const
{
    return number(Setting::MessageHandleKiv);
}

} // namespace melovane

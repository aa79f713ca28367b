#pragma once

#include "store/mix_style.h"

#include <QString>

namespace melovane {

/// One row of `db_all` in memory. The order of the fields is that of the suite's record: keep.
///
/// A null column reads as the empty text or 0, a date as its text "dd.mm.yyyy hh:nn:ss".
struct MlvAllData
{
    QString FID;
    QString Titel;
    int Pitch = 0;
    int Volume = 0;
    QString Track;
    QString Note;
    QString Interpret;
    QString Kommentar;
    QString Album;
    QString Jahr;
    QString Genre;
    QString DName;
    int DTimeMsec = 0;
    int DLen = 0; ///< bytes
    QString DTime;
    QString DTSDatei;
    QString DTSImport;
    int DKhz = 0; ///< Hz
    int DBit = 0; ///< kbit/s
    QString BPM;
    int DEL = 0;
    int FrameStart = 0;
    int FrameStop = 0;
    int Normalize = 0;
    QString Play;
    int PlayCountDay = 0;
    int PlayCountAll = 0;
    QString Path;
    int DriveTyp = 0;
    QString DriveName;
    MLVMixStyle MixIn;
    MLVMixStyle MixOut;
    MlvEQStyle EQ;
    int MixTime = 0; ///< milliseconds
    QString Image;
    QString Kategorie;
    QString Situation;
    QString Stimmung;
    QString Tempo;
    QString User1;
    QString User2;
    QString User3;
    QString User4;
    QString User5;

    /// True when one of the five user fields holds something.
    [[nodiscard]] bool IsUser() const;

    /// True when one of the four selection fields holds something.
    [[nodiscard]] bool IsMusicMatch() const;
};

} // namespace melovane

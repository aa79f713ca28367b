#include "store/vpl_all.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString vplAllStatement()
{
    // clang-format off
    return u" SELECT 1 AS Nr, PL_ALL.Aktion, PL_ALL.FrameStop, PL_ALL.FrameStart, PL_ALL.FrameStart AS Start, PL_ALL.FrameStop AS Stop, "
           u" PL_ALL.FID, PL_ALL.PLID, PL_ALL.PNID, PL_ALL.EQ, PL_ALL.MixOut, PL_ALL.MixIn, PL_ALL.Pitch, PL_ALL.Volume, PL_ALL.MixTime, "
           u" PL_ALL.SID, db_all.Interpret, db_all.Kommentar, db_all.DTimeMsec, db_all.DTime, db_all.Album, db_all.Titel, db_all.Jahr, "
           u" db_all.BPM, db_all.Situation, db_all.Tempo, db_all.Stimmung, db_all.Kategorie, db_all.User1, db_all.User2, db_all.User3, "
           u" db_all.User4, db_all.User5, db_all.Play, db_all.PlayCountDay, db_all.PlayCountAll, db_all.Note, db_all.DEL, db_all.Genre, "
           u" db_all.DKhz, db_all.DBit, db_all.Path, db_all.DName, db_all.Track, db_all.Normalize, db_all.DriveTyp, db_all.DriveName, "
           u" PL_ALL.Command"
           u" FROM PL_ALL INNER JOIN db_all ON PL_ALL.FID = db_all.FID"
           u" ORDER BY PL_ALL.SID"_s;
    // clang-format on
}

} // namespace melovane

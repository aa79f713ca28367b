-- "Play" is the time of this playback, not of the last one.
SELECT pl_stat.tday, pl_stat.tstamp AS Play, db_all.FID, db_all.Titel, db_all.Interpret,
    db_all.Album, db_all.Genre, db_all.Jahr, db_all.Track, db_all.Kommentar, db_all.Note,
    db_all.BPM, db_all.Path, db_all.DName, db_all.DLen, db_all.DTime, db_all.DTimeMsec,
    db_all.DKhz, db_all.DBit, db_all.DTSDatei, db_all.DTSImport, db_all.DriveTyp,
    db_all.DriveName, db_all.DEL, db_all.FrameStart, db_all.FrameStop, db_all.Normalize,
    db_all.Pitch, db_all.Volume, db_all.MixIn, db_all.MixOut, db_all.eq, db_all.MixTime,
    db_all.PlayCountDay, db_all.PlayCountAll, db_all.favorit, db_all.Image, db_all.Kategorie,
    db_all.Situation, db_all.Stimmung, db_all.Tempo, db_all.User1, db_all.User2, db_all.User3,
    db_all.User4, db_all.User5
FROM pl_stat INNER JOIN db_all ON pl_stat.FID = db_all.FID

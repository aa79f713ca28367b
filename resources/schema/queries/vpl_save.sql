SELECT pl_name.NID AS nid, pl_name.Name AS plname, pl_group.Name AS GroupName,
    pl_all.SID, pl_all.PLID, pl_all.FID, db_all.Titel, db_all.Interpret, db_all.Genre,
    db_all.Album, db_all.Track, pl_all.Volume, pl_all.Pitch, db_all.BPM, db_all.DTimeMsec,
    pl_all.FrameStart, pl_all.FrameStop, pl_all.MixTime, pl_all.MixIn, pl_all.MixOut,
    pl_all.EQ AS eq, db_all.DName, db_all.Path
FROM ((pl_name INNER JOIN pl_all ON pl_name.NID = pl_all.PNID)
    INNER JOIN db_all ON pl_all.FID = db_all.FID)
    LEFT JOIN pl_group ON pl_name.GRID = pl_group.GRID
ORDER BY pl_name.NID, pl_all.SID, pl_all.PLID DESC

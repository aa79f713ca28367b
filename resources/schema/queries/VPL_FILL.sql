SELECT pl_all.PNID AS pnid, pl_all.PLID, pl_all.SID, pl_all.FID, db_all.DriveTyp
FROM pl_all INNER JOIN db_all ON pl_all.FID = db_all.FID

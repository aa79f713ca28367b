SELECT db_all.*, pl_all.PNID, pl_all.SID
FROM pl_all INNER JOIN db_all ON pl_all.FID = db_all.FID

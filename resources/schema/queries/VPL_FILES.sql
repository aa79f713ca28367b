-- The files of a playlist, each once.
SELECT DISTINCT pl_all.PNID AS pnid, db_all.FID, db_all.DLen
FROM pl_all INNER JOIN db_all ON pl_all.FID = db_all.FID

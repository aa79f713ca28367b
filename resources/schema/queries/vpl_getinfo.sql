-- A track that stands twice in a playlist names it once.
SELECT DISTINCT pl_all.FID AS fid, pl_all.PNID, pl_group.Name AS gName, pl_name.Name AS pName,
    pl_group.SID AS gSID, pl_name.SID AS pSID
FROM (pl_all INNER JOIN pl_name ON pl_all.PNID = pl_name.NID)
    INNER JOIN pl_group ON pl_name.GRID = pl_group.GRID
ORDER BY pl_group.SID, pl_name.SID, pl_all.PNID

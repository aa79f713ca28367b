-- A group without playlists gives one row too, with a null NID: a new group must be seen.
SELECT pl_name.NID, pl_group.GRID, pl_name.Name AS plname, pl_group.Name AS grname,
    pl_name.SID, pl_name.anzahl, pl_name.Activ, pl_name.IsPlay, pl_name.Lock, pl_name.Sicherung
FROM pl_group LEFT JOIN pl_name ON pl_group.GRID = pl_name.GRID
WHERE pl_group.GRID > 0
ORDER BY pl_group.SID, pl_group.GRID, pl_name.SID, pl_name.NID

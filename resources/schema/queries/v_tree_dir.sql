-- One row per folder, a folder before those below it. Discs share their folder names, so only
-- there the label tells folders apart; elsewhere a volume that was given another label must not
-- split its folders.
SELECT db_all.Path, Nz(Max(db_all.DriveName), '') AS DriveName, Max(db_all.DriveTyp) AS DriveTyp, Count(*) AS anzahl
FROM db_all
WHERE DEL = False AND Path <> ''
GROUP BY db_all.Path, IIf(db_all.DriveTyp = 4, 1, 0), IIf(db_all.DriveTyp = 4, Nz(db_all.DriveName, ''), '')
ORDER BY db_all.Path, IIf(db_all.DriveTyp = 4, Nz(db_all.DriveName, ''), '')

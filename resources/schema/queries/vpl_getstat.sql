SELECT FID AS fid, tday, Format(Max(tstamp), 'dd.mm.yyyy') AS datum
FROM pl_stat GROUP BY FID, tday ORDER BY tday

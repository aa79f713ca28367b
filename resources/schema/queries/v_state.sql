-- One row per day with playbacks, the newest first.
SELECT tyear, tmon, Format(Max(tstamp), 'mmmm') AS monat, tday,
    Format(Max(tstamp), 'dd.mm.yyyy') AS datum
FROM pl_stat GROUP BY tyear, tmon, tday
ORDER BY tyear DESC, tmon DESC, tday DESC

INSERT INTO tree_album (Name, anzahl, imgkey)
SELECT Album, Count(*), 'album' FROM db_all
WHERE DEL = False AND Album <> '' GROUP BY Album ORDER BY Album

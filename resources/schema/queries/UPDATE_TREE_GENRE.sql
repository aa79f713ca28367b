INSERT INTO tree_genre (Name, anzahl, imgkey)
SELECT Genre, Count(*), 'genre' FROM db_all
WHERE DEL = False AND Genre <> '' GROUP BY Genre ORDER BY Genre

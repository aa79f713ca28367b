INSERT INTO tree_genre_interpret (Genre, Name, anzahl, imgkey)
SELECT Genre, Interpret, Count(*), 'interpret' FROM db_all
WHERE DEL = False AND Genre <> '' AND Interpret <> ''
GROUP BY Genre, Interpret ORDER BY Genre, Interpret

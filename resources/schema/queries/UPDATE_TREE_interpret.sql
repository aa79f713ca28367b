INSERT INTO tree_interpret (Name, anzahl, imgkey)
SELECT Interpret, Count(*), 'interpret' FROM db_all
WHERE DEL = False AND Interpret <> '' GROUP BY Interpret ORDER BY Interpret

-- Jingle lists (GRID -1) have no file.
SELECT NID, GRID, Name AS plname FROM pl_name WHERE Sicherung = True AND GRID > 0

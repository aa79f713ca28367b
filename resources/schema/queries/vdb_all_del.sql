SELECT * FROM db_all WHERE DEL In (-1, 3)

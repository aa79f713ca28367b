SELECT * FROM db_all

PARAMETERS sPath Text, sDName Text;
SELECT * FROM db_all WHERE Path = sPath AND DName = sDName

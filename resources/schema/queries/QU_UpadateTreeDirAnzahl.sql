PARAMETERS sPath Text;
SELECT Count(*) AS anz FROM db_all WHERE DEL = False AND Path Like sPath

# The small library: eleven tracks, two groups with two playlists, one jingle list, a few playbacks,
# the trees of it, and notes between programs. One statement a line; the clock of the tests stands
# at 2026-03-14 15:09:26.

# 1 to 4: plain tracks; 3 is on a disc; artists and genres differ in case alone
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Track, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DKhz, DBit, DTSImport, DriveTyp, DriveName, DEL, Play, PlayCountDay, PlayCountAll, Kategorie, Tempo) values ('100000000001', 'Blue', 'Die Ärzte', 'Erstes', 'Rock', '1999', '1', '5', '98', 'C:\Musik\', 'blue.mp3', 1000, '04:21', 261224, 44100, 128, #14.03.2026 10:00#, 2, 'SYSTEM', 0, #13.03.2026 20:00#, 1, 7, 'Anheizer', 'schnell')
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Track, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DKhz, DBit, DTSImport, DriveTyp, DriveName, DEL, Play, PlayCountDay, PlayCountAll, Kategorie, Tempo) values ('100000000002', 'blues', 'Abba', 'Erstes', 'Pop', '1975', '2', '4', '130', 'C:\Musik\Neu\', 'blues.mp3', 2000, '00:52', 52245, 44100, 192, #14.03.2026 11:30#, 2, 'SYSTEM', 0, #14.03.2026 12:00#, 2, 3, 'ANHEIZER', 'langsam')
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Track, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DKhz, DBit, DTSImport, DriveTyp, DriveName, DEL) values ('100000000003', 'Émile', 'zebra', 'Zweites', 'rock', '2003', '1', '', null, 'D:\', 'emile.mp3', 3000, '00:26', 26122, 48000, 128, #15.03.2025#, 4, 'CD1', 0)
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Track, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DKhz, DBit, DTSImport, DriveTyp, DriveName, DEL) values ('100000000004', 'Straße', 'ABBA', 'Erstes', 'POP', '1976', '3', '5', '98', 'C:\Musik\Neu\', 'strasse.mp3', 4000, '03:20', 200000, 44100, 320, #15.03.2025 08:15#, 2, 'SYSTEM', 0)
# 5: marked as deleted, most columns null
insert into db_all (FID, Titel, Path, DName, DLen, DTimeMsec, DTSImport, DriveTyp, DEL) values ('100000000005', '4 Ecken', 'C:\Musik\', 'ecken.mp3', 5000, 0, null, 2, -1)
# 6: a hostile title
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DTSImport, DriveTyp, DEL) values ('100000000006', 'it''s [live] #1?', "O""Neil*", 'Zweites', 'Jazz', '1984', '3', '104', 'C:\Musik\', 'live.mp3', 6000, '01:40', 100000, #01.02.2026#, 2, 0)
# 7 and 8: no audio and missing, missing and marked
insert into db_all (FID, Titel, Interpret, Path, DName, DLen, DTime, DTimeMsec, DTSImport, DriveTyp, DEL) values ('100000000007', 'kaputt', '', 'C:\Weg\', 'kaputt.mp3', 0, 'MP3ERROR', 0, #01.02.2026#, 2, 2)
insert into db_all (FID, Titel, Interpret, Path, DName, DLen, DTime, DTimeMsec, DTSImport, DriveTyp, DEL) values ('100000000008', 'weg', 'Älla', 'C:\Weg\', 'weg.mp3', 0, '02:00', 120000, #01.02.2026#, 2, 3)
# 9 to 11: umlauts and ties
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DTSImport, DriveTyp, DEL, PlayCountAll) values ('100000000009', 'Ärger', 'DIE ÄRZTE', 'Drittes', 'Rock', '1999', '4', '130', 'C:\Musik\Neu\', 'aerger.mp3', 2000, '02:00', 120000, #14.03.2026 23:59:59#, 2, 0, 3)
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DTSImport, DriveTyp, DEL, PlayCountAll) values ('100000000010', 'arg', 'die ärzte', 'Drittes', 'rock', '2001', '2', '99', 'C:\Musik\Neu\', 'arg.mp3', 2000, '02:00', 120000, #01.01.2026#, 2, 0, 1)
insert into db_all (FID, Titel, Interpret, Album, Genre, Jahr, Note, BPM, Path, DName, DLen, DTime, DTimeMsec, DTSImport, DriveTyp, DEL) values ('100000000011', 'STRASSE', 'Element', 'Zweites', 'Jazz', '', '1', '', 'C:\Musik\', 'element.mp3', 3000, '03:00', 180000, #01.01.2026#, 2, 0)

insert into pl_group (GRID, Name, SID, Activ) values (1, 'Party', 1, true)
insert into pl_group (GRID, Name, SID, Activ) values (2, 'Leer', 2, false)
insert into pl_name (NID, GRID, Name, SID, anzahl, Activ, IsPlay, Lock, Sicherung, CreateTime, UpdateTime) values (1, 1, 'Abend', 1, 3, true, true, false, true, #01.01.2026#, #02.01.2026#)
insert into pl_name (NID, GRID, Name, SID, anzahl, Activ, IsPlay, Lock, Sicherung, CreateTime, UpdateTime) values (2, 1, 'Nacht', 2, 2, false, false, true, false, #01.02.2026#, null)
insert into pl_name (NID, GRID, Name, SID, anzahl, Activ, IsPlay, Lock, Sicherung, CreateTime, UpdateTime) values (3, -1, 'Jingles', 1, 1, true, false, false, true, #01.03.2026#, null)
insert into pl_name (NID, GRID, Name, SID, anzahl, Activ, IsPlay, Lock, Sicherung, CreateTime, UpdateTime) values (4, 1, 'Rest', 3, 0, false, false, false, false, #01.03.2026#, null)
insert into pl_all (PLID, PNID, SID, FID, Aktion, FrameStart, FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime) values (1, 1, 1, '100000000001', 0, 10, 100, 1, 90, 'in1', 'out1', null, 500)
insert into pl_all (PLID, PNID, SID, FID, Aktion, FrameStart, FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime) values (2, 1, 3, '100000000002', 1, 20, 200, 2, 80, null, 'out2', 'eq', 0)
insert into pl_all (PLID, PNID, SID, FID, Aktion, FrameStart, FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime) values (3, 1, 2, '100000000003', 2, 0, 300, 3, 70, 'in3', null, null, 0)
insert into pl_all (PLID, PNID, SID, FID, Aktion, FrameStart, FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime) values (4, 2, 1, '100000000001', 0, 40, 400, 4, 60, null, null, null, 0)
insert into pl_all (PLID, PNID, SID, FID, Aktion, FrameStart, FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime) values (5, 2, 2, '999999999999', 0, 50, 500, 5, 50, null, null, null, 0)
insert into pl_all (PLID, PNID, SID, FID, Aktion, FrameStart, FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime) values (6, 3, 1, '100000000006', 3, 0, 0, 0, 0, null, null, null, 0)
insert into pl_stat (FID, PLID, tstamp, tyear, tmon, tday, Volume) values ('100000000001', 1, #13.03.2026 20:00#, 2026, 3, 20260313, 90)
insert into pl_stat (FID, PLID, tstamp, tyear, tmon, tday, Volume) values ('100000000002', null, #14.03.2026 12:00#, 2026, 3, 20260314, 80)
insert into pl_stat (FID, PLID, tstamp, tyear, tmon, tday, Volume) values ('100000000001', null, #31.12.2025 23:59:59#, 2025, 12, 20251231, 70)
insert into pl_stat (FID, PLID, tstamp, tyear, tmon, tday, Volume) values ('888888888888', null, #31.12.2025 01:00#, 2025, 12, 20251231, 60)

insert into tree_dir (id, Path, Name, bname, vName, Drive, rLevel, anzahl, BAnzahl, imgkey, favorit, tstamp) values (1, 'C:\', 'C:', 'C:', 'SYSTEM', 2, 0, 0, 9, 'tree.drive_2', false, null)
insert into tree_dir (id, Path, Name, bname, vName, Drive, rLevel, anzahl, BAnzahl, imgkey, favorit, tstamp) values (2, 'C:\Musik\', 'Musik', 'Musik', 'SYSTEM', 2, 1, 4, 8, 'tree.dir', true, #01.03.2026#)
insert into tree_dir (id, Path, Name, bname, vName, Drive, rLevel, anzahl, BAnzahl, imgkey, favorit, tstamp) values (3, 'C:\Musik\Neu\', 'Neu', 'Neu', 'SYSTEM', 2, 2, 4, 4, 'tree.dir', true, #02.03.2026#)
insert into tree_dir (id, Path, Name, bname, vName, Drive, rLevel, anzahl, BAnzahl, imgkey, favorit, tstamp) values (4, 'D:\', 'D: [CD1]', 'D:', 'CD1', 4, 0, 0, null, 'tree.drive_4', false, null)
UPDATE_TREE_ALBUM
UPDATE_TREE_GENRE
UPDATE_TREE_interpret
UPDATE_TREE_GENRE_interpret
update tree_genre set favorit=true, tstamp=#01.03.2026# where name='rock'
update tree_album set favorit=true, tstamp=#02.03.2026# where name='Erstes'
insert into todo (ID, FID) values (1, '100000000002')
insert into todo (ID, FID) values (101, 'ein langer Text')
insert into db_edit (FID) values ('100000000001')
insert into ChangeTree (TreeName) values ('Album')

PARAMETERS param_PNID Long, param_UndoID Long, param_UndoPos Text;
INSERT INTO TEMP_PL_UNDO (UndoID, UndoPos, PLID, PNID, SID, FID, Aktion, Command, FrameStart,
    FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime)
SELECT param_UndoID, param_UndoPos, PLID, PNID, SID, FID, Aktion, Command, FrameStart,
    FrameStop, Pitch, Volume, MixIn, MixOut, EQ, MixTime
FROM pl_all WHERE PNID = param_PNID ORDER BY SID, PLID DESC

SELECT pnid, Sum(DLen) AS sdlen FROM VPL_FILES GROUP BY pnid

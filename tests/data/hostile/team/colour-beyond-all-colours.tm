1
Ann
1e38 -1e38 0

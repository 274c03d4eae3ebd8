2
Ann
Bo
0.25 0.5 1

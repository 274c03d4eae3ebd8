3
Thistle Mossop Bramble
0.95 0.55 0.95

3
Dune Samphire Lapwing
0.15 0.55 0.35

3
Blackthorn Damson Gin
0.2 0.25 0.75

2
A 1
B 2

2
Heather 3
Bracken 3

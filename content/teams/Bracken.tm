3
Peat Gorse Wriggle
1.0 0.85 0.3

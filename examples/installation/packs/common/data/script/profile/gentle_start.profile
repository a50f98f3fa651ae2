# seconds, metres per second
0 0
5 4
10 8
20 13.9

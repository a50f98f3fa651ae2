# seconds, metres per second
0 8
6 0
10 0
16 8

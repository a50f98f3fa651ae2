# The installed package: libraries, headers, command, sample installation, and the two ways to find them.

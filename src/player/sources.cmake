# Sources of player/ are listed here as they are added.
